#ifndef KELCORE_LOGGING_KELFILELOGGER_H
#define KELCORE_LOGGING_KELFILELOGGER_H

#include <kelcore/logging/kelBaseLogger.h>

#include <atomic>
#include <cstdio>
#include <memory>

namespace KELKIT {

// Writes to a file that it creates afresh (an existing file of that name is emptied). Each line
// feed of a text goes out as carriage return and line feed; a carriage return already there
// stays, so "\r\n" becomes "\r\r\n". A file that cannot be created makes a logger that drops
// everything, silently.
//
// Texts of several threads never mix inside one print. Copies share the file and the lock; the
// file is closed when the last of them goes.
class KELCORE_API kelFileLogger : public kelBaseLogger {
public:
    // fileName is a library path (backslashes).
    kelFileLogger(char const* fileName, bool autoFlush);
    kelFileLogger(kelFileLogger const& other);
    kelFileLogger& operator=(kelFileLogger const& other);
    ~kelFileLogger() override;

    // With auto flush the text has reached the system when print returns; without, it may wait
    // in the stream's buffer until it fills or the logger goes. A null text writes nothing.
    void print(char const* text) override;
    void setAutoFlush(bool autoFlush);

protected:
    // Lets go of the current file (closing it unless a copy still uses it), then creates the
    // named one; on failure the logger has no file.
    void createLogFile(char const* fileName);

private:
    std::shared_ptr<std::FILE> mFile;
    std::atomic<bool> mAutoFlush;
};

} // namespace KELKIT

#endif
