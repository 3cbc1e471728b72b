#ifndef KELCORE_MENUS_KELMENUNUMBERING_H
#define KELCORE_MENUS_KELMENUNUMBERING_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

class kelMenu;

// The identifiers that a menu tree gets when it becomes a native menu, on any platform: the
// native binding of the Windows build walks the tree through this class, so a program
// elsewhere that numbers its model here gets the same identifiers.
//
// The rule: the entry given and every entry below it that reaches the menu takes the next
// command identifier and the next sequential identifier (setCommandId, setSequentialId),
// depth first, a parent before its children. Below the entry given, null children and
// children that are not visible are skipped with their whole subtree and keep the values they
// had; the entry given itself is numbered whatever its visibility. An entry with children is
// a sub-menu even when none of them is visible.
//
// commandId is the next free command identifier on entry and again on return;
// sequentialId likewise. Both wrap around at the end of their range rather than overflow.
// The walk uses an explicit stack, so any depth fits the thread's stack.
class KELCORE_API kelMenuNumbering {
public:
    // What a binding does while the walk goes on. Each entry is given after it has its
    // identifiers; the counters have moved past them already.
    class KELCORE_API Visitor {
    public:
        Visitor() = default;
        Visitor(Visitor const&) = default;
        Visitor& operator=(Visitor const&) = default;
        virtual ~Visitor();

        // An entry without children.
        virtual void leaf(kelMenu& item, UInt32 depth);
        // An entry with children, before the first of them is walked.
        virtual void enterParent(kelMenu& item, UInt32 depth);
        // The same entry, once all its children are done.
        virtual void leaveParent(kelMenu& item, UInt32 depth);
    };

    // Numbers item and its sub-menus, sequential identifiers from 0.
    static void number(kelMenu& item, UInt32& commandId);
    static void number(kelMenu& item, UInt32& commandId, SInt32& sequentialId);
    // Numbers as above and reports each step to visitor. depth is 0 for item itself.
    static void walk(kelMenu& item, UInt32& commandId, SInt32& sequentialId, Visitor& visitor);
    // Whether a child of an entry reaches the native menu: not null, and visible.
    static bool takesPart(kelMenu const* child);
};

} // namespace KELKIT

#endif
