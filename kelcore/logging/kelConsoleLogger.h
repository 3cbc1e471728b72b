#ifndef KELCORE_LOGGING_KELCONSOLELOGGER_H
#define KELCORE_LOGGING_KELCONSOLELOGGER_H

#include <kelcore/logging/kelBaseLogger.h>

namespace KELKIT {

// Writes to standard output, unchanged, under the logger's lock. The standard output's own
// buffering applies.
class KELCORE_API kelConsoleLogger : public kelBaseLogger {
public:
    kelConsoleLogger();
    kelConsoleLogger(kelConsoleLogger const& other);
    kelConsoleLogger& operator=(kelConsoleLogger const& other);
    ~kelConsoleLogger() override;

    // A null text writes nothing.
    void print(char const* text) override;
};

} // namespace KELKIT

#endif
