#ifndef KELCORE_FILES_KELFILE_H
#define KELCORE_FILES_KELFILE_H

#include <kelcore/files/kelFileItem.h>
#include <kelcore/frame/kelTypes.h>

#include <memory>

namespace KELKIT {

// A positioned, unbuffered handle on a file. read and write make one system call each: a short
// count is the caller's to handle. Nothing here throws; failures give false or 0.
//
// Opening keeps the same creation behaviour on every platform: READ and WRITE create a missing
// file (empty) and never truncate, READ_WRITE needs the file to exist. On Windows a read handle
// shares reading only, a write handle writing only; POSIX has no sharing modes.
class KELCORE_API kelFile : public kelFileItem {
public:
    enum ACCESS_MODE : UInt32 { READ = 0, WRITE = 1, READ_WRITE = 2 };

    kelFile();
    kelFile(char const* path);
    // Copies the path; the copy starts closed.
    kelFile(kelFile const& other);
    // Closes this file and copies the path, as after the copy constructor.
    kelFile& operator=(kelFile const& other);
    ~kelFile() override;

    // True while open; else whether anything is at the path, a folder included.
    bool exists() const override;
    // 0 for an empty path, also when open. Open: the size of the open file. Closed: the size
    // from the file's metadata, cut to a signed 32-bit value and widened with its sign, as the
    // Windows runtime's 32-bit status call gives it (a 3 GiB file reads 0xFFFFFFFFC0000000).
    virtual UInt64 getSize() const;
    virtual bool isOpened() const;
    // Closes first, whatever comes of the new open. A mode outside the three fails.
    virtual bool open(ACCESS_MODE const& mode);
    // Back to closed, mode READ.
    virtual void close();
    virtual ACCESS_MODE getMode() const;
    // 0 when closed.
    virtual UInt32 read(unsigned char* buffer, UInt32 size);
    virtual UInt32 write(unsigned char const* buffer, UInt32 size);
    // From the start of the file; past the end is allowed. False when closed.
    virtual bool setPosition(UInt32 position);
    // 0 when closed, 0xFFFFFFFF on failure; the low 32 bits of the position otherwise.
    virtual UInt32 getPosition() const;

private:
    struct Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
