#ifndef KELCORE_CONTAINERS_KELLIST_H
#define KELCORE_CONTAINERS_KELLIST_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelIComparator.h>
#include <kelcore/frame/kelISortable.h>
#include <kelcore/frame/kelRandom.h>
#include <kelcore/frame/kelTypes.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace KELKIT {

// Sorts addresses so that compare(a, b) < 0 puts a first. Shared by every list's
// sort(comparator). Merge-based: a comparator that is not a consistent order gives some
// permutation, never a read outside the array.
KELCORE_API void kelListSortAddresses(std::vector<void const*>& addresses,
                                      kelIComparator const& comparator);

// The ordered, growable array behind every named list class (kelListString, kelListUInt32...).
// Callers use the named classes; each element type is instantiated once, inside the library.
//
// Operations that are defined through other operations (contains through find, = through clear
// and add, ...) call them through their virtual slots, so a derived class sees those calls.
//
// A list of pointers stores the pointers only and never deletes what they point at; all its
// comparisons are on the pointer values.
//
// Beware of overloads on integer lists: erase(0) on a kelListUInt32 erases the value 0; pass
// INDEX(0) to erase a position.
template <typename T>
class kelList : public kelISortable {
public:
    // A position. No value is reserved: each operation says what it does with a position at or
    // beyond size().
    struct INDEX {
        INDEX(UInt32 index = 0) : mIndex(index) {}
        operator UInt32() const { return mIndex; }
        UInt32 mIndex;
    };

    // Out of line, so that the library's instantiations export it: a caller that does not inline
    // it (as in a program's main) must find it in the DLL.
    kelList();
    kelList(kelList const& other);
    ~kelList() override = default;

    // Virtual operations, in the order of their slots.

    // compare() receives the addresses of the elements as stored; the order of equal elements
    // is not promised.
    void sort(kelIComparator const& comparator) override;
    virtual void clear();
    // Removes the first occurrence only.
    virtual bool erase(T const& value);
    // The half-open range [first, last); needs first < size(), last <= size(), first <= last.
    virtual bool erase(INDEX first, INDEX last);
    virtual bool erase(INDEX index);
    virtual bool empty() const;
    virtual UInt32 size() const;
    virtual void reverse();
    // On failure (also for a start at or beyond size()) found becomes 0.
    virtual bool find(T const& value, INDEX& found) const;
    virtual bool find(T const& value, INDEX const& start, INDEX& found) const;
    virtual bool contains(T const& value) const;
    // Appends other; adding a list to itself doubles it.
    virtual bool add(kelList const& other);
    // Inserts other before index, 0 being the front; true when the list grew, and true for an
    // empty other whatever the index.
    virtual bool add(kelList const& other, INDEX index);
    virtual bool add(T const& value);
    // Index 0 appends (unlike the list form); 1 to size() inserts before that position.
    virtual bool add(T const& value, INDEX index);
    // Unchecked: the caller keeps the index below size().
    virtual T& get(INDEX index);
    virtual T const& get(INDEX index) const;
    // Clears out, then copies up to count elements from start; a start at or beyond size()
    // gives an empty out and true.
    virtual bool subList(kelList& out, INDEX start, UInt32 count) const;
    // Shuffles with kelRandom.
    virtual void randomize();
    // Keeps the first occurrence of each value, in order.
    virtual void unique();
    // Null on an empty list.
    virtual T* min(kelIComparator const& comparator);
    virtual T const* min(kelIComparator const& comparator) const;
    virtual T* max(kelIComparator const& comparator);
    virtual T const* max(kelIComparator const& comparator) const;
    // 0 on an empty list; among equal extremes the first position.
    virtual INDEX getMinIndex(kelIComparator const& comparator);
    virtual INDEX getMinIndex(kelIComparator const& comparator) const;
    virtual INDEX getMaxIndex(kelIComparator const& comparator);
    virtual INDEX getMaxIndex(kelIComparator const& comparator) const;
    virtual void getMinMaxIndex(kelIComparator const& comparator, INDEX& minIndex,
                                INDEX& maxIndex) const;
    virtual T& operator[](UInt32 index);
    virtual T const& operator[](UInt32 index) const;
    // By the element's own <; pointers by address, NaNs last.
    virtual void sort();

