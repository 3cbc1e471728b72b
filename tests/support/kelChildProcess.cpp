#include "kelChildProcess.h"

#include <cstdlib>
#include <map>

#if defined(_WIN32)
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

std::map<std::string, kelChildScenario>& scenarios() {
    static std::map<std::string, kelChildScenario> all;
    return all;
}

int runScenario(std::string const& name, std::string const& argument) {
    auto const found = scenarios().find(name);
    return found == scenarios().end() ? 120 : found->second(argument);
}

} // namespace

kelChildScenarioRegistration::kelChildScenarioRegistration(char const* name,
                                                           kelChildScenario scenario) {
    scenarios()[name] = scenario;
}

int kelRunChildScenarioIfAsked(int argc, char** argv) {
    if (argc >= 3 && std::string(argv[1]) == "--kel-child") {
        return runScenario(argv[2], argc >= 4 ? argv[3] : "");
    }
    return -1;
}

bool kelChildProcess::started() const {
    return mProcess != -1;
}

#if defined(_WIN32)

long long kelProcessId() {
    return static_cast<long long>(GetCurrentProcessId());
}

kelChildProcess::kelChildProcess(char const* scenario, std::string const& argument) {
    char path[MAX_PATH];
    if (GetModuleFileNameA(nullptr, path, MAX_PATH) == 0) {
        return;
    }
    std::string command =
        "\"" + std::string(path) + "\" --kel-child " + scenario + " \"" + argument + "\"";
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info = {};
    if (!CreateProcessA(path, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &info)) {
        return;
    }
    CloseHandle(info.hThread);
    mProcess = reinterpret_cast<long long>(info.hProcess);
    mRunning = true;
}

kelChildProcess::~kelChildProcess() {
    kill();
    if (started()) {
        CloseHandle(reinterpret_cast<HANDLE>(mProcess));
    }
}

int kelChildProcess::wait() {
    if (!started()) {
        return -1;
    }
    HANDLE const process = reinterpret_cast<HANDLE>(mProcess);
    WaitForSingleObject(process, INFINITE);
    mRunning = false;
    DWORD status = 0;
    return GetExitCodeProcess(process, &status) ? static_cast<int>(status) : -1;
}

void kelChildProcess::kill() {
    if (mRunning) {
        HANDLE const process = reinterpret_cast<HANDLE>(mProcess);
        TerminateProcess(process, 137);
        WaitForSingleObject(process, INFINITE);
        mRunning = false;
    }
}

#else

long long kelProcessId() {
    return static_cast<long long>(getpid());
}

kelChildProcess::kelChildProcess(char const* scenario, std::string const& argument) {
    pid_t const pid = fork();
    if (pid == 0) {
        _exit(runScenario(scenario, argument));
    }
    if (pid > 0) {
        mProcess = pid;
        mRunning = true;
    }
}

kelChildProcess::~kelChildProcess() {
    kill();
}

int kelChildProcess::wait() {
    if (!mRunning) {
        return -1;
    }
    int status = 0;
    pid_t const pid = static_cast<pid_t>(mProcess);
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) {
            mRunning = false;
            return -1;
        }
    }
    mRunning = false;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void kelChildProcess::kill() {
    if (mRunning) {
        ::kill(static_cast<pid_t>(mProcess), SIGKILL);
        wait();
    }
}

#endif
