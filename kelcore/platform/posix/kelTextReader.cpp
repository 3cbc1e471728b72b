#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelTextReader.h>

#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace KELKIT {
namespace platform {

TextReader::TextReader() : mFile(nullptr) {}

TextReader::~TextReader() {
    close();
}

bool TextReader::open(char const* path) {
    close();
    std::string native;
    if (!toNativePath(path, native)) {
        return false;
    }
    mFile = std::fopen(native.c_str(), "rbe");
    struct stat status;
    if (mFile != nullptr && (::fstat(::fileno(mFile), &status) != 0 || S_ISDIR(status.st_mode))) {
        close(); // stdio opens folders on Linux
    }
    return mFile != nullptr;
}

bool TextReader::seek(UInt64 offset) {
    return mFile != nullptr && ::fseeko(mFile, static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool TextReader::readLine(char* buffer, int size) {
    if (mFile == nullptr || size < 1) {
        return false;
    }
    int count = 0;
    while (count < size - 1) {
        int c = ::getc_unlocked(mFile);
        if (c == EOF) {
            break;
        }
        if (c == '\r') {
            int const after = ::getc_unlocked(mFile);
            if (after == '\n') {
                c = '\n';
            } else if (after != EOF) {
                ::ungetc(after, mFile);
            }
        }
        buffer[count++] = static_cast<char>(c);
        if (c == '\n') {
            break;
        }
    }
    buffer[count] = '\0';
    return count > 0;
}

void TextReader::close() {
    if (mFile != nullptr) {
        std::fclose(mFile);
        mFile = nullptr;
    }
}

} // namespace platform
} // namespace KELKIT
