#include <kelcore/platform/kelEnvironment.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <windows.h>

namespace KELKIT {
namespace platform {

namespace {

// The runtime's environment copy is not guarded against a concurrent _putenv: every access of
// the library goes through this lock.
std::mutex gEnvironmentLock;

} // namespace

bool setEnvironmentVariable(char const* name, char const* value) {
    // "A=B" with the value "c" would otherwise set A to "B=c".
    if (name == nullptr || name[0] == '\0' || std::strchr(name, '=') != nullptr) {
        return false;
    }
    std::string assignment(name);
    assignment += '=';
    if (value != nullptr) {
        assignment += value;
    }
    std::lock_guard<std::mutex> const lock(gEnvironmentLock);
    return ::_putenv(assignment.c_str()) == 0;
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
    char* block = ::GetEnvironmentStringsA();
    if (block == nullptr) {
        return entries;
    }
    // One zero-terminated text after the other, up to the empty text.
    for (char const* entry = block; *entry != '\0'; entry += std::strlen(entry) + 1) {
        entries.emplace_back(entry);
    }
    ::FreeEnvironmentStringsA(block);
    return entries;
}

} // namespace platform
} // namespace KELKIT
