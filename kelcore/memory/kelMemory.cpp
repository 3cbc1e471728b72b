#include <kelcore/memory/kelMemory.h>

#include <cstring>
#include <memory>
#include <new>

namespace KELKIT {

kelMemory::~kelMemory() = default;

bool kelMemory::swap(void* first, void* second, UInt32 size) {
    std::unique_ptr<unsigned char[]> temporary(new (std::nothrow) unsigned char[size]);
    if (temporary == nullptr) {
        return false;
    }
    if (size > 0) {
        std::memcpy(temporary.get(), first, size);
        std::memcpy(first, second, size);
        std::memcpy(second, temporary.get(), size);
    }
    return true;
}

} // namespace KELKIT