    // Equal sizes and no pair at equal positions unequal by !=.
    bool operator==(kelList const& other) const;
    bool operator!=(kelList const& other) const { return !(*this == other); }
    // These compare the sizes only.
    bool operator<(kelList const& other) const { return size() < other.size(); }
    bool operator>(kelList const& other) const { return size() > other.size(); }
    bool operator<=(kelList const& other) const { return size() <= other.size(); }
    bool operator>=(kelList const& other) const { return size() >= other.size(); }
    kelList& operator=(kelList const& other);
    kelList& operator+=(kelList const& other) {
        add(other);
        return *this;
    }
    // Appends to this list itself, like +=; no new list is made.
    kelList& operator+(kelList const& other) {
        add(other);
        return *this;
    }

private:
    void insertItems(UInt32 index, T const* first, T const* last);
    void reorder(std::vector<void const*> const& order);

    std::unique_ptr<std::vector<T>> mItems;
};

// The accessors are inline so that a caller's loop over add() or get() compiles like one over a
// vector. A Windows DLL exports no inline member of its instantiations, while a caller's derived
// list refers to them from its vtable, so there they stay out of line.
#if defined(_WIN32)
#define KEL_LIST_HOT
#else
#define KEL_LIST_HOT inline
#endif

template <typename T>
KEL_LIST_HOT bool kelList<T>::add(T const& value) {
    mItems->push_back(value);
    return true;
}

template <typename T>
KEL_LIST_HOT T& kelList<T>::get(INDEX index) {
    return (*mItems)[index];
}

template <typename T>
KEL_LIST_HOT T const& kelList<T>::get(INDEX index) const {
    return (*mItems)[index];
}

template <typename T>
KEL_LIST_HOT T& kelList<T>::operator[](UInt32 index) {
    return get(index);
}

template <typename T>
KEL_LIST_HOT T const& kelList<T>::operator[](UInt32 index) const {
    return get(index);
}

template <typename T>
kelList<T>::kelList() : mItems(new std::vector<T>()) {}

template <typename T>
kelList<T>::kelList(kelList const& other) : kelISortable(other), mItems(new std::vector<T>()) {
    add(other);
}

template <typename T>
void kelList<T>::sort(kelIComparator const& comparator) {
    std::vector<T> const& items = *mItems;
    std::vector<void const*> order(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        order[i] = &items[i];
    }
    kelListSortAddresses(order, comparator);
    reorder(order);
}

template <typename T>
void kelList<T>::reorder(std::vector<void const*> const& order) {
    std::vector<T> sorted;
    sorted.reserve(order.size());
    for (void const* address : order) {
        sorted.push_back(*static_cast<T const*>(address));
    }
    mItems->swap(sorted);
}

template <typename T>
void kelList<T>::sort() {
    std::vector<T>& items = *mItems;
    if constexpr (std::is_floating_point<T>::value) {
        // NaN is unordered; putting it last keeps the order strict for std::sort.
        std::sort(items.begin(), items.end(), [](T a, T b) { return b != b ? a == a : a < b; });
    } else {
        std::sort(items.begin(), items.end(), std::less<T>());
    }
}

template <typename T>
void kelList<T>::clear() {
    mItems->clear();
}

template <typename T>
bool kelList<T>::erase(T const& value) {
    INDEX found;
    if (!find(value, found)) {
        return false;
    }
    return erase(found);
}

template <typename T>
bool kelList<T>::erase(INDEX first, INDEX last) {
    std::size_t const count = mItems->size();
    if (first >= count || last > count || first > last) {
        return false;
    }
    mItems->erase(mItems->begin() + first, mItems->begin() + last);
    return true;
}

template <typename T>
bool kelList<T>::erase(INDEX index) {
    if (index >= mItems->size()) {
        return false;
    }
    mItems->erase(mItems->begin() + index, mItems->begin() + index + 1);
    return true;
}

template <typename T>
bool kelList<T>::empty() const {
    return mItems->empty();
}

template <typename T>
UInt32 kelList<T>::size() const {
    return static_cast<UInt32>(mItems->size());
}

template <typename T>
void kelList<T>::reverse() {
    std::vector<T>& items = *mItems;
    std::size_t const count = items.size();
    for (std::size_t i = 0; i < count / 2; ++i) {
        if (items[i] != items[count - 1 - i]) {
            std::swap(items[i], items[count - 1 - i]);
        }
    }
}

