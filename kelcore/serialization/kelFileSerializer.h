#ifndef KELCORE_SERIALIZATION_KELFILESERIALIZER_H
#define KELCORE_SERIALIZATION_KELFILESERIALIZER_H

#include <kelcore/frame/kelBaseEnum.h>
#include <kelcore/serialization/kelAbstractSerializer.h>
#include <kelcore/strings/kelString.h>

#include <cstdio>
#include <memory>

// clang-format off
#define KEL_ROWS_kelFileSerializer_FileMode(X) X(Read, 1) X(Write, 2) X(ReadAndWrite, 3)
#define KEL_ROWS_kelFileSerializer_Operation(X) X(Serialize, 1) X(Deserialize, 2)
// clang-format on

namespace KELKIT {

// A serializer over a file, with one position for writing and one for reading over the one
// position of the stream: at each change of direction the stream seeks to the position of the
// new direction.
//
// Read opens with "rb" (the file must exist), Write with "wb" and ReadAndWrite with "wb+" (both
// make or empty the file). Transfers the mode does not allow, or on a closed serializer, throw
// kelException "Operation not allowed on serializer"; a short fwrite or fread is no error, the
// position counts what was transferred.
//
// Copies share the stream. closeFile flushes and lets go of this object's share; the stream
// closes when the last object sharing it closes or goes, so it is closed exactly once.
class KELCORE_API kelFileSerializer : public kelAbstractSerializer {
public:
    class KELCORE_API FileMode : public kelBaseEnum {
    public:
        enum Enum : int { KEL_ROWS_kelFileSerializer_FileMode(KEL_ENUM_ENUMERATOR) };
        KEL_ENUM_MEMBERS(FileMode)
    };

    class KELCORE_API Operation : public kelBaseEnum {
    public:
        enum Enum : int { KEL_ROWS_kelFileSerializer_Operation(KEL_ENUM_ENUMERATOR) };
        KEL_ENUM_MEMBERS(Operation)
    };

    // Opens the file; throws "Unsupported file mode" or "Unable to create file for serializer".
    kelFileSerializer(char const* path, FileMode mode);
    kelFileSerializer(kelFileSerializer const& other);
    kelFileSerializer& operator=(kelFileSerializer const& other);
    ~kelFileSerializer() override;

    char const* getFilePath() const;
    void closeFile();
    void flushFile();

    // The file's length including what is not flushed yet; 0 while closed. While this object
    // reads and alone uses its stream, the length taken at the first question is kept until
    // reading reaches it, a read comes back short, or this object writes, flushes, clears or
    // closes: a change to the file by another program shows from then on.
    UInt32 getSize() const override;
    UInt32 getRemainingSize() const override;
    // Closes and opens again (emptying the file unless the mode is Read), both positions 0.
    void clearData() override;
    // clearData, then the bytes through the write path (so Read mode throws unless size is 0).
    void loadData(UInt8 const* data, UInt32 size) override;

    void serializeData(void const* data, UInt32 size) override;
    void deserializeData(void* data, UInt32 size) override;

private:
    void openFile();
    void positionCursorForOperation(Operation operation);
    bool isOperationAllowed(Operation operation);
    bool copyBuffer(UInt8 const* data, UInt32 size);

    kelString mPath;
    std::shared_ptr<std::FILE> mFile;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    Operation mLastOperation;
    FileMode mMode;
    // The file's length as getSize last took it while reading, when mLengthKept says so; it
    // spares readers that ask before every value a system call each time.
    mutable UInt32 mKeptLength;
    mutable bool mLengthKept;
};

} // namespace KELKIT

#endif
