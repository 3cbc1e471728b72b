#include <kelcore/serialization/kelFileDumper.h>

#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/platform/kelFileStream.h>

namespace KELKIT {

// Numbers are written as their machine image, which is the little-endian wire form only on a
// little-endian machine; every platform the library is built for is one.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the dump needs a little-endian host");

kelFileDumper::kelFileDumper(char const* path) {
    std::FILE* const file = platform::openFileStream(path, "wb");
    if (file != nullptr) {
        mFile.reset(file, &std::fclose);
        mPath = path;
    }
}

kelFileDumper::kelFileDumper(kelFileDumper const& other)
    : kelIDumper(other), mPath(other.mPath), mFile(other.mFile) {}

kelFileDumper& kelFileDumper::operator=(kelFileDumper const& other) {
    mPath = other.mPath;
    mFile = other.mFile; // the file shared before closes if this was its last share
    return *this;
}

kelFileDumper::~kelFileDumper() {
    closeFile();
}

char const* kelFileDumper::getFilePath() const {
    return mPath.c_str();
}

void kelFileDumper::closeFile() {
    if (mFile != nullptr) {
        std::fflush(mFile.get());
        mFile.reset();
    }
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

void kelFileDumper::dump(kelMemoryBuffer const* values, UInt32 count) {
    for (UInt32 i = 0; values != nullptr && i < count; ++i) {
        dump(values[i]);
    }
}

void kelFileDumper::dump(kelMemoryBuffer const& value) {
    dump(value.getBuffer(), value.getSize());
}

void kelFileDumper::dump(kelString const* values, UInt32 count) {
    for (UInt32 i = 0; values != nullptr && i < count; ++i) {
        dump(values[i]);
    }
}

void kelFileDumper::dump(kelString const& value) {
    dump(reinterpret_cast<UInt8 const*>(value.c_str()), value.size());
}

#define KEL_FILE_DUMPER_FORMS(T)                                                                   \
    void kelFileDumper::dump(T const* values, UInt32 count) {                                      \
        if (values != nullptr) {                                                                   \
            write(values, static_cast<UInt64>(count) * sizeof(T));                                 \
        }                                                                                          \
    }                                                                                              \
    void kelFileDumper::dump(T value) {                                                            \
        write(&value, sizeof(T));                                                                  \
    }

KEL_FILE_DUMPER_FORMS(Float64)
KEL_FILE_DUMPER_FORMS(Float32)
KEL_FILE_DUMPER_FORMS(SInt64)
KEL_FILE_DUMPER_FORMS(SInt32)
KEL_FILE_DUMPER_FORMS(SInt16)
KEL_FILE_DUMPER_FORMS(SInt8)
KEL_FILE_DUMPER_FORMS(UInt64)
KEL_FILE_DUMPER_FORMS(UInt32)
KEL_FILE_DUMPER_FORMS(UInt16)
KEL_FILE_DUMPER_FORMS(UInt8)
KEL_FILE_DUMPER_FORMS(bool)

#undef KEL_FILE_DUMPER_FORMS

} // namespace KELKIT
