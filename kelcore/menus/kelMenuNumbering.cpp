#include <kelcore/menus/kelMenuNumbering.h>

#include <kelcore/menus/kelMenu.h>

#include <vector>

namespace KELKIT {

kelMenuNumbering::Visitor::~Visitor() = default;

void kelMenuNumbering::Visitor::leaf(kelMenu&, UInt32) {}

void kelMenuNumbering::Visitor::enterParent(kelMenu&, UInt32) {}

void kelMenuNumbering::Visitor::leaveParent(kelMenu&, UInt32) {}

void kelMenuNumbering::number(kelMenu& item, UInt32& commandId) {
    SInt32 sequentialId = 0;
    number(item, commandId, sequentialId);
}

void kelMenuNumbering::number(kelMenu& item, UInt32& commandId, SInt32& sequentialId) {
    Visitor nothing;
    walk(item, commandId, sequentialId, nothing);
}

bool kelMenuNumbering::takesPart(kelMenu const* child) {
    return child != nullptr && child->isVisible();
}

namespace {

// Gives item the counters' values and moves both on; unsigned steps so that the end of the
// range wraps instead of overflowing.
void assign(kelMenu& item, UInt32& commandId, SInt32& sequentialId) {
    item.setCommandId(static_cast<SInt32>(commandId));
    item.setSequentialId(sequentialId);
    commandId += 1;
    sequentialId = static_cast<SInt32>(static_cast<UInt32>(sequentialId) + 1u);
}

struct Frame {
    kelMenu* item;
    UInt32 next; // the next child to look at
};

} // namespace

void kelMenuNumbering::walk(kelMenu& item, UInt32& commandId, SInt32& sequentialId,
                            Visitor& visitor) {
    assign(item, commandId, sequentialId);
    if (item.getChildrenCount() == 0) {
        visitor.leaf(item, 0);
        return;
    }
    visitor.enterParent(item, 0);
    std::vector<Frame> stack(1, Frame{&item, 0});
    while (!stack.empty()) {
        Frame& top = stack.back();
        if (top.next >= top.item->getChildrenCount()) {
            kelMenu& done = *top.item;
            stack.pop_back();
            visitor.leaveParent(done, static_cast<UInt32>(stack.size()));
            continue;
        }
        // A menu tree holds kelMenu entries; any other node there does not reach the menu.
        kelMenu* child = dynamic_cast<kelMenu*>(top.item->getChildren(top.next++));
        if (!takesPart(child)) {
            continue;
        }
        UInt32 const depth = static_cast<UInt32>(stack.size());
        assign(*child, commandId, sequentialId);
        if (child->getChildrenCount() == 0) {
            visitor.leaf(*child, depth);
        } else {
            visitor.enterParent(*child, depth);
            stack.push_back(Frame{child, 0});
        }
    }
}

} // namespace KELKIT
