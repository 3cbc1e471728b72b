#ifndef KELCORE_INTERNAL_KELQUESTIONTERMINAL_H
#define KELCORE_INTERNAL_KELQUESTIONTERMINAL_H

// Internal, not installed: lets a test answer the POSIX yes/no question through the same code
// path as a user, by pointing it at a pseudo-terminal (or at no terminal at all).

#include <kelcore/frame/kelExport.h>

namespace KELKIT {
namespace internal {

// The terminal device the question is asked on; null (or never set) means "/dev/tty". Windows
// asks with a message box and ignores it.
KELCORE_API void setQuestionTerminal(char const* devicePath);

} // namespace internal
} // namespace KELKIT

#endif
