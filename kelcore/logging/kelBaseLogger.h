#ifndef KELCORE_LOGGING_KELBASELOGGER_H
#define KELCORE_LOGGING_KELBASELOGGER_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/logging/kelILogger.h>

namespace KELKIT {

// The part every sink shares: formatting, and the sink's re-entrant lock, under which print
// runs. Copies share the lock; it goes with the last of them.
class KELCORE_API kelBaseLogger : public virtual kelILogger {
public:
    // At most this many characters come out of one printArgs, terminator included.
    static constexpr UInt32 FORMAT_BUFFER_SIZE = 10240;

    kelBaseLogger();
    kelBaseLogger(kelBaseLogger const& other);
    kelBaseLogger& operator=(kelBaseLogger const& other);
    ~kelBaseLogger() override;

    // Formats printf-style, then hands the text to print. A text longer than
    // FORMAT_BUFFER_SIZE - 1 characters is cut there; a null format prints the empty text.
    // Safe from several threads at once; the lock is taken by print only.
    void printArgs(char const* format, ...) override KEL_PRINTF_FORMAT(2, 3);

    // Holds the sink's lock across several print calls; the lock is re-entrant.
    void enterCriticalSection();
    void leaveCriticalSection();

protected:
    kelCriticalSection mLock;
};

} // namespace KELKIT

#endif
