#include <kelcore/frame/kelNumbers.h>

#include <locale>
#include <sstream>

namespace KELKIT {

namespace {

// One counter per process, whatever copies of the singleton exist.
UInt64 gNextSequenceNumber = 1;

template <typename T>
bool streamReads(char const* text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value;
    return static_cast<bool>(in >> value);
}

bool strictlyNumeric(char const* text, bool allowDecimal, bool allowSign) {
    UInt32 dots = 0;
    UInt32 signPosition = 0; // the last sign counts
    for (UInt32 i = 0; text[i] != '\0'; ++i) {
        char const c = text[i];
        if (c >= '0' && c <= '9') {
            continue;
        }
        if (c == '.' && allowDecimal) {
            ++dots;
        } else if ((c == '+' || c == '-') && allowSign) {
            signPosition = i;
        } else {
            return false;
        }
    }
    return dots <= 1 && signPosition == 0;
}

} // namespace

kelNumbers& kelNumbers::getInstance() {
    static kelNumbers instance;
    return instance;
}

kelNumbers::kelNumbers() = default;

kelNumbers::kelNumbers(kelNumbers const& other) = default;

kelNumbers& kelNumbers::operator=(kelNumbers const& other) = default;

kelNumbers::~kelNumbers() = default;

UInt64 kelNumbers::getNextSequenceNumber() {
    mLock.enter();
    UInt64 const number = gNextSequenceNumber++;
    mLock.leave();
    return number;
}

bool kelNumbers::isNumeric(char const* text, bool allowDecimal, bool allowSign, bool strict) {
    if (text == nullptr) {
        return false;
    }
    if (strict) {
        return strictlyNumeric(text, allowDecimal, allowSign);
    }
    if (allowDecimal) {
        return streamReads<double>(text);
    }
    return allowSign ? streamReads<SInt64>(text) : streamReads<UInt64>(text);
}

bool kelNumbers::isNumeric(char const* text) {
    return isNumeric(text, true, true, false);
}

void kelNumbers::swapEndian(UInt32& value) {
    value = ((value & 0x000000FFu) << 24) | ((value & 0x0000FF00u) << 8) |
            ((value & 0x00FF0000u) >> 8) | ((value & 0xFF000000u) >> 24);
}

} // namespace KELKIT
