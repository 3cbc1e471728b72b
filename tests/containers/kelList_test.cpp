#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelReverseComparator.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

typedef kelListUInt32::INDEX Index;

template <typename L, typename T>
L makeList(std::vector<T> const& values) {
    L list;
    for (T const& v : values) {
        list.add(v);
    }
    return list;
}

std::vector<UInt32> u32(kelListUInt32 const& l) {
    std::vector<UInt32> out;
    for (UInt32 i = 0; i < l.size(); ++i) {
        out.push_back(l.get(i));
    }
    return out;
}

kelListUInt32 u32List(std::vector<UInt32> const& v) {
    return makeList<kelListUInt32>(v);
}

// Counts the calls that reach the virtual slots.
class CountingList : public kelListUInt32 {
public:
    int adds = 0, erases = 0, finds = 0, clears = 0;
    bool add(UInt32 const& value) override {
        ++adds;
        return kelListUInt32::add(value);
    }
    bool add(kelList<UInt32> const& other, INDEX index) override {
        ++adds;
        return kelListUInt32::add(other, index);
    }
    bool erase(INDEX index) override {
        ++erases;
        return kelListUInt32::erase(index);
    }
    bool find(UInt32 const& value, INDEX const& start, INDEX& found) const override {
        ++const_cast<CountingList*>(this)->finds;
        return kelListUInt32::find(value, start, found);
    }
    void clear() override {
        ++clears;
        kelListUInt32::clear();
    }
    using kelListUInt32::add;
    using kelListUInt32::erase;
    using kelListUInt32::find;
    using kelListUInt32::operator=;
};

} // namespace

// The editing rules, written again on std::vector as the oracle.
TEST(kelList, EditingMatchesTheReferenceOnGeneratedInput) {
    std::mt19937 rng(4711);
    for (int round = 0; round < 300; ++round) {
        std::vector<UInt32> ref;
        kelListUInt32 list;
        for (int step = 0; step < 40; ++step) {
            UInt32 const n = static_cast<UInt32>(ref.size());
            UInt32 const x = rng() % 6; // small values: plenty of duplicates
            UInt32 const a = rng() % (n + 3), b = rng() % (n + 3);
            bool ok = true;
            switch (rng() % 9) {
            case 0: // 0 and n append, beyond n fails
                ok = a <= n;
                ASSERT_EQ(ok, list.add(x, Index(a)));
                ref.insert(ok && a != 0 ? ref.begin() + a : ref.end(), ok ? 1 : 0, x);
                break;
            case 1: { // an empty list is always taken; else 0 inserts at the front
                std::vector<UInt32> other(rng() % 4, x);
                ok = other.empty() || a <= n;
                ASSERT_EQ(ok, list.add(u32List(other), Index(a)));
                ref.insert(ref.begin() + std::min(a, n), ok ? other.size() : 0, x);
                break;
            }
            case 2:
                ASSERT_EQ(a < n, list.erase(Index(a)));
                ref.erase(ref.begin() + std::min(a, n), ref.begin() + std::min(a + 1, n));
                break;
            case 3:
                ok = a < n && b <= n && a <= b;
                ASSERT_EQ(ok, list.erase(Index(a), Index(b)));
                ref.erase(ref.begin() + (ok ? a : 0), ref.begin() + (ok ? b : 0));
                break;
            case 4: {
                auto const hit = std::find(ref.begin(), ref.end(), x);
                ASSERT_EQ(hit != ref.end(), list.erase(x));
                ref.erase(hit, hit == ref.end() ? hit : hit + 1);
                break;
            }
            case 5: {
                kelListUInt32 out = u32List({99});
                UInt32 const count = (rng() % 4 == 0) ? 0xFFFFFFFFu : b;
                ASSERT_TRUE(list.subList(out, Index(a), count));
                std::vector<UInt32> want;
                for (UInt64 p = a; p < n && p < UInt64(a) + count; ++p) {
                    want.push_back(ref[p]);
                }
                ASSERT_EQ(want, u32(out));
                break;
            }
            case 6: { // the first of each value stays
                std::vector<UInt32> out;
                for (UInt32 v : ref) {
                    if (std::find(out.begin(), out.end(), v) == out.end()) {
                        out.push_back(v);
                    }
                }
                ref = out;
                list.unique();
                break;
            }
            case 7:
                std::reverse(ref.begin(), ref.end());
                list.reverse();
                break;
            default:
                ASSERT_TRUE(list.add(x));
                ref.push_back(x);
            }
            ASSERT_EQ(ref, u32(list)) << "round " << round << " step " << step;
            Index found(77);
            bool const has = list.find(x, found);
            auto const hit = std::find(ref.begin(), ref.end(), x);
            ASSERT_EQ(hit != ref.end(), has);
            ASSERT_EQ(has ? UInt32(hit - ref.begin()) : 0u, UInt32(found));
        }
    }
}

TEST(kelList, FindFromAStartAndEditingItself) {
    kelListUInt32 two = u32List({1, 2});
    Index found(5);
    EXPECT_FALSE(two.find(1u, Index(2), found));
    EXPECT_EQ(0u, UInt32(found));
    EXPECT_TRUE(two.find(2u, Index(1), found));
    EXPECT_EQ(1u, UInt32(found));

    // Adding or assigning a list to itself keeps its data.
    kelListUInt32 self = u32List({4, 5});
    self.add(self);
    EXPECT_EQ((std::vector<UInt32>{4, 5, 4, 5}), u32(self));
    kelListUInt32& alias = self;
    self = alias;
    self.subList(self, Index(1), 2);
    EXPECT_EQ((std::vector<UInt32>{5, 4}), u32(self));
}

