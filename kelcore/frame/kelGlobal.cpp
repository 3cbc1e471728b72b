#include <kelcore/frame/kelGlobal.h>

#include <cstdint>

namespace KELKIT {

kelGlobal::kelGlobal() = default;
kelGlobal::kelGlobal(kelGlobal const&) = default;
kelGlobal& kelGlobal::operator=(kelGlobal const&) = default;
kelGlobal::~kelGlobal() = default;

UInt32 kelGlobal::kelPtrToULong(void const* pointer) {
    return static_cast<UInt32>(reinterpret_cast<std::uintptr_t>(pointer) & 0xFFFFFFFFu);
}

kelVersion kelGlobal::getKelKitVersion() {
    return kelVersion(2, 0, 0, 437, kelVersion::Flags::All);
}

} // namespace KELKIT
