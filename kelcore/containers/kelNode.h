#ifndef KELCORE_CONTAINERS_KELNODE_H
#define KELCORE_CONTAINERS_KELNODE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

#include <memory>

namespace KELKIT {

class kelNodeFilter;
class kelNodeComparator;

// A tree node: a parent link, an ordered list of children that the node owns, and a limit on
// the number of direct children (0xFFFFFFFF by default).
//
// Ownership: a node given to addNode, or to a constructor with a parent, must come from the
// heap; its parent deletes it on removeNode, removeNodes or when the parent's tree goes. A
// root is owned by whoever made it and may live on the stack.
//
// Copies share: the copy constructor and operator= make the target a second handle on the
// source's tree state (parent, children, limit). What each handle holds by itself (a text
// node's text, a menu's fields) is copied. Handles of one state count as the same node in
// every identity test (addNode, removeNode, findNode, getSibling). The state and its children
// go with the last handle:
//  - destroying a handle while another handle of its state lives destroys no child;
//  - operator= releases the target's former state the same way, so nothing leaks;
//  - a node that sits among a parent's children keeps its place and its own state on
//    assignment (only the per-handle values are copied): sharing another state there would
//    list one node in two places or close a cycle;
//  - removing a child whose state another handle still shows hands that state to the other
//    handles as a root (no parent, its children intact).
// A node deleted directly, rather than through its parent, leaves its parent's children
// first, so that the parent never deletes it a second time.
//
// Destruction, counting, searching and sorting walk the tree with an explicit stack, so a
// chain of any depth fits the thread's stack. No locks: a tree belongs to one thread at a time.
class KELCORE_API kelNode {
public:
    kelNode();
    // A null parent leaves the node alone; so does a parent that refuses it (see addNode).
    explicit kelNode(kelNode* parent);
    kelNode(kelNode* parent, UInt32 maxChildren);
    kelNode(kelNode const& other);
    kelNode& operator=(kelNode const& other);
    virtual ~kelNode();

    // "kelNode@" and the low 32 bits of the object's address in decimal.
    virtual kelString toString() const;

    // Sets the parent link alone: no list of children changes. A node listed among a
    // parent's children stays listed there (and addNode keeps refusing it) whatever the link
    // says. The link does not keep the parent alive: once every handle of the parent is gone,
    // getParentNode gives null.
    void setParentNode(kelNode* parent);
    kelNode* getParentNode() const;

    // false, changing nothing, for: null or the receiver itself; a node that has a parent
    // (link or listing); a node that the receiver lies below; a receiver that is full. The
    // node then goes to the end of the children and its parent is the receiver.
    bool addNode(kelNode* node);
    // Destroys the direct child (and its subtree) and drops it; the others keep their order.
    // false for null or a node that is not a direct child.
    bool removeNode(kelNode const* node);
    // removeNode(getChildren(index)). Write removeNode(0u): a plain 0 is also a null pointer.
    bool removeNode(UInt32 index);
    // Destroys every child, first to last.
    void removeNodes();

    // Whether node is a direct child, or with recursive any descendant; never the receiver.
    bool findNode(kelNode const* node, bool recursive) const;
    // Depth first, parents before children, the receiver first: stores each node for which
    // filter.matches holds, at most maxNodes, and returns how many it stored. matches is
    // called on the receiver even when there is no room; the walk stops once the array is
    // full. Without recursive only the receiver is looked at. A null array has no room.
    UInt32 findNodes(kelNodeFilter const& filter, kelNode** nodes, UInt32 maxNodes, bool recursive);
    // Orders the children so that a node comes before another exactly when compare(left,
    // right) gives -1; equal nodes keep no promised order. A merge sort: a comparator that is
    // no consistent order gives some permutation, never a read outside the list. With
    // recursive each child then sorts its own children.
    void sort(kelNodeComparator const& comparator, bool recursive);

    UInt32 getChildrenCount(bool recursive) const;
    UInt32 getChildrenCount() const;
    // null when index is out of range.
    kelNode* getChildren(UInt32 index) const;
    // The parent's children other than the receiver: their count, and the one at index (null
    // when out of range). 0 and null without a parent.
    UInt32 getSiblingCount() const;
    kelNode* getSibling(UInt32 index) const;
    // Stores the larger of maxChildren and the present number of children.
    void setMaxChildren(UInt32 maxChildren);
    UInt32 getMaxChildren() const;

private:
    struct Impl;
    std::shared_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
