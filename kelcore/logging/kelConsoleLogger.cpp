#include <kelcore/logging/kelConsoleLogger.h>

#include <kelcore/internal/kelEntered.h>

#include <cstdio>

namespace KELKIT {

kelConsoleLogger::kelConsoleLogger() = default;

kelConsoleLogger::kelConsoleLogger(kelConsoleLogger const& other)
    : kelILogger(other), kelBaseLogger(other) {}

kelConsoleLogger& kelConsoleLogger::operator=(kelConsoleLogger const& other) {
    kelBaseLogger::operator=(other);
    return *this;
}

kelConsoleLogger::~kelConsoleLogger() = default;

void kelConsoleLogger::print(char const* text) {
    internal::Entered const entered(mLock);
    std::printf("%s", text != nullptr ? text : "");
}

} // namespace KELKIT
