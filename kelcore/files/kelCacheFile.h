#ifndef KELCORE_FILES_KELCACHEFILE_H
#define KELCORE_FILES_KELCACHEFILE_H

#include <kelcore/files/kelCacheT.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/strings/kelString.h>

#include <memory>

namespace KELKIT {

// Keeps the content of files in memory for a limited time, keyed by the path text as given (two
// spellings of one file are two entries). retreive answers from memory while the entry is
// young enough and reads the file otherwise: a change on disk shows only once the entry has
// expired, or after reload. Nothing runs in the background; a stale entry goes, with its
// memory, at the next lookup.
//
// A copy, by construction or assignment, refers to the same cache and time to live as its
// source: a change through either shows in both. They go with the last object that refers to
// them. No locks: one thread at a time per cache, copies included.
class KELCORE_API kelCacheFile {
public:
    struct FILE_DATA {
        // The number of bytes in data: what the file gave when it was read.
        UInt32 size = 0;
        kelMemoryBuffer data;
    };

    // Empty, with a time to live of 3,600 seconds.
    kelCacheFile();
    kelCacheFile(kelCacheFile const& other);
    kelCacheFile& operator=(kelCacheFile const& other);

    // Virtual operations, in the order of their slots.

    virtual ~kelCacheFile();
    // Drops all entries, so that the next retreive of any path reads the file.
    virtual void clear();
    // Copies the path's entry to data when there is one that has not expired; otherwise
    // reload(path), then the same copy. False when the file cannot be opened; false also when
    // the time to live is 0 or negative and the clock's second changed during the reload, so
    // that the fresh entry was already stale. False, with data unchanged, when memory for the
    // copy is refused.
    virtual bool retreive(char const* path, FILE_DATA& data);
    // Reads the file into data and stores a copy of it for the path, replacing an entry the path
    // had. The file is opened to read, which creates a missing file, empty, where it can be
    // created; false, with data and the cache unchanged, when it cannot be opened (a folder, a
    // missing folder, a null or empty path).
    //
    // At most the size the file had when it was opened is read, cut to 32 bits (a file of
    // 4 GiB and 16 bytes gives 16): a file that grows meanwhile gives its first bytes, and one
    // that shrinks or fails to read gives the bytes that arrived. If memory is refused, data and
    // the entry are empty, and the entry is still stored.
    //
    // The entry expires getTTL() seconds after the moment the file was opened.
    virtual bool reload(char const* path, FILE_DATA& data);
    // As above, with a record of its own.
    virtual bool reload(char const* path);
    // For entries loaded from now on; stored entries keep their expiration. A negative time to
    // live counts as 0: such an entry serves until the clock's second changes. getTTL() gives
    // the value as set.
    virtual void setTTL(int ttl);
    virtual int getTTL() const;

private:
    class Impl;
    std::shared_ptr<Impl> mImpl;
};

// The library's one instance of the cache template.
extern template class KELCORE_API kelCacheT<kelString, kelCacheFile::FILE_DATA>;

} // namespace KELKIT

#endif
