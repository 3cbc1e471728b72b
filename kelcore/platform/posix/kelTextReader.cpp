#include <kelcore/platform/kelTextReader.h>

#include <sys/stat.h>
#include <sys/types.h>

namespace KELKIT {
namespace platform {

std::FILE* TextReader::openNative(char const* native) {
    std::FILE* const file = std::fopen(native, "rbe");
    struct stat status;
    if (file != nullptr && (::fstat(::fileno(file), &status) != 0 || S_ISDIR(status.st_mode))) {
        std::fclose(file); // stdio opens folders on Linux
        return nullptr;
    }
    return file;
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

} // namespace platform
} // namespace KELKIT
