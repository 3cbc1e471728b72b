#ifndef KELCORE_PLATFORM_POSIX_KELSHAREDOBJECT_H
#define KELCORE_PLATFORM_POSIX_KELSHAREDOBJECT_H

// Internal to the POSIX backend: a named shared-memory object that lives exactly as long as some
// live process uses it, whatever way its other users ended. The named mutex and shared memory
// both stand on it.
//
// Who uses an object is told by open-file-description locks on its descriptor, which the kernel
// drops when a process ends, however it ends:
//   byte 0, the gate: held exclusively while a process joins, leaves or asks;
//   byte 1, the users: every user holds it shared.
// Whoever can take byte 1 exclusively under the gate is alone: joining, it makes the object
// afresh (earlier users left or crashed, so nothing in it can be trusted); leaving or asking, it
// removes the name. The locks belong to the open file description, which a forked child shares
// with its parent: a child that wants its own use of a name joins it itself.

#include <cstddef>
#include <string>

namespace KELKIT {
namespace platform {
namespace posix {

struct SharedObject {
    int fd = -1;
    void* mapping = nullptr;
    std::size_t size = 0;
};

enum class SharedObjectJoin {
    Attached,     // mapped as its maker made it
    Created,      // made afresh by this process
    CreateFailed, // the name cannot be made (bad name, no room), or refused (see joinSharedObject)
    OpenFailed,   // the name exists but cannot be used (another user's, no locks)
};

// "/kelcore-<kind>-<name>". Object names allow no '/' after the first character; '/' and '%'
// are escaped as %XX, so that distinct names stay distinct.
std::string sharedObjectName(char const* kind, char const* name);

std::size_t pageSize();

// Opens the object, making the name if needed, and joins its users. Alone, the process makes the
// object afresh with createSize bytes, all zero, and initialise (if any) runs on them before any
// other process can join; a createSize of 0 refuses to make it. Otherwise the object is mapped at
// the size its maker gave it. Only a successful join leaves anything behind.
SharedObjectJoin joinSharedObject(std::string const& objectName, std::size_t createSize,
                                  void (*initialise)(void* mapping), SharedObject& object);

// Unmaps and closes, which drops this process's place among the users; the last user removes
// the name first. False when unmapping or closing failed; object is emptied all the same.
bool leaveSharedObject(std::string const& objectName, SharedObject& object);

// Whether a live process uses the object. A name that only dead processes used is removed here.
bool sharedObjectInUse(std::string const& objectName);

} // namespace posix
} // namespace platform
} // namespace KELKIT

#endif
