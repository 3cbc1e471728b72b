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
std::vector<T> contents(L const& list) {
    std::vector<T> out;
    for (UInt32 i = 0; i < list.size(); ++i) {
        out.push_back(list.get(i));
    }
    return out;
}

template <typename L, typename T>
L makeList(std::vector<T> const& values) {
    L list;
    for (T const& v : values) {
        list.add(v);
    }
    return list;
}

std::vector<UInt32> u32(kelListUInt32 const& l) {
    return contents<kelListUInt32, UInt32>(l);
}

kelListUInt32 u32List(std::vector<UInt32> const& v) {
    return makeList<kelListUInt32>(v);
}

// The editing rules, written again on std::vector as the oracle.
struct Reference {
    static bool addAt(std::vector<UInt32>& v, UInt32 x, UInt32 i) {
        if (i == 0 || i == v.size()) {
            v.push_back(x);
            return true;
        }
        if (i > v.size()) {
            return false;
        }
        v.insert(v.begin() + i, x);
        return true;
    }
    static bool addList(std::vector<UInt32>& v, std::vector<UInt32> const& o, UInt32 i) {
        if (o.empty()) {
            return true;
        }
        if (i > v.size()) {
            return false;
        }
        v.insert(v.begin() + i, o.begin(), o.end());
        return true;
    }
    static bool eraseRange(std::vector<UInt32>& v, UInt32 first, UInt32 last) {
        if (!(first < v.size() && last <= v.size() && first <= last)) {
            return false;
        }
        v.erase(v.begin() + first, v.begin() + last);
        return true;
    }
    static std::vector<UInt32> subList(std::vector<UInt32> const& v, UInt32 start, UInt32 count) {
        std::vector<UInt32> out;
        for (UInt64 p = start; p < v.size() && p < UInt64(start) + count; ++p) {
            out.push_back(v[p]);
        }
        return out;
    }
    static void unique(std::vector<UInt32>& v) {
        std::vector<UInt32> out;
        for (UInt32 x : v) {
            if (std::find(out.begin(), out.end(), x) == out.end()) {
                out.push_back(x);
            }
        }
        v = out;
    }
};

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

