#include <kelcore/platform/kelCodePage.h>

#include <cerrno>
#include <cstring>
#include <iconv.h>
#include <langinfo.h>

namespace KELKIT {
namespace platform {

namespace {

char const UTF16[] = "UTF-16LE"; // no byte order mark, the byte order of Windows

// The character set of the caller's locale. The library never calls setlocale: a program that
// did not choose a locale gets the C locale's ASCII, as the C runtime would give it.
char const* localeCodeset() {
    char const* codeset = ::nl_langinfo(CODESET);
    return codeset == nullptr || *codeset == '\0' ? "ANSI_X3.4-1968" : codeset;
}

// One descriptor per call: it carries shift state and must not be shared between threads.
class Descriptor {
public:
    Descriptor(char const* to, char const* from) : mHandle(::iconv_open(to, from)) {}
    ~Descriptor() {
        if (valid()) {
            ::iconv_close(mHandle);
        }
    }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;

    bool valid() const { return mHandle != reinterpret_cast<iconv_t>(-1); }
    iconv_t get() const { return mHandle; }

private:
    iconv_t mHandle;
};

// An output that grows while iconv reports E2BIG; it never holds more than twice what the
// conversion produced plus its starting size.
class Output {
public:
    explicit Output(std::size_t initial) : mBytes(initial < 16 ? 16 : initial, '\0') {}

    // One iconv step (in null flushes the shift state). Returns iconv's result and errno.
    std::size_t convert(iconv_t handle, char** in, std::size_t* inLeft, int& error) {
        for (;;) {
            char* out = &mBytes[mUsed];
            std::size_t outLeft = mBytes.size() - mUsed;
            errno = 0;
            std::size_t const result = ::iconv(handle, in, inLeft, &out, &outLeft);
            error = errno;
            mUsed = mBytes.size() - outLeft;
            if (result != static_cast<std::size_t>(-1) || error != E2BIG) {
                return result;
            }
            mBytes.resize(mBytes.size() * 2);
        }
    }

    void put(char c) {
        if (mUsed == mBytes.size()) {
            mBytes.resize(mBytes.size() * 2);
        }
        mBytes[mUsed++] = c;
    }

    std::size_t size() const { return mUsed; }

    std::string const& bytes() {
        mBytes.resize(mUsed);
        return mBytes;
    }

private:
    std::string mBytes;
    std::size_t mUsed = 0;
};

std::size_t const FAILED = static_cast<std::size_t>(-1);

} // namespace

bool codePageToUtf16(char const* text, std::size_t length, std::u16string& out) {
    out.clear();
    if (length == 0) {
        return true;
    }
    if (text == nullptr) {
        return false;
    }
    Descriptor const descriptor(UTF16, localeCodeset());
    if (!descriptor.valid()) {
        return false;
    }
    Output output(2 * length);
    char* in = const_cast<char*>(text); // iconv's signature; the input is not written
    std::size_t inLeft = length;
    int error = 0;
    // An undecodable or cut-off byte sequence fails the whole text: there is no sensible part.
    if (output.convert(descriptor.get(), &in, &inLeft, error) == FAILED ||
        output.convert(descriptor.get(), nullptr, nullptr, error) == FAILED) {
        return false;
    }
    std::string const& bytes = output.bytes();
    out.resize(bytes.size() / 2);
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                       static_cast<unsigned char>(bytes[2 * i + 1]) << 8);
    }
    return true;
}

namespace {

// Converts the UTF-16LE bytes [begin, end) of input (the count units) onto output. Like the
// Windows conversion without flags: a character the code page cannot take, or a lone surrogate,
// becomes '?', after a return to the initial shift state. False when iconv fails otherwise.
bool convertUnits(iconv_t handle, std::string& input, std::size_t begin, std::size_t end,
                  char16_t const* units, std::size_t count, Output& output) {
    char* in = &input[begin];
    std::size_t inLeft = end - begin;
    int error = 0;
    while (inLeft > 0 && output.convert(handle, &in, &inLeft, error) == FAILED) {
        if (error != EILSEQ && error != EINVAL) {
            return false;
        }
        if (output.convert(handle, nullptr, nullptr, error) == FAILED) {
            return false;
        }
        output.put('?');
        std::size_t const at = static_cast<std::size_t>(in - input.data()) / 2;
        bool const pair = at + 1 < count && units[at] >= 0xD800 && units[at] <= 0xDBFF &&
                          units[at + 1] >= 0xDC00 && units[at + 1] <= 0xDFFF;
        std::size_t const skip = error == EINVAL ? inLeft : (pair ? 4 : 2);
        in += skip;
        inLeft -= skip;
    }
    return true;
}

// A tag character, U+E0000 to U+E007F, as its surrogate pair at units[at].
bool isTagCharacter(char16_t const* units, std::size_t count, std::size_t at) {
    return at + 1 < count && units[at] == 0xDB40 && units[at + 1] >= 0xDC00 &&
           units[at + 1] <= 0xDC7F;
}

} // namespace

bool utf16ToCodePage(char16_t const* units, std::size_t count, std::string& out) {
    out.clear();
    if (count == 0) {
        return true;
    }
    if (units == nullptr) {
        return false;
    }
    Descriptor const descriptor(localeCodeset(), UTF16);
    if (!descriptor.valid()) {
        return false;
    }
    std::string input(2 * count, '\0');
    for (std::size_t i = 0; i < count; ++i) {
        input[2 * i] = static_cast<char>(units[i] & 0xFF);
        input[2 * i + 1] = static_cast<char>(units[i] >> 8);
    }
    Output output(count + count / 2);
    // glibc drops a tag character that the code page lacks instead of failing on it as on every
    // other character, which would lose it without a trace: each goes through on its own, and
    // one that gives nothing becomes '?' like the rest.
    std::size_t start = 0;
    for (std::size_t i = 0; i <= count; ++i) {
        bool const tag = i < count && isTagCharacter(units, count, i);
        if (!tag && i < count) {
            continue;
        }
        if (!convertUnits(descriptor.get(), input, 2 * start, 2 * i, units, count, output)) {
            return false;
        }
        if (tag) {
            std::size_t const before = output.size();
            if (!convertUnits(descriptor.get(), input, 2 * i, 2 * i + 4, units, count, output)) {
                return false;
            }
            if (output.size() == before) {
                output.put('?');
            }
            start = ++i + 1;
        }
    }
    int error = 0;
    if (output.convert(descriptor.get(), nullptr, nullptr, error) == FAILED) {
        return false;
    }
    out = output.bytes();
    return true;
}

} // namespace platform
} // namespace KELKIT
