#ifndef KELCORE_TESTS_KELCHILDPROCESS_H
#define KELCORE_TESTS_KELCHILDPROCESS_H

#include <string>

// Runs a named scenario of the test executable in a process of its own: forked on POSIX,
// started again with "--kel-child <scenario> <argument>" on Windows. A scenario returns the
// child's exit status.
using kelChildScenario = int (*)(std::string const& argument);

struct kelChildScenarioRegistration {
    kelChildScenarioRegistration(char const* name, kelChildScenario scenario);
};

#define KEL_CHILD_SCENARIO(name)                                                                   \
    static int name(std::string const& argument);                                                  \
    static kelChildScenarioRegistration const name##Registration(#name, name);                     \
    static int name(std::string const& argument)

class kelChildProcess {
public:
    kelChildProcess(char const* scenario, std::string const& argument);
    // Kills the child if it still runs.
    ~kelChildProcess();

    // The exit status, or -1 when the child could not be started or waited for.
    int wait();
    // Ends the child at once, without giving it a chance to clean up.
    void kill();
    bool started() const;

    kelChildProcess(kelChildProcess const&) = delete;
    kelChildProcess& operator=(kelChildProcess const&) = delete;

private:
    long long mProcess = -1; // pid on POSIX, HANDLE on Windows
    bool mRunning = false;
};

// This process's id, for names that must not meet those of test runs beside it.
long long kelProcessId();

// For main(): runs the scenario the command line asks for and gives its status, or -1 when
// this process is not a child.
int kelRunChildScenarioIfAsked(int argc, char** argv);

#endif
