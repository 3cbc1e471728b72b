#include <kelcore/platform/kelSharedBlock.h>

#include <windows.h>

// A block is a file mapping in the paging file. The system gives a new mapping zero pages and
// removes it when the last handle and view go, also those of a process that was killed.

namespace KELKIT {
namespace platform {

struct SharedBlock {
    HANDLE mapping;
    void* view;
};

namespace {

// FILE_MAP_ALL_ACCESS, spelled out because it is what other processes must be granted.
DWORD const kAllAccess = 0xF001F;

bool fitsInterface(std::uint32_t size) {
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    std::uint64_t const page = system.dwPageSize > 0 ? system.dwPageSize : 4096;
    return (size + page - 1) / page * page <= 0xFFFFFFFFull;
}

} // namespace

SharedBlock* openSharedBlock(char const* name, std::uint32_t size) {
    // The paging file refuses a mapping of no bytes, whether or not the name exists.
    if (name == nullptr || size == 0) {
        return nullptr;
    }
    HANDLE mapping = nullptr;
    // A size whose whole pages the interface could not report only attaches, never creates.
    if (fitsInterface(size)) {
        // For a name that exists this gives that mapping, with code 183, and the size has no
        // effect: the block keeps its creator's size.
        mapping = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, name);
        if (mapping == nullptr && GetLastError() != ERROR_ALREADY_EXISTS) {
            return nullptr;
        }
    }
    if (mapping == nullptr) {
        mapping = OpenFileMappingA(kAllAccess, FALSE, name);
        if (mapping == nullptr) {
            return nullptr;
        }
    }
    void* const view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0);
    if (view == nullptr) {
        CloseHandle(mapping);
        return nullptr;
    }
    return new SharedBlock{mapping, view};
}

unsigned char* getSharedBlockView(SharedBlock const& block) {
    return static_cast<unsigned char*>(block.view);
}

std::uint32_t getSharedBlockSize(SharedBlock const& block) {
    MEMORY_BASIC_INFORMATION region;
    if (VirtualQuery(block.view, &region, sizeof region) == 0) {
        return 0;
    }
    // A foreign block larger than the interface can report is cut, not wrapped.
    return region.RegionSize < 0xFFFFFFFFull ? static_cast<std::uint32_t>(region.RegionSize)
                                             : 0xFFFFFFFFu;
}

bool closeSharedBlock(SharedBlock* block) {
    bool released = UnmapViewOfFile(block->view) != FALSE;
    released = CloseHandle(block->mapping) != FALSE && released;
    delete block;
    return released;
}

bool sharedBlockExists(char const* name) {
    if (name == nullptr) {
        return false;
    }
    HANDLE const mapping = OpenFileMappingA(kAllAccess, FALSE, name);
    if (mapping == nullptr) {
        return false;
    }
    CloseHandle(mapping);
    return true;
}

} // namespace platform
} // namespace KELKIT
