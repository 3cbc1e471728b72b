#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/concurrency/kelMutex.h>

#include "support/kelChildProcess.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

using namespace KELKIT;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

// A name no other run of the suite uses, so that parallel runs and leftovers do not meet.
std::string uniqueName(char const* what) {
    static std::atomic<int> counter{0};
    auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
    return "kelcore-test-" + std::string(what) + '-' + std::to_string(now) + '-' +
           std::to_string(++counter);
}

void waitForFile(fs::path const& path) {
    kelWatchdog watchdog("waiting for the child's marker", 60s);
    while (!fs::exists(path)) {
        std::this_thread::sleep_for(10ms);
    }
}

// Read, increment and write back a counter in a file: lost updates show missing exclusion.
void incrementFileCounter(std::string const& path) {
    long value = 0;
    std::ifstream(path) >> value;
    std::ofstream(path, std::ios::trunc) << value + 1;
}

// Argument "<mutex name>|<file>|<count>".
struct Arguments {
    explicit Arguments(std::string const& text) {
        std::istringstream in(text);
        std::getline(in, name, '|');
        std::getline(in, file, '|');
        in >> count;
    }
    std::string name, file;
    int count = 0;
};

KEL_CHILD_SCENARIO(countUnderMutex) {
    Arguments const arguments(argument);
    kelMutex mutex(arguments.name.c_str());
    for (int i = 0; i < arguments.count; ++i) {
        mutex.reserve();
        incrementFileCounter(arguments.file);
        mutex.release();
    }
    return 0;
}

// Takes the mutex twice, leaves a marker, and waits to be killed.
KEL_CHILD_SCENARIO(holdMutexForever) {
    Arguments const arguments(argument);
    kelMutex mutex(arguments.name.c_str());
    mutex.reserve();
    mutex.reserve();
    std::ofstream(arguments.file) << "held";
    for (;;) {
        std::this_thread::sleep_for(1s);
    }
}

template <class Lock, class Enter, class Leave>
void expectExclusionBetweenThreads(Lock& first, Lock& second, Enter enter, Leave leave,
                                   int perThread) {
    kelWatchdog watchdog("exclusion between threads", 120s);
    long counter = 0; // deliberately not atomic
    auto work = [&](Lock& lock) {
        for (int i = 0; i < perThread; ++i) {
            enter(lock);
            enter(lock); // re-entry by the holder
            long const seen = counter;
            counter = seen + 1;
            leave(lock);
            leave(lock);
        }
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back(work, t % 2 == 0 ? std::ref(first) : std::ref(second));
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(4L * perThread, counter);
}

template <class Lock, class Enter, class Leave>
void expectWaiterBlocksUntilLastLeave(Lock& holderSide, Lock& waiterSide, Enter enter,
                                      Leave leave) {
    kelWatchdog watchdog("a waiter behind a re-entered lock", 60s);
    enter(holderSide);
    enter(holderSide);
    std::atomic<bool> waiterIn{false};
    std::thread waiter([&] {
        enter(waiterSide);
        waiterIn = true;
        leave(waiterSide);
    });
    leave(holderSide);
    std::this_thread::sleep_for(200ms);
    EXPECT_FALSE(waiterIn.load()) << "the lock was free after one of two leaves";
    leave(holderSide);
    waiter.join();
    EXPECT_TRUE(waiterIn.load());
}

auto const reserve = [](kelMutex& lock) { lock.reserve(); };
auto const release = [](kelMutex& lock) { lock.release(); };

} // namespace

TEST(kelCriticalSection, ReentrantExclusionSharedByCopies) {
    auto enter = [](kelCriticalSection& lock) { lock.enter(); };
    auto leave = [](kelCriticalSection& lock) { lock.leave(); };
    kelCriticalSection lock;
    kelCriticalSection copy(lock);
    expectExclusionBetweenThreads(lock, copy, enter, leave, 20000);
    kelCriticalSection assigned;
    assigned = lock;
    expectWaiterBlocksUntilLastLeave(lock, assigned, enter, leave);
}

TEST(kelMutex, ReentrantExclusionWithinTheProcess) {
    std::string const name = uniqueName("threads");
    kelMutex first(name.c_str());
    kelMutex second(name.c_str()); // found by name, not copied
    // Fewer rounds: each one is a system call, and a slow one under Wine.
    expectExclusionBetweenThreads(first, second, reserve, release, 2000);
    expectWaiterBlocksUntilLastLeave(first, second, reserve, release);

    kelMutex unnamed;
    kelMutex assigned;
    assigned = unnamed;
    expectWaiterBlocksUntilLastLeave(unnamed, assigned, reserve, release);
    // A thread that does not hold the lock cannot release it for the holder.
    expectWaiterBlocksUntilLastLeave(unnamed, unnamed, reserve, [&](kelMutex& lock) {
        std::thread([&] { lock.release(); }).join();
        lock.release();
    });
}

