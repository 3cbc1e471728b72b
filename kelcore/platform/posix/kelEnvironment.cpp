#include <kelcore/platform/kelEnvironment.h>

#include <cstdlib>
#include <cstring>
#include <mutex>

extern char** environ;

namespace KELKIT {
namespace platform {

namespace {

// glibc's setenv may move the table that getenv and environ read: every access of the library
// goes through this lock.
std::mutex gEnvironmentLock;

bool isValidName(char const* name) {
    return name != nullptr && name[0] != '\0' && std::strchr(name, '=') == nullptr;
}

} // namespace

bool setEnvironmentVariable(char const* name, char const* value) {
    if (!isValidName(name)) {
        return false;
    }
    std::lock_guard<std::mutex> const lock(gEnvironmentLock);
    // An empty value removes the variable, as the Windows runtime's "NAME=" does, so that both
    // platforms agree on what getEnvVar answers afterwards.
    if (value == nullptr || value[0] == '\0') {
        return ::unsetenv(name) == 0;
    }
    return ::setenv(name, value, 1) == 0;
}

bool getEnvironmentVariable(char const* name, std::string& value) {
    if (name == nullptr) {
        return false;
    }
    std::lock_guard<std::mutex> const lock(gEnvironmentLock);
    char const* found = std::getenv(name);
    if (found == nullptr) {
        return false;
    }
    value = found;
    return true;
}

std::vector<std::string> environmentEntries() {
    std::vector<std::string> entries;
    std::lock_guard<std::mutex> const lock(gEnvironmentLock);
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        entries.emplace_back(*entry);
    }
    return entries;
}

} // namespace platform
} // namespace KELKIT
