#ifndef KELCORE_SERIALIZATION_KELFILEDUMPER_H
#define KELCORE_SERIALIZATION_KELFILEDUMPER_H

#include <kelcore/serialization/kelIDumper.h>
#include <kelcore/strings/kelString.h>

#include <cstdio>
#include <memory>

namespace KELKIT {

// Dumps into a file, made or emptied when the dumper is constructed. A file that cannot be
// opened shows as an empty getFilePath(), and every dump is then silently lost; so is a short
// write. Buffering is the C stream's.
//
// Copies share the open file. closeFile() flushes and lets go of this object's share; the
// file closes when the last object sharing it closes or goes, so it is closed exactly once.
class KELCORE_API kelFileDumper : public virtual kelIDumper {
public:
    explicit kelFileDumper(char const* path);
    kelFileDumper(kelFileDumper const& other);
    kelFileDumper& operator=(kelFileDumper const& other);
    ~kelFileDumper() override;

    // The path also after closeFile().
    char const* getFilePath() const;
    void closeFile();
    void flushFile();

    using kelIDumper::dump;
    void dump(kelMemoryBuffer const* values, UInt32 count) override;
    void dump(kelMemoryBuffer const& value) override;
    void dump(kelString const* values, UInt32 count) override;
    void dump(kelString const& value) override;
    void dump(Float64 const* values, UInt32 count) override;
    void dump(Float64 value) override;
    void dump(Float32 const* values, UInt32 count) override;
    void dump(Float32 value) override;
    void dump(SInt64 const* values, UInt32 count) override;
    void dump(SInt64 value) override;
    void dump(SInt32 const* values, UInt32 count) override;
    void dump(SInt32 value) override;
    void dump(SInt16 const* values, UInt32 count) override;
    void dump(SInt16 value) override;
    void dump(SInt8 const* values, UInt32 count) override;
    void dump(SInt8 value) override;
    void dump(UInt64 const* values, UInt32 count) override;
    void dump(UInt64 value) override;
    void dump(UInt32 const* values, UInt32 count) override;
    void dump(UInt32 value) override;
    void dump(UInt16 const* values, UInt32 count) override;
    void dump(UInt16 value) override;
    void dump(UInt8 const* values, UInt32 count) override;
    void dump(UInt8 value) override;
    void dump(bool const* values, UInt32 count) override;
    void dump(bool value) override;

private:
    void write(void const* data, UInt64 size);

    kelString mPath;
    std::shared_ptr<std::FILE> mFile;
};

} // namespace KELKIT

#endif
