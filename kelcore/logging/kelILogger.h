#ifndef KELCORE_LOGGING_KELILOGGER_H
#define KELCORE_LOGGING_KELILOGGER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelStringConverter.h>

namespace KELKIT {

// A sink for text. A logger writes exactly what it is given: no time stamp, level, prefix or
// line end of its own.
class KELCORE_API kelILogger {
public:
    kelILogger() = default;
    kelILogger(kelILogger const&) = default;
    kelILogger& operator=(kelILogger const&) = default;
    virtual ~kelILogger();

    virtual void print(char const* text) = 0;
    virtual void printArgs(char const* format, ...) KEL_PRINTF_FORMAT(2, 3) = 0;
};

} // namespace KELKIT

#endif