template <typename T>
bool kelList<T>::find(T const& value, INDEX& found) const {
    return find(value, INDEX(0), found);
}

template <typename T>
bool kelList<T>::find(T const& value, INDEX const& start, INDEX& found) const {
    std::vector<T> const& items = *mItems;
    if (start < items.size()) {
        auto const hit = std::find(items.begin() + start, items.end(), value);
        if (hit != items.end()) {
            found = static_cast<UInt32>(hit - items.begin());
            return true;
        }
    }
    found = 0;
    return false;
}

template <typename T>
bool kelList<T>::contains(T const& value) const {
    INDEX found;
    return find(value, found);
}

template <typename T>
bool kelList<T>::add(kelList const& other) {
    return add(other, size());
}

template <typename T>
bool kelList<T>::add(kelList const& other, INDEX index) {
    if (other.empty()) {
        return true;
    }
    if (index > mItems->size()) {
        return false;
    }
    if (&other == this) {
        std::vector<T> const copy(*mItems);
        insertItems(index, copy.data(), copy.data() + copy.size());
    } else {
        insertItems(index, other.mItems->data(), other.mItems->data() + other.mItems->size());
    }
    return true;
}

template <typename T>
bool kelList<T>::add(T const& value, INDEX index) {
    if (index == 0) {
        return add(value);
    }
    if (index > mItems->size()) {
        return false;
    }
    // The value may be one of this list's own elements, which the insertion moves.
    T const copy(value);
    insertItems(index, &copy, &copy + 1);
    return true;
}

template <typename T>
void kelList<T>::insertItems(UInt32 index, T const* first, T const* last) {
    // All insertions share this one instantiation of the vector's range insert.
    mItems->insert(mItems->begin() + index, first, last);
}

template <typename T>
bool kelList<T>::subList(kelList& out, INDEX start, UInt32 count) const {
    if (&out == this) {
        kelList const copy(*this);
        return copy.subList(out, start, count);
    }
    out.clear();
    if (start >= size()) {
        return true;
    }
    // 64-bit end, so that a huge count takes the rest instead of wrapping.
    UInt64 const end = static_cast<UInt64>(start) + count;
    bool added = true;
    for (UInt32 p = start; p < end && p < size(); ++p) {
        if (added) {
            added = out.add(get(p));
        }
    }
    return added;
}

template <typename T>
void kelList<T>::randomize() {
    if (empty()) {
        return;
    }
    kelList shuffled;
    // Bounded, so that a derived erase that refuses cannot loop forever.
    for (UInt32 left = size(); left > 0 && !empty(); --left) {
        UInt32 const pick = kelRandom::getUInt32(0, size() - 1);
        shuffled.add(get(pick));
        erase(INDEX(pick));
    }
    add(shuffled);
}

template <typename T>
void kelList<T>::unique() {
    if (empty()) {
        return;
    }
    UInt32 const count = size();
    std::unique_ptr<UInt8[]> duplicate(new (std::nothrow) UInt8[count]());
    if (!duplicate) {
        return;
    }
    for (UInt32 i = 0; i < count; ++i) {
        INDEX first;
        if (find(get(i), INDEX(0), first) && first < i) {
            duplicate[i] = 1;
        }
    }
    for (UInt32 i = count; i-- > 0;) {
        if (duplicate[i] != 0) {
            erase(INDEX(i));
        }
    }
}

template <typename T>
T* kelList<T>::min(kelIComparator const& comparator) {
    if (empty()) {
        return nullptr;
    }
    return &get(getMinIndex(comparator));
}

template <typename T>
T const* kelList<T>::min(kelIComparator const& comparator) const {
    if (empty()) {
        return nullptr;
    }
    return &get(getMinIndex(comparator));
}

template <typename T>
T* kelList<T>::max(kelIComparator const& comparator) {
    if (empty()) {
        return nullptr;
    }
    return &get(getMaxIndex(comparator));
}

template <typename T>
T const* kelList<T>::max(kelIComparator const& comparator) const {
    if (empty()) {
        return nullptr;
    }
    return &get(getMaxIndex(comparator));
}

template <typename T>
typename kelList<T>::INDEX kelList<T>::getMinIndex(kelIComparator const& comparator) {
    INDEX minIndex, maxIndex;
    getMinMaxIndex(comparator, minIndex, maxIndex);
    return minIndex;
}

