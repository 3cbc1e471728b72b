#include <kelcore/platform/kelEnvironment.h>

#include <cstdlib>

extern char** environ;

namespace KELKIT {
namespace platform {
namespace native {

bool setVariable(char const* name, char const* value) {
    // An empty value removes the variable, as the Windows runtime's "NAME=" does, so that both
    // platforms agree on what getEnvVar answers afterwards.
    if (value == nullptr || value[0] == '\0') {
        return ::unsetenv(name) == 0;
    }
    return ::setenv(name, value, 1) == 0;
}

void appendEnvironmentEntries(std::vector<std::string>& entries) {
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        entries.emplace_back(*entry);
    }
}

} // namespace native
} // namespace platform
} // namespace KELKIT
