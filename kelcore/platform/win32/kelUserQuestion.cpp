#include <kelcore/internal/kelQuestionTerminal.h>
#include <kelcore/platform/kelUserQuestion.h>

#include <windows.h>

namespace KELKIT {

namespace internal {

void setQuestionTerminal(char const*) {
    // The question is a message box here; there is no terminal to point elsewhere.
}

} // namespace internal

namespace platform {

bool askYesNo(char const* caption, char const* text) {
    // A box that cannot be shown answers 0 (Wine without a display answers -1): both are "no".
    return ::MessageBoxA(nullptr, text, caption, MB_YESNO | MB_ICONERROR) == IDYES;
}

void endProcessNow() {
    ::ExitProcess(static_cast<UINT>(-1));
}

} // namespace platform
} // namespace KELKIT
