#include <kelcore/platform/kelSharedBlock.h>

#include <kelcore/platform/posix/kelSharedObject.h>

#include <limits>
#include <string>

// A block is the shared object "/kelcore-shm-<name>" (see kelSharedObject.h). Its lifetime is
// counted by range locks that the kernel drops with a dead process, so a killed user neither keeps
// the block alive nor leaves its bytes to the next creator: whoever finds itself alone truncates
// the object to nothing and grows it again, which clears it.

namespace KELKIT {
namespace platform {

struct SharedBlock {
    std::string objectName;
    posix::SharedObject object;
};

SharedBlock* openSharedBlock(char const* name, std::uint32_t size) {
    // A block of no bytes can be neither made nor named, as with the Windows paging file.
    if (name == nullptr || size == 0) {
        return nullptr;
    }
    std::size_t const page = posix::pageSize();
    std::size_t createSize = (static_cast<std::size_t>(size) + page - 1) / page * page;
    if (createSize > std::numeric_limits<std::uint32_t>::max()) {
        createSize = 0; // attach only: the interface could not report the size
    }
    auto* block = new SharedBlock;
    block->objectName = posix::sharedObjectName("shm", name);
    switch (posix::joinSharedObject(block->objectName, createSize, nullptr, block->object)) {
    case posix::SharedObjectJoin::Attached:
    case posix::SharedObjectJoin::Created:
        return block;
    case posix::SharedObjectJoin::CreateFailed:
    case posix::SharedObjectJoin::OpenFailed:
        break;
    }
    delete block;
    return nullptr;
}

unsigned char* getSharedBlockView(SharedBlock const& block) {
    return static_cast<unsigned char*>(block.object.mapping);
}

std::uint32_t getSharedBlockSize(SharedBlock const& block) {
    // Only this library makes these objects, in whole pages that fit 32 bits; anything else
    // is cut to what the interface can report rather than wrapped.
    std::size_t const limit = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(block.object.size < limit ? block.object.size : limit);
}

bool closeSharedBlock(SharedBlock* block) {
    bool const released = posix::leaveSharedObject(block->objectName, block->object);
    delete block;
    return released;
}

bool sharedBlockExists(char const* name) {
    return name != nullptr && posix::sharedObjectInUse(posix::sharedObjectName("shm", name));
}

} // namespace platform
} // namespace KELKIT
