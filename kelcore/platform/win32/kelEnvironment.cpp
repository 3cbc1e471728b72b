#include <kelcore/platform/kelEnvironment.h>

#include <cstdlib>
#include <cstring>
#include <windows.h>

namespace KELKIT {
namespace platform {
namespace native {

bool setVariable(char const* name, char const* value) {
    std::string assignment(name);
    assignment += '=';
    if (value != nullptr) {
        assignment += value;
    }
    return ::_putenv(assignment.c_str()) == 0;
}

void appendEnvironmentEntries(std::vector<std::string>& entries) {
    char* block = ::GetEnvironmentStringsA();
    if (block == nullptr) {
        return;
    }
    // One zero-terminated text after the other, up to the empty text.
    for (char const* entry = block; *entry != '\0'; entry += std::strlen(entry) + 1) {
        entries.emplace_back(entry);
    }
    ::FreeEnvironmentStringsA(block);
}

} // namespace native
} // namespace platform
} // namespace KELKIT
