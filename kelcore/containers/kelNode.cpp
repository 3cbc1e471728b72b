#include <kelcore/containers/kelNode.h>

#include <kelcore/containers/kelNodeComparator.h>
#include <kelcore/containers/kelNodeFilter.h>
#include <kelcore/strings/kelStringConverter.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

namespace KELKIT {

namespace {

// Handles waiting to be deleted by the outermost node destruction running on this thread.
// Nested destructions queue their children here instead of deleting them, so a deep chain
// unwinds in a loop rather than one stack frame per level.
thread_local std::vector<kelNode*>* tPendingDeletes = nullptr;

template <typename T>
void eraseValue(std::vector<T>& items, T value) {
    typename std::vector<T>::iterator it = std::find(items.begin(), items.end(), value);
    if (it != items.end()) {
        items.erase(it);
    }
}

} // namespace

// The tree state that handles share. The lists hold handles (kelNode objects), because each
// handle carries its own values (a text, a menu's flags); structure lives here.
struct kelNode::Impl {
    UInt32 maxChildren = 0xFFFFFFFFu;
    // Owned handles, one per child state.
    std::vector<kelNode*> children;
    // Every live handle on this state, oldest first.
    std::vector<kelNode*> handles;
    // The state whose children list this one, and the handle that stands in that list. Kept
    // apart from the parent link, which setParentNode may point anywhere.
    Impl* owner = nullptr;
    kelNode* listed = nullptr;
    std::weak_ptr<Impl> parent;
    kelNode* parentHandle = nullptr;

    static Impl& of(kelNode const* node) { return *node->mImpl; }

    bool hasParent() const { return owner != nullptr || !parent.expired(); }

    // The state leaves its owner's list (the caller has taken the entry out).
    void unlist() {
        Impl* former = owner;
        owner = nullptr;
        listed = nullptr;
        std::shared_ptr<Impl> link = parent.lock();
        if (link.get() == former) {
            parent.reset();
            parentHandle = nullptr;
        }
    }

    static void deleteHandle(kelNode* node) { delete node; }

    // Deletes unlisted handles, first to last, each with its subtree.
    static void destroy(std::vector<kelNode*>& batch) {
        if (tPendingDeletes != nullptr) {
            for (std::vector<kelNode*>::reverse_iterator it = batch.rbegin(); it != batch.rend();
                 ++it) {
                try {
                    tPendingDeletes->push_back(*it);
                } catch (std::bad_alloc const&) {
                    deleteHandle(*it); // no room to defer: the deeper stack is the lesser harm
                }
            }
            return;
        }
        std::vector<kelNode*> pending;
        try {
            pending.assign(batch.rbegin(), batch.rend());
        } catch (std::bad_alloc const&) {
            for (kelNode* node : batch) {
                deleteHandle(node);
            }
            return;
        }
        tPendingDeletes = &pending;
        while (!pending.empty()) {
            kelNode* node = pending.back();
            pending.pop_back();
            deleteHandle(node);
        }
        tPendingDeletes = nullptr;
    }

    // Takes every child out, first to last, and destroys them.
    void destroyChildren() {
        while (!children.empty()) {
            std::vector<kelNode*> batch;
            batch.swap(children);
            for (kelNode* child : batch) {
                of(child).unlist();
            }
            destroy(batch);
        }
    }

