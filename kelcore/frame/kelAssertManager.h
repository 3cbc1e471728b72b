#ifndef KELCORE_FRAME_KELASSERTMANAGER_H
#define KELCORE_FRAME_KELASSERTMANAGER_H

#include <kelcore/frame/kelBaseEnum.h>
#include <kelcore/frame/kelExport.h>

// clang-format off
#define KEL_ROWS_kelAssertManager_Mode(X) X(Default, 0) X(Message, 1) X(Exception, 2)
// clang-format on

namespace KELKIT {

// What a failed kelAssert does, for the whole process.
//
// Default composes the message and drops it. Message asks the user whether to go on: a message
// box on Windows, a question on the controlling terminal on POSIX, where a process without a
// terminal gets "no". A "no" ends the process at once with exit code -1 (255 on POSIX), running
// no destructor or exit handler. Exception throws a kelException whose description is the
// composed message; other mode values do nothing.
class KELCORE_API kelAssertManager {
public:
    class KELCORE_API Mode : public kelBaseEnum {
    public:
        enum Enum : int { KEL_ROWS_kelAssertManager_Mode(KEL_ENUM_ENUMERATOR) };
        KEL_ENUM_MEMBERS(Mode)
    };

    // Built on the first call, destroyed at process exit.
    static kelAssertManager& getInstance();

    // Copies carry the mode only; what a failed assertion does follows the singleton's mode.
    kelAssertManager(kelAssertManager const& other);
    kelAssertManager& operator=(kelAssertManager const& other);
    virtual ~kelAssertManager();

    // Applies to the next failed assertion in any thread.
    void setMode(Mode mode);
    Mode const& getMode() const;

    // Handles one failed assertion: "kelAssertion failed: (expression), file F, line N\n".
    void processError(char const* file, int line, char const* expression);

private:
    kelAssertManager();

    // True when the user answers yes.
    bool showMessage(char const* text);

    Mode mMode;
};

} // namespace KELKIT

// Stays active in release builds: the condition is always evaluated, and when it is false the
// assertion manager gets the file, the line and the condition as written.
#define kelAssert(condition)                                                                       \
    ((condition)                                                                                   \
         ? static_cast<void>(0)                                                                    \
         : ::KELKIT::kelAssertManager::getInstance().processError(__FILE__, __LINE__, #condition))

#endif
