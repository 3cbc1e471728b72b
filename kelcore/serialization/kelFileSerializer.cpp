#include <kelcore/serialization/kelFileSerializer.h>

#include <kelcore/internal/kelThrowSite.h>
#include <kelcore/platform/kelFileStream.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelFileSerializer::FileMode, FileMode, KEL_ROWS_kelFileSerializer_FileMode)
KEL_ENUM_DEFINE(kelFileSerializer::Operation, Operation, KEL_ROWS_kelFileSerializer_Operation)

kelFileSerializer::kelFileSerializer(char const* path, FileMode mode)
    : mPath(path), mWritePosition(0), mReadPosition(0), mLastOperation(Operation::Serialize),
      mMode(mode), mKeptLength(0), mLengthKept(false) {
    openFile();
}

kelFileSerializer::kelFileSerializer(kelFileSerializer const& other)
    : kelISerializer(other), kelAbstractSerializer(other), mPath(other.mPath), mFile(other.mFile),
      mWritePosition(other.mWritePosition), mReadPosition(other.mReadPosition),
      mLastOperation(other.mLastOperation), mMode(other.mMode), mKeptLength(0), mLengthKept(false) {
    other.mLengthKept = false; // the stream is shared from now on
}

kelFileSerializer& kelFileSerializer::operator=(kelFileSerializer const& other) {
    mPath = other.mPath;
    mFile = other.mFile; // the stream this object shared before closes if it was the last share
    mWritePosition = other.mWritePosition;
    mReadPosition = other.mReadPosition;
    mLastOperation = other.mLastOperation;
    mMode = other.mMode;
    mLengthKept = false;
    other.mLengthKept = false;
    return *this;
}

kelFileSerializer::~kelFileSerializer() {
    closeFile();
}

char const* kelFileSerializer::getFilePath() const {
    return mPath.c_str();
}

void kelFileSerializer::closeFile() {
    mLengthKept = false;
    if (mFile != nullptr) {
        std::fflush(mFile.get());
        mFile.reset();
    }
}

void kelFileSerializer::flushFile() {
    mLengthKept = false;
    if (mFile != nullptr) {
        std::FILE* const file = mFile.get();
        if (mLastOperation == Operation::Deserialize) {
            // The Windows runtime drops a reading stream's read-ahead at fflush without moving
            // the file back to where reading stands; the seek puts it there on every platform.
            long long const noted = platform::tellFileStream(file);
            std::fflush(file);
            platform::seekFileStream(file, noted < 0 ? 0 : noted, SEEK_SET);
        } else {
            std::fflush(file);
        }
    }
}

UInt32 kelFileSerializer::getSize() const {
    if (mFile == nullptr) {
        return 0;
    }
    std::FILE* const file = mFile.get();
    // While this object reads and alone uses the stream, nothing waits to be written (turning to
    // reading sought, which flushes): the file's own length is the answer, and the stream keeps
    // its read buffer. The length is kept until reading reaches it, so that readers that ask
    // before every value cost no system call each. A copy sharing the stream may hold unwritten
    // bytes, which only the seek to the end counts on every platform.
    if (mLastOperation == Operation::Deserialize && mFile.use_count() == 1) {
        if (mLengthKept && mReadPosition < mKeptLength) {
            return mKeptLength;
        }
        long long length = 0;
        if (platform::fileStreamLength(file, length)) {
            mKeptLength = length < 0 ? 0 : static_cast<UInt32>(length);
            mLengthKept = true;
            return mKeptLength;
        }
    }
    mLengthKept = false;
    long long const noted = platform::tellFileStream(file);
    platform::seekFileStream(file, 0, SEEK_END);
    long long const end = platform::tellFileStream(file);
    platform::seekFileStream(file, noted < 0 ? 0 : noted, SEEK_SET);
    return end < 0 ? 0 : static_cast<UInt32>(end);
}

UInt32 kelFileSerializer::getRemainingSize() const {
    return getSize() - mReadPosition;
}

void kelFileSerializer::clearData() {
    closeFile();
    openFile();
    mWritePosition = 0;
    mReadPosition = 0;
}

void kelFileSerializer::loadData(UInt8 const* data, UInt32 size) {
    clearData();
    copyBuffer(data, size);
}

bool kelFileSerializer::copyBuffer(UInt8 const* data, UInt32 size) {
    clearData();
    if (data == nullptr || size == 0) {
        return false;
    }
    serializeData(data, size);
    return true;
}

void kelFileSerializer::openFile() {
    closeFile();
    char const* streamMode = nullptr;
    switch (mMode.getValue()) {
    case FileMode::Read:
        streamMode = "rb";
        break;
    case FileMode::Write:
        streamMode = "wb";
        break;
    case FileMode::ReadAndWrite:
        streamMode = "wb+";
        break;
    default:
        KEL_THROW("Unsupported file mode");
    }
    std::FILE* const file = platform::openFileStream(mPath.c_str(), streamMode);
    if (file == nullptr) {
        KEL_THROW("Unable to create file for serializer");
    }
    mFile.reset(file, [](std::FILE* stream) { std::fclose(stream); });
    mLastOperation = Operation::Serialize;
}

bool kelFileSerializer::isOperationAllowed(Operation operation) {
    if (mFile == nullptr) {
        return false;
    }
    switch (operation.getValue()) {
    case Operation::Serialize:
        return mMode == FileMode::Write || mMode == FileMode::ReadAndWrite;
    case Operation::Deserialize:
        return mMode == FileMode::Read || mMode == FileMode::ReadAndWrite;
    default:
        KEL_THROW("Unknown operation");
    }
}

void kelFileSerializer::positionCursorForOperation(Operation operation) {
    if (operation.getValue() == mLastOperation.getValue() || mFile == nullptr) {
        return;
    }
    switch (operation.getValue()) {
    case Operation::Serialize:
        platform::seekFileStream(mFile.get(), mWritePosition, SEEK_SET);
        break;
    case Operation::Deserialize:
        platform::seekFileStream(mFile.get(), mReadPosition, SEEK_SET);
        break;
    default:
        KEL_THROW("Unknown operation");
    }
}

void kelFileSerializer::serializeData(void const* data, UInt32 size) {
    if (!isOperationAllowed(Operation::Serialize)) {
        KEL_THROW("Operation not allowed on serializer");
    }
    positionCursorForOperation(Operation::Serialize);
    mLengthKept = false;
    std::size_t const written = std::fwrite(data, 1, size, mFile.get());
    mWritePosition += static_cast<UInt32>(written);
    mLastOperation = Operation::Serialize;
}

void kelFileSerializer::deserializeData(void* data, UInt32 size) {
    if (!isOperationAllowed(Operation::Deserialize)) {
        KEL_THROW("Operation not allowed on serializer");
    }
    positionCursorForOperation(Operation::Deserialize);
    std::size_t const got = std::fread(data, 1, size, mFile.get());
    mReadPosition += static_cast<UInt32>(got);
    if (got < size) {
        mLengthKept = false; // the end came earlier than the kept length said
    }
    mLastOperation = Operation::Deserialize;
}

} // namespace KELKIT
