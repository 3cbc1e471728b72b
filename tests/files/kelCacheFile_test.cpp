#include "kelFilesScratch.h"
#include "support/kelWatchdog.h"

#include <kelcore/files/kelCacheFile.h>

#include <gtest/gtest.h>

#include <thread>

using namespace KELKIT;
using Data = kelCacheFile::FILE_DATA;

namespace {

std::string text(Data const& data) {
    return std::string(reinterpret_cast<char const*>(data.data.getBuffer()), data.data.getSize());
}

// What retreive hands out, or "<false>"; a record never claims more bytes than it holds.
std::string retreived(kelCacheFile& cache, std::string const& path) {
    Data data;
    data.size = 99;
    bool const found = cache.retreive(path.c_str(), data);
    EXPECT_EQ(found ? data.data.getSize() : 99u, data.size);
    return found ? text(data) : "<false>";
}

} // namespace

// Expirations set by the test: one in the past is stale, one far ahead is not; no key twice.
TEST(kelCacheT, ExpiryAndOneEntryPerKey) {
    kelCacheT<kelString, Data> store;
    kelTime const past(1), ahead(kelTime::now().getRawTime() + 100000);
    Data one, two;
    two.size = 2;
    store.add("a", two, ahead);
    store.add("a", one, ahead);    // taken: ignored
    store.update("b", two, ahead); // missing: ignored
    store.set("c", two, ahead);
    kelCacheT<kelString, Data> copy(store);
    store.set("a", one, past); // replaced: no older entry is left
    store.setExpiration("c", past);
    EXPECT_TRUE(!store.find("a") && !store.find("b") && !store.find("c"));
    EXPECT_TRUE(copy.find("a")->value.size == 2 && copy.find("c")->value.size == 2);
}

TEST(kelCacheFile, FileThatChangesDisappearsAndReappears) {
    kelScratch scratch("cache");
    std::string const path = scratch.lib("a.txt"), bytes("back\0again", 10);
    kelCacheFile cache, copy(cache), other;
    EXPECT_EQ(3600, cache.getTTL());
    scratch.write("a.txt", "one");
    EXPECT_EQ("one", retreived(cache, path));
    scratch.write("a.txt", "second");
    EXPECT_EQ("one", retreived(cache, path)); // young enough: not read again
    fs::remove(scratch.root / "a.txt");
    EXPECT_EQ("one", retreived(cache, path));
    copy.clear();                          // copies share one cache, released once
    EXPECT_EQ("", retreived(cache, path)); // opening to read has created it empty
    scratch.write("a.txt", bytes);
    EXPECT_EQ("", retreived(cache, path));
    Data data;
    data.size = 1234;
    ASSERT_TRUE(cache.reload(path.c_str(), data));
    EXPECT_TRUE(data.size == 10 && text(data) == bytes && retreived(copy, path) == bytes);
    other = copy;
    other.setTTL(7);
    EXPECT_EQ(7, cache.getTTL());
    // What cannot be opened: a folder, a missing folder, no path. Nothing changes.
    for (std::string const& p : {scratch.lib(), scratch.lib("none\\a.txt"), std::string()}) {
        EXPECT_FALSE(cache.reload(p.c_str(), data) || cache.reload(p.c_str()));
        EXPECT_EQ("<false>", retreived(cache, p));
    }
    EXPECT_FALSE(cache.retreive(nullptr, data) || fs::exists(scratch.root / "none"));
    EXPECT_TRUE(data.size == 10 && text(data) == bytes);
}

// Driven by the clock's second, not by this machine's speed: entries loaded with a TTL of 0 or
// below are stale once the second has changed; a huge one is not, and setTTL does not shorten
// it. Then the reader: at most the size at open, cut to 32 bits, and exactly the bytes that came.
TEST(kelCacheFile, TimeToLiveAndTheBytesRead) {
    kelWatchdog watchdog("the time-to-live cases", std::chrono::seconds(120));
    kelScratch scratch("ttl");
    std::string const path = scratch.lib("t.txt");
    scratch.write("t.txt", "old");
    kelCacheFile caches[3];
    int const ttls[] = {0x7FFFFFFF, 0, -0x7FFFFFFF - 1};
    for (int i = 0; i < 3; ++i) {
        caches[i].setTTL(ttls[i]);
        ASSERT_TRUE(caches[i].reload(path.c_str()));
    }
    caches[0].setTTL(0);
    kelTime const loaded;
    scratch.write("t.txt", "new");
    while (!(loaded < kelTime::now())) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ("old", retreived(caches[0], path));
    for (int i = 1; i < 3; ++i) {
        std::string got; // false while the second changes again within the reload
        while ((got = retreived(caches[i], path)) == "<false>") {
        }
        EXPECT_EQ("new", got);
    }
    fs::resize_file(scratch.write("big", "abc"), 0x100000003ull); // sparse
    EXPECT_EQ("abc", retreived(caches[0], scratch.lib("big")));
#if !defined(_WIN32)
    // Endless but reported empty: nothing is read. Reported as 4096 bytes: read short, or
    // refused (the loopback has no speed).
    EXPECT_EQ("", retreived(caches[0], "\\dev\\zero"));
    std::ifstream online("/sys/devices/system/cpu/online");
    if (online.is_open() && fs::exists("/sys/class/net/lo/speed")) {
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(online), {}),
                  retreived(caches[0], "\\sys\\devices\\system\\cpu\\online"));
        EXPECT_EQ("", retreived(caches[0], "\\sys\\class\\net\\lo\\speed"));
    }
#endif
}