TEST(kelList, EditingMatchesTheReferenceOnGeneratedInput) {
    std::mt19937 rng(4711);
    for (int round = 0; round < 300; ++round) {
        std::vector<UInt32> ref;
        kelListUInt32 list;
        for (int step = 0; step < 40; ++step) {
            UInt32 const n = static_cast<UInt32>(ref.size());
            UInt32 const x = rng() % 6; // small values: plenty of duplicates
            UInt32 const a = rng() % (n + 3), b = rng() % (n + 3);
            switch (rng() % 9) {
            case 0:
                ASSERT_EQ(Reference::addAt(ref, x, a), list.add(x, Index(a)));
                break;
            case 1: {
                std::vector<UInt32> other(rng() % 4, x);
                ASSERT_EQ(Reference::addList(ref, other, a), list.add(u32List(other), Index(a)));
                break;
            }
            case 2:
                ASSERT_EQ(a < n, list.erase(Index(a)));
                if (a < n) {
                    ref.erase(ref.begin() + a);
                }
                break;
            case 3:
                ASSERT_EQ(Reference::eraseRange(ref, a, b), list.erase(Index(a), Index(b)));
                break;
            case 4: {
                auto const hit = std::find(ref.begin(), ref.end(), x);
                ASSERT_EQ(hit != ref.end(), list.erase(x));
                if (hit != ref.end()) {
                    ref.erase(hit);
                }
                break;
            }
            case 5: {
                kelListUInt32 out = u32List({99});
                UInt32 const count = (rng() % 4 == 0) ? 0xFFFFFFFFu : b;
                ASSERT_TRUE(list.subList(out, Index(a), count));
                ASSERT_EQ(Reference::subList(ref, a, count), u32(out));
                break;
            }
            case 6:
                Reference::unique(ref);
                list.unique();
                break;
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

TEST(kelList, IndexRulesAtTheBoundaries) {
    kelListUInt32 l = u32List({1, 2, 3});
    EXPECT_TRUE(l.add(9u, Index(0))); // 0 appends
    EXPECT_EQ((std::vector<UInt32>{1, 2, 3, 9}), u32(l));
    l = u32List({1, 2, 3});
    EXPECT_TRUE(l.add(9u, Index(1)));
    EXPECT_EQ((std::vector<UInt32>{1, 9, 2, 3}), u32(l));
    l = u32List({1, 2, 3});
    EXPECT_TRUE(l.add(9u, Index(3)));
    EXPECT_FALSE(l.add(9u, Index(5)));
    EXPECT_EQ((std::vector<UInt32>{1, 2, 3, 9}), u32(l));

    kelListUInt32 one = u32List({1});
    EXPECT_TRUE(one.add(u32List({8, 9}), Index(0))); // the list form inserts at the front
    EXPECT_EQ((std::vector<UInt32>{8, 9, 1}), u32(one));
    kelListUInt32 two = u32List({1, 2});
    EXPECT_FALSE(two.add(u32List({7}), Index(5)));
    EXPECT_TRUE(two.add(kelListUInt32(), Index(5)));
    EXPECT_TRUE(two.erase(Index(0), Index(0)));
    EXPECT_FALSE(two.erase(Index(2), Index(2)));
    EXPECT_FALSE(two.erase(Index(1), Index(0)));
    EXPECT_EQ(2u, two.size());

    Index found(5);
    EXPECT_FALSE(two.find(1u, Index(2), found));
    EXPECT_EQ(0u, UInt32(found));
    EXPECT_TRUE(two.find(2u, Index(1), found));
    EXPECT_EQ(1u, UInt32(found));

    kelListUInt32 out;
    EXPECT_TRUE(u32List({1, 2, 3}).subList(out, Index(1), 10));
    EXPECT_EQ((std::vector<UInt32>{2, 3}), u32(out));
    EXPECT_TRUE(u32List({1, 2, 3}).subList(out, Index(3), 1));
    EXPECT_TRUE(out.empty());

    kelListUInt32 u = u32List({3, 1, 3, 2, 1});
    u.unique();
    EXPECT_EQ((std::vector<UInt32>{3, 1, 2}), u32(u));

    // Adding or assigning a list to itself keeps its data.
    kelListUInt32 self = u32List({4, 5});
    self.add(self);
    EXPECT_EQ((std::vector<UInt32>{4, 5, 4, 5}), u32(self));
    kelListUInt32& alias = self;
    self = alias;
    EXPECT_EQ(4u, self.size());
    self.subList(self, Index(1), 2);
    EXPECT_EQ((std::vector<UInt32>{5, 4}), u32(self));
}

TEST(kelList, OperatorsCompareSizesAndPlusChangesTheLeftSide) {
    kelListUInt32 a = u32List({1, 2}), b = u32List({3, 4});
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(a > b);
    EXPECT_TRUE(a <= b && a >= b);
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    kelListUInt32& sum = a + b;
    EXPECT_EQ(&a, &sum);
    EXPECT_EQ((std::vector<UInt32>{1, 2, 3, 4}), u32(a));
    EXPECT_TRUE(b < a);
    a += b;
    EXPECT_EQ(6u, a.size());
    a = b;
    EXPECT_TRUE(a == b);

    kelListDouble nan;
    nan.add(std::numeric_limits<double>::quiet_NaN());
    kelListDouble const copy(nan);
    EXPECT_FALSE(nan == copy);
}

TEST(kelList, OrderStatisticsSortingAndShuffling) {
    kelDefaultComparator<UInt32> numeric;
    kelListUInt32 l = u32List({2, 1, 1, 2});
    Index mn(9), mx(9);
    l.getMinMaxIndex(numeric, mn, mx);
    EXPECT_EQ(1u, UInt32(mn));
    EXPECT_EQ(0u, UInt32(mx));
    EXPECT_EQ(&l.get(1), l.min(numeric));
    EXPECT_EQ(&l.get(0), l.max(numeric));
    kelListUInt32 const empty;
    EXPECT_EQ(nullptr, empty.min(numeric));
    EXPECT_EQ(0u, UInt32(empty.getMinIndex(numeric)));

    std::mt19937 rng(7);
    std::vector<UInt32> values(500);
    for (UInt32& v : values) {
        v = rng() % 100;
    }
    kelListUInt32 shuffled = u32List(values);
    shuffled.randomize();
    std::vector<UInt32> got = u32(shuffled), sorted = values;
    std::sort(got.begin(), got.end());
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, got); // the same multiset

    shuffled.sort();
    EXPECT_EQ(sorted, u32(shuffled));
    kelReverseComparator reverse(numeric);
    shuffled.sort(reverse);
    std::reverse(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, u32(shuffled));

    // A comparator that is no order at all still leaves a permutation.
    struct Liar : kelIComparator {
        int compare(void const*, void const*) const override { return -1; }
    } liar;
    shuffled.sort(liar);
    got = u32(shuffled);
    std::sort(got.begin(), got.end());
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, got);

    // NaNs sort last and the rest in order.
    double const nan = std::numeric_limits<double>::quiet_NaN();
    kelListDouble d;
    for (int i = 0; i < 200; ++i) {
        d.add(i % 7 == 0 ? nan : double(rng() % 50));
    }
    d.sort();
    UInt32 firstNan = 0;
    while (firstNan < d.size() && !std::isnan(d[firstNan])) {
        ++firstNan;
    }
    EXPECT_TRUE(std::is_sorted(&d[0], &d[0] + firstNan));
    for (UInt32 i = firstNan; i < d.size(); ++i) {
        EXPECT_TRUE(std::isnan(d[i]));
    }

    kelListString words = makeList<kelListString>(std::vector<kelString>{"pear", "fig", "apple"});
    words.sort();
    EXPECT_EQ((std::vector<std::string>{"apple", "fig", "pear"}),
              (std::vector<std::string>{words[0].c_str(), words[1].c_str(), words[2].c_str()}));
    kelListMonth months;
    months.add(kelMonth(kelMonth::March));
    months.add(kelMonth(kelMonth::January));
    months.sort();
    EXPECT_EQ(kelMonth::January, months[0].getValue());
    EXPECT_TRUE(months.contains(kelMonth(kelMonth::March)));
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
    EXPECT_EQ(1, l.adds);
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

    kelListHModule modules;
    modules.add(nullptr);
    EXPECT_TRUE(modules.contains(nullptr));
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
