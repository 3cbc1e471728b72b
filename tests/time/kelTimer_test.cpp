#include <kelcore/time/kelTimer.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace KELKIT;

static void sleepMs(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

// Margins are wide: the machine is shared, and sleeps overrun.
TEST(kelTimer, LapsPausesAndCopies) {
    kelTimer t;
    t.startTimer();
    sleepMs(100);
    EXPECT_EQ(0.0, t.getTimer()); // started, never stopped
    t.stopTimer();
    double const lap = t.getTimer();
    EXPECT_TRUE(lap >= 0.09 && lap < 5.0) << lap;
    t.stopTimer(); // the second stop adds only the gap since the first
    EXPECT_TRUE(t.getTimer() >= lap && t.getTimer() < lap + 0.5) << t.getTimer();

    kelTimer p;
    p.startTimer();
    sleepMs(100);
    p.pauseTimer();
    EXPECT_TRUE(p.isPaused());
    double const banked = p.getTimer();
    EXPECT_GE(banked, 0.09);
    kelTimer copy(p);
    sleepMs(1500); // paused: not counted
    p.pauseTimer();
    EXPECT_FALSE(p.isPaused());
    EXPECT_EQ(banked, p.getTimer());
    sleepMs(100);
    p.stopTimer();
    EXPECT_TRUE(p.getTimer() >= banked + 0.09 && p.getTimer() < banked + 1.4) << p.getTimer();

    EXPECT_TRUE(copy.isPaused());
    EXPECT_EQ(banked, copy.getTimer());
    p = copy;
    p.startTimer(); // restarts from zero and leaves the pause flag alone
    EXPECT_EQ(0.0, p.getTimer());
    EXPECT_TRUE(p.isPaused());
}