    // The handle to report for this state: the one in its owner's list, else the oldest.
    kelNode* representative() const {
        if (listed != nullptr) {
            return listed;
        }
        return handles.empty() ? nullptr : handles.front();
    }
};

kelNode::kelNode() : mImpl(std::make_shared<Impl>()) {
    mImpl->handles.push_back(this);
}

kelNode::kelNode(kelNode* parent) : kelNode() {
    if (parent != nullptr) {
        parent->addNode(this);
    }
}

kelNode::kelNode(kelNode* parent, UInt32 maxChildren) : kelNode() {
    setMaxChildren(maxChildren);
    if (parent != nullptr) {
        parent->addNode(this);
    }
}

kelNode::kelNode(kelNode const& other) : mImpl(other.mImpl) {
    mImpl->handles.push_back(this);
}

kelNode& kelNode::operator=(kelNode const& other) {
    if (other.mImpl == mImpl || mImpl->listed == this) {
        return *this;
    }
    other.mImpl->handles.push_back(this);
    std::shared_ptr<Impl> former = mImpl;
    eraseValue(former->handles, this);
    mImpl = other.mImpl;
    if (former->handles.empty()) {
        // A state with no handle left is listed nowhere (its listed handle would be alive).
        former->destroyChildren();
    }
    return *this;
}

kelNode::~kelNode() {
    Impl& state = *mImpl;
    if (state.listed == this) {
        // Deleted directly instead of through the parent: leave its list first.
        eraseValue(state.owner->children, static_cast<kelNode*>(this));
        state.unlist();
    }
    eraseValue(state.handles, static_cast<kelNode*>(this));
    if (state.handles.empty()) {
        state.destroyChildren();
    }
}

kelString kelNode::toString() const {
    return kelString("kelNode@") + kelStringConverter::toString(
                                       static_cast<UInt32>(reinterpret_cast<std::uintptr_t>(this)));
}

void kelNode::setParentNode(kelNode* parent) {
    if (parent == nullptr) {
        mImpl->parent.reset();
        mImpl->parentHandle = nullptr;
    } else {
        mImpl->parent = parent->mImpl;
        mImpl->parentHandle = parent;
    }
}

kelNode* kelNode::getParentNode() const {
    std::shared_ptr<Impl> parent = mImpl->parent.lock();
    if (!parent) {
        return nullptr;
    }
    std::vector<kelNode*> const& handles = parent->handles;
    if (std::find(handles.begin(), handles.end(), mImpl->parentHandle) != handles.end()) {
        return mImpl->parentHandle;
    }
    return parent->representative();
}

bool kelNode::addNode(kelNode* node) {
    if (node == nullptr) {
        return false;
    }
    Impl* self = mImpl.get();
    Impl& added = *node->mImpl;
    if (&added == self || added.hasParent()) {
        return false;
    }
    // The receiver below the node would close a cycle. Walking up from the receiver asks the
    // same as searching the node's subtree, at the cost of the receiver's depth.
    if (!added.children.empty()) {
        for (Impl const* up = self->owner; up != nullptr; up = up->owner) {
            if (up == &added) {
                return false;
            }
        }
    }
    if (self->children.size() >= self->maxChildren) {
        return false;
    }
    // A node below the receiver is listed, so it has a parent and was refused above.
    self->children.push_back(node);
    added.owner = self;
    added.listed = node;
    added.parent = mImpl;
    added.parentHandle = this;
    return true;
}

bool kelNode::removeNode(kelNode const* node) {
    if (node == nullptr) {
        return false;
    }
    Impl& removed = *node->mImpl;
    if (removed.owner != mImpl.get()) {
        return false;
    }
    kelNode* handle = removed.listed;
    eraseValue(mImpl->children, handle);
    removed.unlist();
    std::vector<kelNode*> batch(1, handle);
    Impl::destroy(batch);
    return true;
}

bool kelNode::removeNode(UInt32 index) {
    return removeNode(getChildren(index));
}

void kelNode::removeNodes() {
    mImpl->destroyChildren();
}

bool kelNode::findNode(kelNode const* node, bool recursive) const {
    if (node == nullptr) {
        return false;
    }
    // Owners are exactly the lists a node stands in, so the way up answers the search down.
    Impl const* up = node->mImpl->owner;
    if (!recursive) {
        return up == mImpl.get();
    }
    for (; up != nullptr; up = up->owner) {
        if (up == mImpl.get()) {
            return true;
        }
    }
    return false;
}

UInt32 kelNode::findNodes(kelNodeFilter const& filter, kelNode** nodes, UInt32 maxNodes,
                          bool recursive) {
    if (nodes == nullptr) {
        maxNodes = 0;
    }
    UInt32 count = 0;
    if (filter.matches(this) && maxNodes > 0) {
        nodes[count++] = this;
    }
    if (!recursive) {
        return count;
    }
    std::vector<kelNode*> stack;
    if (count < maxNodes) {
        stack.assign(mImpl->children.rbegin(), mImpl->children.rend());
    }
    while (!stack.empty() && count < maxNodes) {
        kelNode* node = stack.back();
        stack.pop_back();
        if (filter.matches(node)) {
            nodes[count++] = node;
        }
        std::vector<kelNode*> const& children = node->mImpl->children;
        stack.insert(stack.end(), children.rbegin(), children.rend());
    }
    return count;
}

namespace {

// Bottom-up merge sort. Every read is bounded by the run limits, whatever the comparator says.
void mergeSort(std::vector<kelNode*>& items, kelNodeComparator const& comparator) {
    std::size_t const n = items.size();
    if (n < 2) {
        return;
    }
    std::vector<kelNode*> buffer(n);
    std::vector<kelNode*>* from = &items;
    std::vector<kelNode*>* to = &buffer;
    for (std::size_t width = 1; width < n; width *= 2) {
        for (std::size_t lo = 0; lo < n; lo += 2 * width) {
            std::size_t const mid = std::min(lo + width, n);
            std::size_t const hi = std::min(lo + 2 * width, n);
            std::size_t left = lo;
            std::size_t right = mid;
            std::size_t out = lo;
            while (left < mid && right < hi) {
                // The right one goes first only when it is strictly before the left one.
                if (comparator.compare((*from)[right], (*from)[left]) == -1) {
                    (*to)[out++] = (*from)[right++];
                } else {
                    (*to)[out++] = (*from)[left++];
                }
            }
            while (left < mid) {
                (*to)[out++] = (*from)[left++];
            }
            while (right < hi) {
                (*to)[out++] = (*from)[right++];
            }
        }
        std::swap(from, to);
    }
    if (from != &items) {
        items.swap(buffer);
    }
}

} // namespace

void kelNode::sort(kelNodeComparator const& comparator, bool recursive) {
    std::vector<Impl*> stack(1, mImpl.get());
    while (!stack.empty()) {
        Impl* state = stack.back();
        stack.pop_back();
        mergeSort(state->children, comparator);
        if (recursive) {
            for (std::vector<kelNode*>::reverse_iterator it = state->children.rbegin();
                 it != state->children.rend(); ++it) {
                stack.push_back((*it)->mImpl.get());
            }
        }
    }
}

UInt32 kelNode::getChildrenCount(bool recursive) const {
    if (!recursive) {
        return getChildrenCount();
    }
    UInt64 count = 0;
    std::vector<Impl const*> stack(1, mImpl.get());
    while (!stack.empty()) {
        Impl const* state = stack.back();
        stack.pop_back();
        count += state->children.size();
        for (kelNode const* child : state->children) {
            stack.push_back(child->mImpl.get());
        }
    }
    return static_cast<UInt32>(std::min<UInt64>(count, 0xFFFFFFFFu));
}

UInt32 kelNode::getChildrenCount() const {
    return static_cast<UInt32>(mImpl->children.size());
}

kelNode* kelNode::getChildren(UInt32 index) const {
    std::vector<kelNode*> const& children = mImpl->children;
    return index < children.size() ? children[index] : nullptr;
}

UInt32 kelNode::getSiblingCount() const {
    std::shared_ptr<Impl> parent = mImpl->parent.lock();
    if (!parent) {
        return 0;
    }
    UInt32 count = 0;
    for (kelNode const* child : parent->children) {
        if (child->mImpl != mImpl) {
            ++count;
        }
    }
    return count;
}

kelNode* kelNode::getSibling(UInt32 index) const {
    std::shared_ptr<Impl> parent = mImpl->parent.lock();
    if (!parent) {
        return nullptr;
    }
    for (kelNode* child : parent->children) {
        if (child->mImpl != mImpl) {
            if (index == 0) {
                return child;
            }
            --index;
        }
    }
    return nullptr;
}

void kelNode::setMaxChildren(UInt32 maxChildren) {
    UInt32 const count = getChildrenCount();
    mImpl->maxChildren = std::max(maxChildren, count);
}

UInt32 kelNode::getMaxChildren() const {
    return mImpl->maxChildren;
}

} // namespace KELKIT
