#ifndef KELCORE_PLATFORM_KELENVIRONMENT_H
#define KELCORE_PLATFORM_KELENVIRONMENT_H

// Internal: the environment variables of the process.
//
// The library's own reads and writes of the environment are serialised among themselves, so two
// threads of the library never race on it; code outside the library that changes the
// environment directly is not covered.

#include <string>
#include <vector>

namespace KELKIT {
namespace platform {

// Sets the variable for the process. An empty value removes it, as the Windows runtime does.
// False for a null or empty name, a name holding "=", or when the system refuses.
bool setEnvironmentVariable(char const* name, char const* value);
// False, and value untouched, when the variable is not set.
bool getEnvironmentVariable(char const* name, std::string& value);
// The "name=value" texts of the process environment, in the system's order.
std::vector<std::string> environmentEntries();

// Each platform's system calls behind the functions above, which check the name and hold the
// lock around them.
namespace native {
// A null or empty value removes the variable.
bool setVariable(char const* name, char const* value);
// Appends the "name=value" texts of the process environment, in the system's order.
void appendEnvironmentEntries(std::vector<std::string>& entries);
} // namespace native

} // namespace platform
} // namespace KELKIT

#endif
