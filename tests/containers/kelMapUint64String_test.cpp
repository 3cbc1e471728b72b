#include <kelcore/containers/kelMapUint64String.h>

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

using namespace KELKIT;

TEST(kelMapUint64String, FollowsAnOrderedMapAndCopiesShareEntries) {
    std::mt19937_64 rng(11);
    UInt64 const keys[] = {0, 1, 3, 5, 0xFFFFFFFFFFFFFFFFull, 0x8000000000000000ull, 42};
    kelMapUint64String map;
    kelMapUint64String copy(map); // shares the entries from here on
    std::map<UInt64, std::string> oracle;
    for (int step = 0; step < 2000; ++step) {
        UInt64 const key = keys[rng() % 7];
        kelMapUint64String& target = step % 2 == 0 ? map : copy;
        switch (rng() % 4) {
        case 0:
        case 1: {
            kelString value(std::to_string(rng() % 100).c_str());
            kelString const before = value;
            target.set(key, value);
            EXPECT_EQ(before, value); // set leaves its argument alone
            oracle[key] = value.c_str();
            break;
        }
        case 2:
            target.remove(key); // a missing key is no error
            oracle.erase(key);
            break;
        default: {
            kelString value("untouched");
            bool const found = target.get(key, value);
            ASSERT_EQ(oracle.count(key) == 1, found);
            EXPECT_STREQ(found ? oracle[key].c_str() : "untouched", value.c_str());
            EXPECT_EQ(found, target.containsKey(key));
        }
        }
        kelListUInt64 const listed = map.getKeys();
        ASSERT_EQ(oracle.size(), listed.size());
        UInt32 i = 0;
        for (auto const& entry : oracle) {
            EXPECT_EQ(entry.first, listed[i++]); // ascending
        }
    }
    kelMapUint64String other;
    kelString text("x");
    other.set(7, text);
    other = map; // lets go of its former entries, now shares map's
    copy.clear();
    EXPECT_EQ(0u, other.getKeys().size());
    EXPECT_FALSE(other.containsKey(7));
}
