#include <kelcore/frame/kelAssertManager.h>
#include <kelcore/frame/kelException.h>
#include <kelcore/frame/kelGlobal.h>
#include <kelcore/internal/kelQuestionTerminal.h>

#include <gtest/gtest.h>

#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>
#endif

using namespace KELKIT;

namespace {

// Every test leaves the process-wide mode as it found it.
struct ModeGuard {
    kelAssertManager::Mode const saved = kelAssertManager::getInstance().getMode();
    explicit ModeGuard(int mode) { kelAssertManager::getInstance().setMode(mode); }
    ~ModeGuard() { kelAssertManager::getInstance().setMode(saved); }
};

std::string expectedMessage(char const* expression, int line) {
    return "kelAssertion failed: (" + std::string(expression) + "), file " + __FILE__ + ", line " +
           std::to_string(line) + "\n";
}

} // namespace

TEST(kelAssert, DefaultAndUnnamedModesReturnAndExceptionModeThrowsTheMessage) {
    int evaluated = 0;
    for (int mode : {0, 3}) {
        ModeGuard const guard(mode);
        kelAssert(++evaluated == 0); // evaluated exactly once, then back here
    }
    EXPECT_EQ(2, evaluated);

    ModeGuard const guard(kelAssertManager::Mode::Exception);
    int line = __LINE__ + 2;
    try {
        kelAssert(evaluated + 1 == 4);
        ADD_FAILURE() << "no exception";
    } catch (kelException const& e) {
        EXPECT_EQ(expectedMessage("evaluated + 1 == 4", line), e.getDescription());
        EXPECT_EQ(0u, e.getErrorNumber());
        EXPECT_STREQ("", e.getSourceFile());
    }
    kelAssert(evaluated == 2); // a true condition does nothing
}

TEST(kelGlobal, VersionAndLowPointerBits) {
    kelVersion const version = kelGlobal::getKelKitVersion();
    EXPECT_EQ(437, version.getBuild());
    EXPECT_STREQ("2.0.0.437", version.toString().c_str());
    kelGlobal global;
    std::uintptr_t const address =
        sizeof(void*) > 4 ? (std::uintptr_t(0x9) << 32) | 0x87654321u : std::uintptr_t(0x87654321u);
    EXPECT_EQ(0x87654321u, global.kelPtrToULong(reinterpret_cast<void const*>(address)));
}

#if !defined(_WIN32)

// The library asks on a pseudo-terminal whose keyboard the test types on.
TEST(kelAssert, MessageModeAsksOnTheTerminalAndEndsTheProcessOnNo) {
    ModeGuard const guard(kelAssertManager::Mode::Message);
    int const master = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(master >= 0 && ::grantpt(master) == 0 && ::unlockpt(master) == 0);
    int const device = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
    termios settings{};
    ::tcgetattr(device, &settings);
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO); // the screen shows questions only
    ::tcsetattr(device, TCSANOW, &settings);
    internal::setQuestionTerminal(::ptsname(master));
    auto const type = [&](std::string const& keys) {
        ASSERT_EQ(ssize_t(keys.size()), ::write(master, keys.data(), keys.size()));
    };

    type("maybe\n  Yes\n"); // asked again until the answer starts with y or n
    int const line = __LINE__ + 1;
    kelAssert(guard.saved == 99);
    std::string const question = "kelAssert error\n" + expectedMessage("guard.saved == 99", line) +
                                 "\nDo you want to continue execution ? [y/n] ";
    std::string shown;
    pollfd poller{master, POLLIN, 0};
    char c = 0;
    while (shown.size() < 2 * question.size() && ::poll(&poller, 1, 10000) > 0 &&
           ::read(master, &c, 1) == 1) {
        shown += c == '\r' ? "" : std::string(1, c);
    }
    EXPECT_EQ(question + question, shown);

    type("n\n");
    EXPECT_EXIT(kelAssert(false), testing::ExitedWithCode(255), "");
    internal::setQuestionTerminal(nullptr);
    ::close(device);
    ::close(master);
    // Without a controlling terminal nobody can answer: that is a no.
    EXPECT_EXIT(
        {
            ::setsid();
            kelAssert(false);
        },
        testing::ExitedWithCode(255), "");
}

#else

// Wine without a display cannot show the box, which answers no; on a desktop a thread presses
// No, so the test never waits for a person. Yes is covered by the terminal test on POSIX.
TEST(kelAssert, MessageModeEndsTheProcessWithMinusOneOnNo) {
    ModeGuard const guard(kelAssertManager::Mode::Message);
    auto const pressNo = [](LPVOID) -> DWORD {
        for (;;) {
            if (HWND const box = ::FindWindowA(nullptr, "kelAssert error")) {
                ::PostMessageA(box, WM_COMMAND, IDNO, 0);
            }
            ::Sleep(50);
        }
    };
    EXPECT_EXIT(
        {
            ::CreateThread(nullptr, 0, pressNo, nullptr, 0, nullptr);
            kelAssert(false);
        },
        testing::ExitedWithCode(-1), "");
}

#endif
