#ifndef KELCORE_PLATFORM_KELCODEPAGE_H
#define KELCORE_PLATFORM_KELCODEPAGE_H

// Internal: text between the system's default single- or multi-byte encoding and UTF-16.

#include <cstddef>
#include <string>

namespace KELKIT {
namespace platform {

// The length bytes of text decoded from the default code page into UTF-16 code units, without a
// terminator. False, with out empty, when the text holds a byte sequence the code page cannot
// decode or no converter is available.
bool codePageToUtf16(char const* text, std::size_t length, std::u16string& out);

// The count units encoded in the default code page, without a terminator. A character the code
// page has no form for, or a lone surrogate, becomes the system's default replacement. False,
// with out empty, when no converter is available.
bool utf16ToCodePage(char16_t const* units, std::size_t count, std::string& out);

} // namespace platform
} // namespace KELKIT

#endif
