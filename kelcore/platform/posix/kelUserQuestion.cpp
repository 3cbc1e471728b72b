#include <kelcore/internal/kelQuestionTerminal.h>
#include <kelcore/platform/kelUserQuestion.h>

#include <cerrno>
#include <mutex>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace KELKIT {

namespace {

std::mutex gTerminalLock;
std::string gTerminal = "/dev/tty";

std::string terminalPath() {
    std::lock_guard<std::mutex> const lock(gTerminalLock);
    return gTerminal;
}

bool writeAll(int fd, std::string const& text) {
    std::string::size_type done = 0;
    while (done < text.size()) {
        ssize_t const written = ::write(fd, text.data() + done, text.size() - done);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        done += static_cast<std::string::size_type>(written);
    }
    return true;
}

// One line of the answer, without its line feed; false at the end of the input or on an error.
bool readLine(int fd, std::string& line) {
    line.clear();
    for (;;) {
        char c = 0;
        ssize_t const got = ::read(fd, &c, 1);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        if (c == '\n' || c == '\r') {
            return true;
        }
        // A line is an answer, not a document: a few characters are enough to decide.
        if (line.size() < 64) {
            line += c;
        }
    }
}

} // namespace

namespace internal {

void setQuestionTerminal(char const* devicePath) {
    std::lock_guard<std::mutex> const lock(gTerminalLock);
    gTerminal = devicePath != nullptr ? devicePath : "/dev/tty";
}

} // namespace internal

namespace platform {

bool askYesNo(char const* caption, char const* text) {
    // O_NOCTTY: asking must never make a terminal the controlling one of a process without.
    int const fd = ::open(terminalPath().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    std::string const question = std::string(caption != nullptr ? caption : "") + "\n" +
                                 (text != nullptr ? text : "") + " [y/n] ";
    bool answer = false;
    std::string line;
    while (writeAll(fd, question) && readLine(fd, line)) {
        std::string::size_type const first = line.find_first_not_of(" \t");
        char const c = first == std::string::npos ? '\0' : line[first];
        if (c == 'y' || c == 'Y' || c == 'n' || c == 'N') {
            answer = c == 'y' || c == 'Y';
            break;
        }
    }
    ::close(fd);
    return answer;
}

void endProcessNow() {
    ::_exit(255);
}

} // namespace platform
} // namespace KELKIT
