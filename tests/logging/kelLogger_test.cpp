#include <kelcore/logging/kelConsoleLogger.h>
#include <kelcore/logging/kelFileLogger.h>

#include "support/kelScratchFolder.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace KELKIT;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

using kelTest::ScratchFolder;

TEST(kelFileLogger, WritesExactlyTheTextWithLineFeedsAsCrLf) {
    ScratchFolder scratch("exact");
    {
        kelFileLogger log(scratch.lib("a.log").c_str(), false);
        log.print("a\nb");
        log.print("");
        log.print(nullptr);
        log.print("|\r\n|\n\n");
        log.printArgs("%d", 7);
        log.printArgs(nullptr);
    }
    EXPECT_EQ("a\r\nb|\r\r\n|\r\n\r\n7", scratch.read("a.log"));

    kelFileLogger second(scratch.lib("a.log").c_str(), true); // empties the file
    EXPECT_EQ("", scratch.read("a.log"));

    // A path that cannot be opened: every call returns and nothing is created.
    kelFileLogger nowhere(scratch.lib("missing\\x.log").c_str(), true);
    nowhere.print("lost\n");
    nowhere.printArgs("%s", "lost");
    EXPECT_FALSE(fs::exists(scratch.root / "missing"));
}

TEST(kelFileLogger, LongFormattedTextIsCutAtTheBuffer) {
    ScratchFolder scratch("cut");
    UInt32 const limit = kelBaseLogger::FORMAT_BUFFER_SIZE - 1;
    for (UInt32 length : {limit - 1, limit, limit + 1, 3 * limit}) {
        std::string text;
        for (UInt32 i = 0; i < length; ++i) {
            text += i % 700 == 699 ? '\n' : static_cast<char>('a' + i % 26);
        }
        {
            kelFileLogger log(scratch.lib("cut.log").c_str(), false);
            log.printArgs("%s", text.c_str());
        }
        std::string expected;
        for (char c : text.substr(0, limit)) {
            expected += c == '\n' ? std::string("\r\n") : std::string(1, c);
        }
        EXPECT_EQ(expected, scratch.read("cut.log")) << length;
    }
}

TEST(kelFileLogger, AutoFlushAndCopiesSharingOneStream) {
    ScratchFolder scratch("copies");
    auto first = std::make_unique<kelFileLogger>(scratch.lib("c.log").c_str(), true);
    first->print("1\n");
    EXPECT_EQ("1\r\n", scratch.read("c.log")); // visible as print returns

    auto copy = std::make_unique<kelFileLogger>(*first);
    kelFileLogger assigned(scratch.lib("other.log").c_str(), false);
    assigned = *copy; // lets go of other.log, takes the shared stream
    first.reset();    // the stream stays open for the copies
    copy->print("2");
    assigned.setAutoFlush(true);
    assigned.print("3");
    copy.reset();
    assigned.print("4");
    EXPECT_EQ("1\r\n234", scratch.read("c.log"));
    EXPECT_EQ("", scratch.read("other.log"));
}

// Eight threads, ten thousand lines each, half of them written in three pieces under the held
// lock: every line arrives whole, and each thread's lines in its own order.
TEST(kelFileLogger, ThreadsLoseNothingAndNeverSplitALine) {
    ScratchFolder scratch("threads");
    int const threads = 8, lines = 10000;
    {
        kelWatchdog watchdog("eight logging threads", 300s);
        kelFileLogger log(scratch.lib("t.log").c_str(), false);
        std::vector<std::thread> writers;
        for (int t = 0; t < threads; ++t) {
            writers.emplace_back([&log, t] {
                for (int i = 0; i < lines; ++i) {
                    if (i % 2 == 0) {
                        log.printArgs("thread %d line %05d of the writers\n", t, i);
                    } else {
                        log.enterCriticalSection();
                        log.printArgs("thread %d ", t);
                        log.printArgs("line %05d", i);
                        log.print(" of the writers\n");
                        log.leaveCriticalSection();
                    }
                }
            });
        }
        for (std::thread& writer : writers) {
            writer.join();
        }
    }
    std::string const text = scratch.read("t.log");
    std::vector<int> next(threads, 0);
    std::size_t start = 0, count = 0;
    for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
        std::string const line = text.substr(start, end - start);
        int t = -1;
        ASSERT_TRUE(std::sscanf(line.c_str(), "thread %d", &t) == 1 && t >= 0 && t < threads)
            << line;
        char expected[64];
        std::snprintf(expected, sizeof expected, "thread %d line %05d of the writers", t,
                      next[t]++);
        ASSERT_EQ(expected, line);
        ++count;
    }
    EXPECT_EQ(text.size(), start); // nothing after the last line end
    EXPECT_EQ(static_cast<std::size_t>(threads * lines), count);
}

TEST(kelConsoleLogger, WritesTheTextUnchanged) {
    kelConsoleLogger log;
    kelConsoleLogger copy(log);
    testing::internal::CaptureStdout();
    log.print("a\nb");
    copy.printArgs("%d", 7);
    log.print(nullptr);
    EXPECT_EQ("a\nb7", testing::internal::GetCapturedStdout());
}