TEST(kelList, OperatorsCompareSizesAndPlusChangesTheLeftSide) {
    kelListUInt32 a = u32List({1, 2}), b = u32List({3, 4});
    EXPECT_TRUE(!(a < b) && !(a > b) && a <= b && a >= b && a != b);
    kelListUInt32& sum = a + b;
    EXPECT_EQ(&a, &sum);
    EXPECT_EQ((std::vector<UInt32>{1, 2, 3, 4}), u32(a));
    EXPECT_TRUE(b < a);

    kelListDouble nan;
    nan.add(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(nan == kelListDouble(nan));
}

namespace {

std::vector<UInt32> sorted(std::vector<UInt32> v) {
    std::sort(v.begin(), v.end());
    return v;
}

} // namespace

TEST(kelList, OrderStatisticsSortingAndShuffling) {
    kelDefaultComparator<UInt32> numeric;
    kelListUInt32 l = u32List({2, 1, 1, 2});
    Index mn(9), mx(9);
    l.getMinMaxIndex(numeric, mn, mx);
    EXPECT_EQ(1u, UInt32(mn)); // the first of equal ones
    EXPECT_EQ(0u, UInt32(mx));
    EXPECT_EQ(&l.get(1), l.min(numeric));
    kelListUInt32 const empty;
    EXPECT_EQ(nullptr, empty.min(numeric));
    EXPECT_EQ(0u, UInt32(empty.getMinIndex(numeric)));

    std::mt19937 rng(7);
    std::vector<UInt32> values(500);
    for (UInt32& v : values) {
        v = rng() % 100;
    }
    std::vector<UInt32> const ordered = sorted(values);
    kelListUInt32 shuffled = u32List(values);
    shuffled.randomize();
    EXPECT_EQ(ordered, sorted(u32(shuffled))); // the same multiset
    shuffled.sort();
    EXPECT_EQ(ordered, u32(shuffled));
    kelReverseComparator reverse(numeric);
    shuffled.sort(reverse);
    EXPECT_EQ(std::vector<UInt32>(ordered.rbegin(), ordered.rend()), u32(shuffled));

    // A comparator that is no order at all still leaves a permutation.
    struct Liar : kelIComparator {
        int compare(void const*, void const*) const override { return -1; }
    } liar;
    shuffled.sort(liar);
    EXPECT_EQ(ordered, sorted(u32(shuffled)));

    // NaNs sort last and the rest in order.
    double const nan = std::numeric_limits<double>::quiet_NaN();
    kelListDouble d;
    for (int i = 0; i < 200; ++i) {
        d.add(i % 7 == 0 ? nan : double(rng() % 50));
    }
    d.sort();
    auto const isNan = [](double x) { return std::isnan(x); };
    double const* const begin = &d[0];
    double const* const end = begin + d.size();
    double const* const firstNan = std::find_if(begin, end, isNan);
    EXPECT_TRUE(std::is_sorted(begin, firstNan));
    EXPECT_TRUE(std::all_of(firstNan, end, isNan));

    kelListString words = makeList<kelListString>(std::vector<kelString>{"pear", "fig", "apple"});
    words.sort();
    EXPECT_EQ((std::vector<std::string>{"apple", "fig", "pear"}),
              (std::vector<std::string>{words[0].c_str(), words[1].c_str(), words[2].c_str()}));
}

TEST(kelList, OwnOperationsGoThroughTheVirtualSlots) {
    CountingList l;
    l.add(1u);
    l.add(2u);
    l.add(1u);
    l.adds = 0;
    EXPECT_TRUE(l.contains(2u));
    EXPECT_EQ(1, l.finds);
    EXPECT_TRUE(l.erase(2u)); // find, then erase by position
    EXPECT_EQ(2, l.finds);
    EXPECT_EQ(1, l.erases);
    l.unique();
    EXPECT_EQ(2, l.erases);
    l = u32List({5, 6});
    EXPECT_EQ(1, l.clears);
    EXPECT_EQ(1, l.adds); // the list form of add
    l.randomize();
    EXPECT_EQ(4, l.erases);
}

TEST(kelList, PointerListsNeverOwnTheirTargets) {
    kelString first("one"), second("two");
    kelListStringPtr pointers;
    pointers.add(&first);
    pointers.add(&second);
    pointers.add(&first);
    pointers.unique(); // by address
    EXPECT_EQ(2u, pointers.size());
    pointers.clear();
    EXPECT_STREQ("one", first.c_str()); // still alive: ASan would report a free
}

// Every named class has the whole interface.
TEST(kelList, EveryNamedClassWorks) {
#define KEL_LIST_TEST_ROW(L, T)                                                                    \
    {                                                                                              \
        L list;                                                                                    \
        T const value{};                                                                           \
        EXPECT_TRUE(list.add(value));                                                              \
        EXPECT_TRUE(list.add(value, L::INDEX(1)));                                                 \
        L copy(list);                                                                              \
        EXPECT_TRUE(copy == list) << #L;                                                           \
        copy.unique();                                                                             \
        copy.sort();                                                                               \
        EXPECT_EQ(1u, copy.size()) << #L;                                                          \
        L& same = (list + copy);                                                                   \
        EXPECT_EQ(3u, same.size()) << #L;                                                          \
    }
    KEL_LIST_CLASSES(KEL_LIST_TEST_ROW)
#undef KEL_LIST_TEST_ROW
}
