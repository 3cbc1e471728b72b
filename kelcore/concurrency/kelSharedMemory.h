#ifndef KELCORE_CONCURRENCY_KELSHAREDMEMORY_H
#define KELCORE_CONCURRENCY_KELSHAREDMEMORY_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

#include <memory>

namespace KELKIT {

// A block of memory that processes share by name, with the named kelMutex by which they take
// turns. A name abc gives the system names "memoryabc" (the block) and "mutexabc" (the lock).
//
// The first process to connect creates the block, cleared, with the given size taken up to whole
// pages; later ones attach at that size, whatever size they give. The block holds only the
// caller's bytes and lives while some process is connected to it: after the last disconnect,
// also when the others were killed, the next connect creates it afresh. A process that dies
// while it holds the lock hands it to the next waiter.
//
// Copies and assignments share one connection: a disconnect through any of them disconnects
// them all, and the last of them to go disconnects it. One object (with its copies) belongs to
// one thread while it connects or disconnects.
class KELCORE_API kelSharedMemory {
public:
    // Not connected.
    kelSharedMemory();
    // Connects; ask isConnected whether that worked.
    kelSharedMemory(char const* name, UInt32 size);
    kelSharedMemory(kelSharedMemory const& other);
    kelSharedMemory& operator=(kelSharedMemory const& other);
    virtual ~kelSharedMemory();

    // True at once on a connected object, whatever the name and size. False for every failure
    // (no name, a size of 0, no room, a lock that cannot be had), and the object stays not
    // connected.
    virtual bool connect(char const* name, UInt32 size);
    // Takes the lock for the release. True when not connected; false when the system refused to
    // release something, and the object is not connected all the same.
    virtual bool disconnect();
    // The queries take the lock; not connected, they give false, 0 and null.
    virtual bool isConnected() const;
    // The size of the mapped region, in whole pages.
    virtual UInt32 getSize() const;
    // Nothing stops a caller from using the bytes without the lock.
    virtual unsigned char* getBuffer() const;
    // Re-entrant; nothing happens when not connected.
    virtual void lock();
    virtual void unlock();

    // Whether the block of that name is connected in some live process; the lock is not asked.
    static bool exist(char const* name);

private:
    static void getNames(char const* name, kelString& mutexName, kelString& memoryName);

    struct Impl;
    std::shared_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
