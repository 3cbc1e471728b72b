#ifndef KELCORE_PLATFORM_POSIX_KELATTRIBUTEWORD_H
#define KELCORE_PLATFORM_POSIX_KELATTRIBUTEWORD_H

// Internal to the POSIX backend: the attribute word of kelFileInfo.h from a file status.

#include <kelcore/frame/kelTypes.h>

#include <sys/stat.h>

namespace KELKIT {
namespace platform {

// `name` is the item's own name (the last part of its path), which decides kHidden.
UInt32 attributeWordOf(char const* name, mode_t mode);

} // namespace platform
} // namespace KELKIT

#endif
