#ifndef KELCORE_INTERNAL_KELSTRINGACCESS_H
#define KELCORE_INTERNAL_KELSTRINGACCESS_H

// Internal: not installed. Lets the library's own units build a kelString from text whose
// length they already know, without measuring it again.

#include <kelcore/strings/kelString.h>

namespace KELKIT {
namespace internal {

struct kelStringAccess {
    // The first length bytes of text; they must hold no 0 byte.
    static kelString fromKnownLength(char const* text, UInt32 length) {
        return kelString(text, length);
    }
};

} // namespace internal
} // namespace KELKIT

#endif