template <typename T>
typename kelList<T>::INDEX kelList<T>::getMinIndex(kelIComparator const& comparator) const {
    INDEX minIndex, maxIndex;
    getMinMaxIndex(comparator, minIndex, maxIndex);
    return minIndex;
}

template <typename T>
typename kelList<T>::INDEX kelList<T>::getMaxIndex(kelIComparator const& comparator) {
    INDEX minIndex, maxIndex;
    getMinMaxIndex(comparator, minIndex, maxIndex);
    return maxIndex;
}

template <typename T>
typename kelList<T>::INDEX kelList<T>::getMaxIndex(kelIComparator const& comparator) const {
    INDEX minIndex, maxIndex;
    getMinMaxIndex(comparator, minIndex, maxIndex);
    return maxIndex;
}

template <typename T>
void kelList<T>::getMinMaxIndex(kelIComparator const& comparator, INDEX& minIndex,
                                INDEX& maxIndex) const {
    minIndex = 0;
    maxIndex = 0;
    std::vector<T> const& items = *mItems;
    if (items.size() <= 1) {
        return;
    }
    T const* currentMin = &items[0];
    T const* currentMax = &items[0];
    for (std::size_t i = 1; i < items.size(); ++i) {
        T const* element = &items[i];
        if (comparator.compare(element, currentMax) > 0) {
            currentMax = element;
            maxIndex = static_cast<UInt32>(i);
        }
        if (comparator.compare(element, currentMin) < 0) {
            currentMin = element;
            minIndex = static_cast<UInt32>(i);
        }
    }
}

template <typename T>
bool kelList<T>::operator==(kelList const& other) const {
    std::vector<T> const& mine = *mItems;
    std::vector<T> const& theirs = *other.mItems;
    if (mine.size() != theirs.size()) {
        return false;
    }
    for (std::size_t i = 0; i < mine.size(); ++i) {
        if (mine[i] != theirs[i]) {
            return false;
        }
    }
    return true;
}

template <typename T>
kelList<T>& kelList<T>::operator=(kelList const& other) {
    // Self-assignment would clear the source first.
    if (&other != this) {
        clear();
        add(other);
    }
    return *this;
}

} // namespace KELKIT

// Declaring lists: the header of an element type (or kelLists.h) declares its named list with
// KEL_LIST_CLASS(kelListThing, kelThing), and its .cpp defines it with
// KEL_LIST_CLASS_DEFINE(kelListThing, kelThing). Element types shared by several named classes
// use the parts: KEL_LIST_EXTERN / KEL_LIST_INSTANTIATE once per element type, and
// KEL_LIST_DECLARE / KEL_LIST_DEFINE once per named class.
#define KEL_LIST_EXTERN(T) extern template class KELCORE_API ::KELKIT::kelList<T>;
#define KEL_LIST_INSTANTIATE(T) template class ::KELKIT::kelList<T>;

// A named list is a thin class over the shared instantiation; only its destructor, vtable and
// type information are its own.
#define KEL_LIST_DECLARE(L, T)                                                                     \
    class KELCORE_API L : public ::KELKIT::kelList<T> {                                            \
    public:                                                                                        \
        L() = default;                                                                             \
        L(L const& other) = default;                                                               \
        ~L() override;                                                                             \
        L& operator=(L const& other) = default;                                                    \
        L& operator=(::KELKIT::kelList<T> const& other) {                                          \
            ::KELKIT::kelList<T>::operator=(other);                                                \
            return *this;                                                                          \
        }                                                                                          \
        L& operator+=(::KELKIT::kelList<T> const& other) {                                         \
            add(other);                                                                            \
            return *this;                                                                          \
        }                                                                                          \
        L& operator+(::KELKIT::kelList<T> const& other) {                                          \
            add(other);                                                                            \
            return *this;                                                                          \
        }                                                                                          \
    };
#define KEL_LIST_DEFINE(L) L::~L() = default;

#define KEL_LIST_CLASS(L, T) KEL_LIST_EXTERN(T) KEL_LIST_DECLARE(L, T)
#define KEL_LIST_CLASS_DEFINE(L, T) KEL_LIST_INSTANTIATE(T) KEL_LIST_DEFINE(L)

#endif
