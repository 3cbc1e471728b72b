#include <kelcore/concurrency/kelMutex.h>
#include <kelcore/concurrency/kelSharedMemory.h>

#include "support/kelChildProcess.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

using namespace KELKIT;
using namespace std::chrono_literals;

namespace {

std::string uniqueName(char const* what) {
    return "kelcore-test-shm-" + std::string(what) + '-' + std::to_string(kelProcessId());
}

enum Bytes { Fill, Filled, Zeros };

// Fill writes byte i as i % 251 + 1 (never 0, not periodic in pages), from the end so that byte 0
// comes last; Filled and Zeros say whether every byte is so or 0 (an empty block is neither).
bool bytes(kelSharedMemory const& memory, Bytes use) {
    UInt32 const size = memory.getSize();
    for (UInt32 i = size; i-- > 0;) {
        auto const expected = static_cast<unsigned char>(use == Zeros ? 0 : i % 251 + 1);
        if (use == Fill) {
            memory.getBuffer()[i] = expected;
        } else if (memory.getBuffer()[i] != expected) {
            return false;
        }
    }
    return size > 0;
}

bool blockOrLockExists(std::string const& name) {
    return kelSharedMemory::exist(name.c_str()) || kelMutex::exist(("mutex" + name).c_str());
}

// Argument "<name>" or "<name>|lock": connects, takes the lock twice if asked, fills the block
// and waits to be killed.
KEL_CHILD_SCENARIO(fillAndWait) {
    std::size_t const bar = argument.find('|');
    kelSharedMemory memory(argument.substr(0, bar).c_str(), 1);
    for (int held = 0; bar != std::string::npos && held < 2; ++held) {
        memory.lock();
    }
    bytes(memory, Fill);
    for (;;) {
        std::this_thread::sleep_for(1s);
    }
}

// A child in fillAndWait, and this process's connection to its block once the child filled it
// (within a minute, or the checks fail and the child goes).
struct FilledChild {
    FilledChild(std::string const& name, bool holdLock)
        : child("fillAndWait", holdLock ? name + "|lock" : name) {
        for (int wait = 0; wait < 6000 && !ready(name); ++wait) {
            std::this_thread::sleep_for(10ms);
        }
    }
    bool ready(std::string const& name) {
        bool const in = memory.getBuffer() != nullptr ||
                        (kelSharedMemory::exist(name.c_str()) && memory.connect(name.c_str(), 1));
        return in && memory.getBuffer()[0] != 0;
    }
    kelChildProcess child;
    kelSharedMemory memory;
};

} // namespace

TEST(kelSharedMemory, CreatorClearsLaterUsersAttachCopiesShareOneConnection) {
    std::string const name = uniqueName("life");
    kelSharedMemory none;
    EXPECT_TRUE(none.disconnect() && !none.connect(name.c_str(), 0) && !none.connect(nullptr, 1));
    EXPECT_TRUE(!none.isConnected() && none.getSize() == 0 && none.getBuffer() == nullptr);
    EXPECT_FALSE(blockOrLockExists(name));

    kelSharedMemory first(name.c_str(), 1);
    ASSERT_TRUE(first.isConnected());
    EXPECT_TRUE(kelMutex::exist(("mutex" + name).c_str()));
    UInt32 const page = first.getSize();
    EXPECT_TRUE(page >= 4096 && (page & (page - 1)) == 0) << page;
    EXPECT_TRUE(bytes(first, Zeros));
    bytes(first, Fill);

    kelSharedMemory second;
    ASSERT_TRUE(second.connect(name.c_str(), 3 * page)); // attaches: no new size, no clearing
    EXPECT_EQ(page, second.getSize());
    EXPECT_TRUE(bytes(second, Filled));
    second.getBuffer()[page - 1] = 0;
    EXPECT_EQ(0, first.getBuffer()[page - 1]);
    std::string const other = name + "-other";
    EXPECT_TRUE(second.connect(other.c_str(), 1)); // stays on its name
    EXPECT_FALSE(kelSharedMemory::exist(other.c_str()));

    {
        kelSharedMemory copy(second);
        kelSharedMemory assigned(other.c_str(), 1);
        assigned = copy; // lets go of its own connection, the last one of other
        EXPECT_FALSE(kelSharedMemory::exist(other.c_str()));
    }
    ASSERT_TRUE(second.isConnected()) << "a copy that went took the connection with it";
    kelSharedMemory copy(second);
    EXPECT_TRUE(copy.disconnect());
    EXPECT_FALSE(second.isConnected());
    EXPECT_TRUE(kelSharedMemory::exist(name.c_str()));

    EXPECT_TRUE(first.disconnect());
    EXPECT_FALSE(blockOrLockExists(name));
    ASSERT_TRUE(first.connect(name.c_str(), page + 1)); // afresh, with its new size
    EXPECT_EQ(2 * page, first.getSize());
    EXPECT_TRUE(bytes(first, Zeros));
}

TEST(kelSharedMemory, AUserKilledWhileConnectedKeepsNothingAlive) {
    kelWatchdog watchdog("users killed while connected", 120s);
    std::string const name = uniqueName("killed");
    {
        FilledChild filled(name, false);
        filled.child.kill();
        EXPECT_TRUE(kelSharedMemory::exist(name.c_str())) << "gone under a live user";
        EXPECT_TRUE(bytes(filled.memory, Filled));
        EXPECT_TRUE(filled.memory.disconnect());
        EXPECT_FALSE(blockOrLockExists(name));
    }
    // A lone user killed: what it leaves is no block, nor the next creator's contents.
    FilledChild filled(name, false);
    EXPECT_TRUE(bytes(filled.memory, Filled) && filled.memory.disconnect());
    filled.child.kill();
    kelSharedMemory fresh(name.c_str(), 1);
    EXPECT_TRUE(bytes(fresh, Zeros));
}

TEST(kelSharedMemory, AUserKilledWhileHoldingTheLockBlocksNoOne) {
    kelWatchdog watchdog("a user killed while holding the lock", 120s);
    std::string const name = uniqueName("locked");
    FilledChild filled(name, true);
    std::atomic<bool> got{false};
    std::thread waiter([&] {
        filled.memory.lock();
        got = true;
        filled.memory.unlock();
    });
    std::this_thread::sleep_for(300ms);
    EXPECT_FALSE(got.load()) << "the lock was free while the child held it";
    filled.child.kill();
    waiter.join();
    EXPECT_TRUE(filled.memory.isConnected() && bytes(filled.memory, Filled)); // both take the lock
    EXPECT_TRUE(filled.memory.disconnect());
    EXPECT_FALSE(blockOrLockExists(name));
    kelSharedMemory fresh(name.c_str(), 1);
    EXPECT_TRUE(bytes(fresh, Zeros));
}
