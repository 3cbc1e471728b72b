#include <kelcore/platform/kelCodePage.h>

#include <climits>
#include <windows.h>

namespace KELKIT {
namespace platform {

// Without flags, as the ANSI conversions of the system do: undecodable bytes and unmappable
// characters get the code page's replacements instead of failing the whole text.
bool codePageToUtf16(char const* text, std::size_t length, std::u16string& out) {
    out.clear();
    if (length == 0) {
        return true;
    }
    if (text == nullptr || length > static_cast<std::size_t>(INT_MAX)) {
        return false;
    }
    int const bytes = static_cast<int>(length);
    int const units = ::MultiByteToWideChar(CP_ACP, 0, text, bytes, nullptr, 0);
    if (units <= 0) {
        return false;
    }
    out.resize(static_cast<std::size_t>(units));
    int const done =
        ::MultiByteToWideChar(CP_ACP, 0, text, bytes, reinterpret_cast<wchar_t*>(&out[0]), units);
    if (done <= 0) {
        out.clear();
        return false;
    }
    out.resize(static_cast<std::size_t>(done));
    return true;
}

bool utf16ToCodePage(char16_t const* units, std::size_t count, std::string& out) {
    out.clear();
    if (count == 0) {
        return true;
    }
    if (units == nullptr || count > static_cast<std::size_t>(INT_MAX)) {
        return false;
    }
    auto const* wide = reinterpret_cast<wchar_t const*>(units);
    int const length = static_cast<int>(count);
    int const bytes = ::WideCharToMultiByte(CP_ACP, 0, wide, length, nullptr, 0, nullptr, nullptr);
    if (bytes <= 0) {
        return false;
    }
    out.resize(static_cast<std::size_t>(bytes));
    int const done =
        ::WideCharToMultiByte(CP_ACP, 0, wide, length, &out[0], bytes, nullptr, nullptr);
    if (done <= 0) {
        out.clear();
        return false;
    }
    out.resize(static_cast<std::size_t>(done));
    return true;
}

} // namespace platform
} // namespace KELKIT
