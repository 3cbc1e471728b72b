#include <kelcore/platform/kelEnvironment.h>

#include <cstdlib>
#include <cstring>
#include <mutex>

namespace KELKIT {
namespace platform {

namespace {

// glibc's setenv may move the table that getenv and environ read, and the Windows runtime's
// copy is not guarded against a concurrent _putenv: every access of the library goes through
// this lock.
std::mutex gEnvironmentLock;

} // namespace

bool setEnvironmentVariable(char const* name, char const* value) {
    // "A=B" with the value "c" would otherwise set A to "B=c".
    if (name == nullptr || name[0] == '\0' || std::strchr(name, '=') != nullptr) {
        return false;
    }
    std::lock_guard<std::mutex> const lock(gEnvironmentLock);
    return native::setVariable(name, value);
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
    native::appendEnvironmentEntries(entries);
    return entries;
}

} // namespace platform
} // namespace KELKIT
