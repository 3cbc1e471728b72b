#include <kelcore/serialization/kelFileDumper.h>

#include <kelcore/internal/kelDumperForms.h>
#include <kelcore/platform/kelFileStream.h>

namespace KELKIT {

kelFileDumper::kelFileDumper(char const* path) {
    std::FILE* const file = platform::openFileStream(path, "wb");
    if (file != nullptr) {
        mFile.reset(file, &std::fclose);
        mPath = path;
    }
}

kelFileDumper::kelFileDumper(kelFileDumper const&) = default;

kelFileDumper& kelFileDumper::operator=(kelFileDumper const&) = default;

kelFileDumper::~kelFileDumper() {
    closeFile();
}

char const* kelFileDumper::getFilePath() const {
    return mPath.c_str();
}

void kelFileDumper::closeFile() {
    flushFile();
    mFile.reset();
}

void kelFileDumper::flushFile() {
    if (mFile != nullptr) {
        std::fflush(mFile.get());
    }
}

void kelFileDumper::write(void const* data, UInt64 size) {
    if (mFile != nullptr && size != 0 && size <= 0xFFFFFFFFu) {
        std::fwrite(data, 1, static_cast<std::size_t>(size), mFile.get());
    }
}

KEL_DUMPER_FORMS(kelFileDumper, write)

} // namespace KELKIT