TEST(kelMutex, ExistsExactlyWhileAnObjectOfTheNameLives) {
    std::string const name = uniqueName("exist");
    EXPECT_FALSE(kelMutex::exist(name.c_str()));
    EXPECT_FALSE(kelMutex::exist(nullptr));
    {
        auto first = std::make_unique<kelMutex>(name.c_str());
        EXPECT_TRUE(kelMutex::exist(name.c_str()));
        kelMutex second(name.c_str());
        kelMutex shared;
        shared = second;
        first.reset();
        EXPECT_TRUE(kelMutex::exist(name.c_str()));
        second.reserve();
        second.reserve();
    } // destroyed while held: each destructor releases once
    EXPECT_FALSE(kelMutex::exist(name.c_str()));
    EXPECT_FALSE(kelMutex::exist((name + "-other").c_str()));
}

TEST(kelMutex, UnusableNamesThrowItsText) {
    std::string const tooLong(400, 'n');
    try {
        kelMutex mutex(tooLong.c_str());
        FAIL() << "a name of 400 characters was accepted";
    } catch (char const* text) {
        EXPECT_STREQ("CreateMutex() call failed. Unable to create a new mutex", text);
    }
}

TEST(kelMutex, ExclusionBetweenProcesses) {
    std::string const name = uniqueName("processes");
    fs::path const counter = fs::temp_directory_path() / (name + ".count");
    std::ofstream(counter) << 0;
    int const perProcess = 150;
    std::string const argument = name + "|" + counter.string() + "|" + std::to_string(perProcess);
    {
        kelWatchdog watchdog("processes counting under one mutex", 240s);
        kelChildProcess first("countUnderMutex", argument);
        kelChildProcess second("countUnderMutex", argument);
        ASSERT_TRUE(first.started() && second.started());
        EXPECT_EQ(0, countUnderMutex(argument));
        EXPECT_EQ(0, first.wait());
        EXPECT_EQ(0, second.wait());
    }
    long total = -1;
    std::ifstream(counter) >> total;
    EXPECT_EQ(3 * perProcess, total);
    EXPECT_FALSE(kelMutex::exist(name.c_str()));
    fs::remove(counter);
}

TEST(kelMutex, AHolderThatDiesDoesNotBlockTheNextReserve) {
    std::string const name = uniqueName("abandoned");
    fs::path const marker = fs::temp_directory_path() / (name + ".held");
    kelChildProcess holder("holdMutexForever", name + "|" + marker.string() + "|0");
    ASSERT_TRUE(holder.started());
    waitForFile(marker);
    EXPECT_TRUE(kelMutex::exist(name.c_str()));
    {
        kelMutex mutex(name.c_str());
        std::atomic<bool> got{false};
        std::thread waiter([&] {
            mutex.reserve();
            got = true;
            mutex.release();
        });
        std::this_thread::sleep_for(300ms);
        EXPECT_FALSE(got.load()) << "the mutex was free while the child held it";
        kelWatchdog watchdog("reserve after the holder was killed", 60s);
        holder.kill();
        waiter.join();
        EXPECT_TRUE(got.load());
        // The waiter held it once and gave it back once, whatever depth the dead one left.
        std::thread([&] {
            mutex.reserve();
            mutex.release();
        }).join();
    }
    // The dead holder does not keep the name alive.
    EXPECT_FALSE(kelMutex::exist(name.c_str()));
    fs::remove(marker);
}

TEST(kelMutex, ANameOutlivesOneProcessWhileAnotherStillUsesIt) {
    std::string const name = uniqueName("outlive");
    fs::path const marker = fs::temp_directory_path() / (name + ".held");
    kelMutex mine(name.c_str());
    {
        kelChildProcess holder("holdMutexForever", name + "|" + marker.string() + "|0");
        ASSERT_TRUE(holder.started());
        waitForFile(marker);
        holder.kill();
    }
    EXPECT_TRUE(kelMutex::exist(name.c_str()));
    kelMutex again(name.c_str()); // the same lock, not a fresh one
    expectWaiterBlocksUntilLastLeave(mine, again, reserve, release);
    fs::remove(marker);
}
