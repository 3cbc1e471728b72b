#ifndef KELCORE_INTERNAL_KELTHROWSITE_H
#define KELCORE_INTERNAL_KELTHROWSITE_H

// Internal: not installed. Throws a kelException that names the throwing unit by its file name
// alone, so that the text is the same whatever folder the library was built in.

#include <kelcore/frame/kelException.h>

namespace KELKIT {
namespace internal {

constexpr char const* sourceBaseName(char const* path) {
    char const* base = path;
    for (char const* p = path; *p != '\0'; ++p) {
        if (*p == '/' || *p == '\\') {
            base = p + 1;
        }
    }
    return base;
}

} // namespace internal
} // namespace KELKIT

#define KEL_THROW(description)                                                                     \
    throw ::KELKIT::kelException((description), ::KELKIT::internal::sourceBaseName(__FILE__),      \
                                 static_cast<::KELKIT::UInt32>(__LINE__))

#endif
