#include <kelcore/containers/kelMapUint64String.h>

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

using namespace KELKIT;

TEST(kelMapUint64String, FollowsAnOrderedMapAndCopiesShareEntries) {
    std::mt19937_64 rng(11);
    UInt64 const keys[] = {0, 1, 3, 5, 0xFFFFFFFFFFFFFFFFull, 0x8000000000000000ull, 42};
    kelMapUint64String maps[2];
    maps[1] = maps[0]; // shares the entries from here on; its own empty ones go
    std::map<UInt64, std::string> oracle;
    for (int step = 0; step < 2000; ++step) {
        UInt64 const key = keys[rng() % 7];
        kelMapUint64String map = maps[step % 2]; // and so does every copy
        kelString value(std::to_string(rng() % 100).c_str());
        std::string const before = value.c_str();
        if (step % 3 == 0) {
            map.set(key, value); // adds or replaces
            oracle[key] = before;
        } else if (step % 3 == 1) {
            map.remove(key); // a missing key is no error
            oracle.erase(key);
        }
        bool const found = map.get(key, value); // a missing key leaves value alone
        EXPECT_EQ(oracle.count(key) == 1, found);
        EXPECT_EQ(found, map.containsKey(key));
        EXPECT_EQ(found ? oracle[key] : before, value.c_str());
        kelListUInt64 const listed = maps[0].getKeys();
        ASSERT_EQ(oracle.size(), listed.size());
        UInt32 i = 0;
        for (auto const& entry : oracle) {
            EXPECT_EQ(entry.first, listed[i++]); // ascending
        }
    }
    maps[1].clear();
    EXPECT_EQ(0u, maps[0].getKeys().size());
}
