#ifndef KELCORE_PLATFORM_KELUSERQUESTION_H
#define KELCORE_PLATFORM_KELUSERQUESTION_H

// Internal: a yes/no question to the user, and the immediate end of the process.

namespace KELKIT {
namespace platform {

// True only for a clear "yes". Windows: a message box with an error icon and Yes/No buttons.
// POSIX: the caption and text on the controlling terminal, read back a line at a time until the
// answer starts with y or n; no terminal, or the end of its input, means "no".
bool askYesNo(char const* caption, char const* text);

// Ends the process at once with exit code -1 (255 on POSIX): no destructor, no exit handler.
[[noreturn]] void endProcessNow();

} // namespace platform
} // namespace KELKIT

#endif
