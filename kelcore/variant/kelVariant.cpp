#include <kelcore/variant/kelVariant.h>

#include <kelcore/internal/kelPieceRead.h>
#include <kelcore/strings/kelStringConverter.h>

#include <cctype>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>

namespace KELKIT {

namespace {

typedef kelVariantFormat::Enum Format;

static_assert(std::numeric_limits<Float32>::is_iec559 && std::numeric_limits<Float64>::is_iec559,
              "the cell holds IEEE 754 images");

// How a format's cell is read. Bool counts as unsigned.
enum class Group { Unsigned, Signed, Float32, Float64, String, Time };

Group groupOf(Format format) {
    switch (format) {
    case kelVariantFormat::Bool:
    case kelVariantFormat::UInt8:
    case kelVariantFormat::UInt16:
    case kelVariantFormat::UInt32:
    case kelVariantFormat::UInt64:
        return Group::Unsigned;
    case kelVariantFormat::SInt8:
    case kelVariantFormat::SInt16:
    case kelVariantFormat::SInt32:
    case kelVariantFormat::SInt64:
        return Group::Signed;
    case kelVariantFormat::Float32:
        return Group::Float32;
    case kelVariantFormat::Float64:
        return Group::Float64;
    case kelVariantFormat::String:
        return Group::String;
    default:
        return Group::Time;
    }
}

bool isNumeric(Format format) {
    return format >= kelVariantFormat::Bool && format <= kelVariantFormat::Float64;
}

Float32 float32Of(UInt64 bits) {
    UInt32 const low = static_cast<UInt32>(bits);
    Float32 value;
    std::memcpy(&value, &low, sizeof value);
    return value;
}

Float64 float64Of(UInt64 bits) {
    Float64 value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

UInt64 bitsOf(Float32 value) {
    UInt32 low;
    std::memcpy(&low, &value, sizeof low);
    return low;
}

UInt64 bitsOf(Float64 value) {
    UInt64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

UInt64 bitsOf(SInt64 value) {
    return static_cast<UInt64>(value);
}

// An unsigned source can only lie above a window. For bool the window is 0..1, so every
// positive value is true.
template <typename T>
T fromUnsigned(UInt64 value) {
    UInt64 const high = static_cast<UInt64>(std::numeric_limits<T>::max());
    return value > high ? std::numeric_limits<T>::max() : static_cast<T>(value);
}

// For an unsigned target the window starts at 0, so negative values give 0 (false for bool).
template <typename T>
T fromSigned(SInt64 value) {
    if (value < 0) {
        if constexpr (std::is_unsigned<T>::value) {
            return T();
        }
        if (value < static_cast<SInt64>(std::numeric_limits<T>::min())) {
            return std::numeric_limits<T>::min();
        }
    } else if (static_cast<UInt64>(value) > static_cast<UInt64>(std::numeric_limits<T>::max())) {
        return std::numeric_limits<T>::max();
    }
    return static_cast<T>(value);
}

// The limits are compared in the source's float type. A limit that does not fit that type
// exactly rounds up to the next power of two, and a value equal to that rounded limit lies
// beyond the integer range, so it saturates too instead of overflowing the conversion. A NaN
// fails every comparison; it gives 0 (true for bool, where any non-zero value is true).
template <typename T, typename F>
T fromFloat(F value) {
    F const low = static_cast<F>(std::numeric_limits<T>::min());
    F const high = static_cast<F>(std::numeric_limits<T>::max());
    if (low > value) {
        return std::numeric_limits<T>::min();
    }
    if (value > high) {
        return std::numeric_limits<T>::max();
    }
    if constexpr (std::is_same<T, bool>::value) {
        return value != F(0);
    } else {
        if (std::isnan(value)) {
            return T();
        }
        if (value >= std::ldexp(F(1), std::numeric_limits<T>::digits)) {
            return std::numeric_limits<T>::max();
        }
        return static_cast<T>(value);
    }
}

// Integer (and bool) reading of a numeric cell.
template <typename T>
T integerOf(Format format, UInt64 bits) {
    switch (groupOf(format)) {
    case Group::Unsigned:
        return fromUnsigned<T>(bits);
    case Group::Signed:
        return fromSigned<T>(static_cast<SInt64>(bits));
    case Group::Float32:
        return fromFloat<T>(float32Of(bits));
    case Group::Float64:
        return fromFloat<T>(float64Of(bits));
    default:
        return T();
    }
}

// Float reading of a numeric cell; narrowing a Float64 rounds as IEEE 754 does.
template <typename F>
F floatOf(Format format, UInt64 bits) {
    switch (groupOf(format)) {
    case Group::Unsigned:
        return static_cast<F>(bits);
    case Group::Signed:
        return static_cast<F>(static_cast<SInt64>(bits));
    case Group::Float32:
        return static_cast<F>(float32Of(bits));
    case Group::Float64:
        return static_cast<F>(float64Of(bits));
    default:
        return F();
    }
}

// A cell from outside (a stream) brought to what the setter of its format would have stored.
UInt64 normalised(Format format, UInt64 bits) {
    switch (format) {
    case kelVariantFormat::Bool:
        return (bits & 0xFFu) != 0 ? 1u : 0u;
    case kelVariantFormat::UInt8:
        return bits & 0xFFu;
    case kelVariantFormat::SInt8:
        return bitsOf(static_cast<SInt64>(static_cast<SInt8>(bits & 0xFFu)));
    case kelVariantFormat::UInt16:
        return bits & 0xFFFFu;
    case kelVariantFormat::SInt16:
        return bitsOf(static_cast<SInt64>(static_cast<SInt16>(bits & 0xFFFFu)));
    case kelVariantFormat::UInt32:
    case kelVariantFormat::Float32:
        return bits & 0xFFFFFFFFu;
    case kelVariantFormat::SInt32:
        return bitsOf(static_cast<SInt64>(static_cast<SInt32>(bits & 0xFFFFFFFFu)));
    default:
        return bits;
    }
}

// Whether the text, in capitals, is the given capital word: the same test as an upper-case copy
// compared with the word, without making the copy.
bool equalsInCapitals(char const* text, char const* word) {
    for (; *word != '\0'; ++text, ++word) {
        if (std::toupper(static_cast<unsigned char>(*text)) != static_cast<unsigned char>(*word)) {
            return false;
        }
    }
    return *text == '\0';
}

} // namespace

kelVariant::kelVariant() : mFormat(kelVariantFormat::UInt8), mKind(kelVariantFormat::UInt8) {
    mValue.bits = 0;
}

#define KEL_VARIANT_VALUE_CONSTRUCTOR(T)                                                           \
    kelVariant::kelVariant(T value) : kelVariant() {                                               \
        operator=(value);                                                                          \
    }
KEL_VARIANT_VALUE_CONSTRUCTOR(kelTime const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(char const*)
KEL_VARIANT_VALUE_CONSTRUCTOR(kelString const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(double const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(float const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(long long const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(unsigned long long const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(SInt32 const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(UInt32 const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(short const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(unsigned short const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(char const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(unsigned char const&)
KEL_VARIANT_VALUE_CONSTRUCTOR(bool const&)
#undef KEL_VARIANT_VALUE_CONSTRUCTOR

kelVariant::kelVariant(kelVariant const& other)
    : kelISerializable(other), mFormat(kelVariantFormat::UInt8), mKind(kelVariantFormat::UInt8) {
    mValue.bits = 0;
    operator=(other);
}

kelVariant::~kelVariant() {
    release();
}

bool kelVariant::getBool() const {
    Format const format = mKind;
    if (format == kelVariantFormat::String) {
        return kelStringConverter::toUInt8(*mValue.text) != 0;
    }
    return isNumeric(format) ? integerOf<bool>(format, mValue.bits) : false;
}

#define KEL_VARIANT_INTEGER_GETTER(T, NAME)                                                        \
    T kelVariant::get##NAME() const {                                                              \
        Format const format = mKind;                                                               \
        if (format == kelVariantFormat::String) {                                                  \
            return kelStringConverter::to##NAME(*mValue.text);                                     \
        }                                                                                          \
        return isNumeric(format) ? integerOf<T>(format, mValue.bits) : T();                        \
    }
KEL_VARIANT_INTEGER_GETTER(UInt8, UInt8)
KEL_VARIANT_INTEGER_GETTER(SInt8, SInt8)
KEL_VARIANT_INTEGER_GETTER(UInt16, UInt16)
KEL_VARIANT_INTEGER_GETTER(SInt16, SInt16)
KEL_VARIANT_INTEGER_GETTER(UInt32, UInt32)
KEL_VARIANT_INTEGER_GETTER(SInt32, SInt32)
KEL_VARIANT_INTEGER_GETTER(UInt64, UInt64)
KEL_VARIANT_INTEGER_GETTER(SInt64, SInt64)
#undef KEL_VARIANT_INTEGER_GETTER

Float32 kelVariant::getFloat32() const {
    Format const format = mKind;
    if (format == kelVariantFormat::String) {
        return kelStringConverter::toFloat32(*mValue.text);
    }
    return isNumeric(format) ? floatOf<Float32>(format, mValue.bits) : 0.0f;
}

Float64 kelVariant::getFloat64() const {
    Format const format = mKind;
    if (format == kelVariantFormat::String) {
        return kelStringConverter::toFloat64(*mValue.text);
    }
    return isNumeric(format) ? floatOf<Float64>(format, mValue.bits) : 0.0;
}

kelString kelVariant::getString() const {
    switch (groupOf(mKind)) {
    case Group::Unsigned:
        if (mKind == kelVariantFormat::Bool) {
            return kelString(mValue.bits != 0 ? "true" : "false");
        }
        return kelStringConverter::toString(static_cast<unsigned long long>(mValue.bits));
    case Group::Signed:
        return kelStringConverter::toString(static_cast<long long>(mValue.bits));
    case Group::Float32:
        return kelStringConverter::toString(float32Of(mValue.bits));
    case Group::Float64:
        return kelStringConverter::toString(float64Of(mValue.bits));
    case Group::String:
        return *mValue.text;
    default:
        return mValue.time->toString();
    }
}

kelTime kelVariant::getTime() const {
    Format const format = mKind;
    if (format == kelVariantFormat::Time) {
        return *mValue.time;
    }
    kelTime time;
    if (format == kelVariantFormat::String) {
        // Whether it parsed or not: a text that is no time gives the current time.
        time.fromString(mValue.text->c_str());
    }
    return time;
}

void kelVariant::setBool(bool const& value) {
    setCell(kelVariantFormat::Bool, value ? 1u : 0u);
}

void kelVariant::setUInt8(UInt8 const& value) {
    setCell(kelVariantFormat::UInt8, value);
}

void kelVariant::setSInt8(SInt8 const& value) {
    setCell(kelVariantFormat::SInt8, bitsOf(static_cast<SInt64>(value)));
}

void kelVariant::setUInt16(UInt16 const& value) {
    setCell(kelVariantFormat::UInt16, value);
}

void kelVariant::setSInt16(SInt16 const& value) {
    setCell(kelVariantFormat::SInt16, bitsOf(static_cast<SInt64>(value)));
}

void kelVariant::setUInt32(UInt32 const& value) {
    setCell(kelVariantFormat::UInt32, value);
}

void kelVariant::setSInt32(SInt32 const& value) {
    setCell(kelVariantFormat::SInt32, bitsOf(static_cast<SInt64>(value)));
}

void kelVariant::setUInt64(UInt64 const& value) {
    setCell(kelVariantFormat::UInt64, value);
}

void kelVariant::setSInt64(SInt64 const& value) {
    setCell(kelVariantFormat::SInt64, bitsOf(value));
}

void kelVariant::setFloat32(Float32 const& value) {
    setCell(kelVariantFormat::Float32, bitsOf(value));
}

void kelVariant::setFloat64(Float64 const& value) {
    setCell(kelVariantFormat::Float64, bitsOf(value));
}

void kelVariant::setString(char const* value) {
    if (value == nullptr) {
        stringnify();
        return;
    }
    if (equalsInCapitals(value, "TRUE")) {
        setBool(true);
        return;
    }
    if (equalsInCapitals(value, "FALSE")) {
        setBool(false);
        return;
    }
    kelTime parsed(0ull);
    if (parsed.fromString(value)) {
        setTime(parsed);
        return;
    }
    stringnify();
    *mValue.text = value;
}

void kelVariant::setString(kelString const& value) {
    setString(value.c_str());
}

void kelVariant::setTime(kelTime const& value) {
    timetify();
    *mValue.time = value;
}

// set, get and operator= for each type go through the virtual setter or getter of that type.
#define KEL_VARIANT_TYPED_ACCESS(T, SETTER, GETTER)                                                \
    void kelVariant::set(T const& value) {                                                         \
        SETTER(value);                                                                             \
    }                                                                                              \
    void kelVariant::get(T& out) const {                                                           \
        out = GETTER();                                                                            \
    }                                                                                              \
    kelVariant& kelVariant::operator=(T const& value) {                                            \
        SETTER(value);                                                                             \
        return *this;                                                                              \
    }
KEL_VARIANT_TYPED_ACCESS(kelTime, setTime, getTime)
KEL_VARIANT_TYPED_ACCESS(kelString, setString, getString)
KEL_VARIANT_TYPED_ACCESS(double, setFloat64, getFloat64)
KEL_VARIANT_TYPED_ACCESS(float, setFloat32, getFloat32)
KEL_VARIANT_TYPED_ACCESS(long long, setSInt64, getSInt64)
KEL_VARIANT_TYPED_ACCESS(unsigned long long, setUInt64, getUInt64)
KEL_VARIANT_TYPED_ACCESS(SInt32, setSInt32, getSInt32)
KEL_VARIANT_TYPED_ACCESS(UInt32, setUInt32, getUInt32)
KEL_VARIANT_TYPED_ACCESS(short, setSInt16, getSInt16)
KEL_VARIANT_TYPED_ACCESS(unsigned short, setUInt16, getUInt16)
KEL_VARIANT_TYPED_ACCESS(char, setSInt8, getSInt8)
KEL_VARIANT_TYPED_ACCESS(unsigned char, setUInt8, getUInt8)
KEL_VARIANT_TYPED_ACCESS(bool, setBool, getBool)
#undef KEL_VARIANT_TYPED_ACCESS

void kelVariant::set(char const* value) {
    setString(value);
}

kelVariant& kelVariant::operator=(char const* value) {
    setString(value);
    return *this;
}

kelVariant& kelVariant::operator=(kelVariant const& other) {
    // Assigning to itself would otherwise free the value it is about to copy.
    if (this == &other) {
        return *this;
    }
    Format const format = other.mKind;
    if (format == kelVariantFormat::String) {
        kelString* text = new kelString(*other.mValue.text);
        release();
        mValue.text = text;
        setKind(format);
    } else if (format == kelVariantFormat::Time) {
        kelTime* time = new kelTime(*other.mValue.time);
        release();
        mValue.time = time;
        setKind(format);
    } else {
        setCell(format, other.mValue.bits);
    }
    return *this;
}

kelVariantFormat const& kelVariant::getFormat() const {
    return mFormat;
}

bool kelVariant::accept(char const* text) const {
    return roundTrip(text, nullptr);
}

bool kelVariant::fromString(char const* text) {
    return roundTrip(text, this);
}

bool kelVariant::roundTrip(char const* text, kelVariant* target) const {
    // A null text has no characters to give back, so nothing can survive the trip.
    if (text == nullptr) {
        return false;
    }
    kelVariant probe;
    probe.set(text);
    switch (mKind) {
    case kelVariantFormat::Bool:
        probe.set(probe.getBool());
        break;
    case kelVariantFormat::UInt8:
        probe.set(probe.getUInt8());
        break;
    case kelVariantFormat::SInt8:
        probe.set(probe.getSInt8());
        break;
    case kelVariantFormat::UInt16:
        probe.set(probe.getUInt16());
        break;
    case kelVariantFormat::SInt16:
        probe.set(probe.getSInt16());
        break;
    case kelVariantFormat::UInt32:
        probe.set(probe.getUInt32());
        break;
    case kelVariantFormat::SInt32:
        probe.set(probe.getSInt32());
        break;
    case kelVariantFormat::UInt64:
        probe.set(probe.getUInt64());
        break;
    case kelVariantFormat::SInt64:
        probe.set(probe.getSInt64());
        break;
    case kelVariantFormat::Float32:
        probe.set(probe.getFloat32());
        break;
    case kelVariantFormat::Float64:
        probe.set(probe.getFloat64());
        break;
    case kelVariantFormat::String:
        probe.set(probe.getString());
        break;
    default:
        probe.set(probe.getTime());
        break;
    }
    bool const same = probe.getString() == text;
    if (same && target != nullptr) {
        *target = probe;
    }
    return same;
}

bool kelVariant::operator==(kelVariant const& other) const {
    Format const mine = mKind;
    Format const theirs = other.mKind;
    if (mine == theirs) {
        if (mine == kelVariantFormat::String) {
            return *mValue.text == *other.mValue.text;
        }
        if (mine == kelVariantFormat::Time) {
            return *mValue.time == *other.mValue.time;
        }
        return mValue.bits == other.mValue.bits;
    }
    Group const a = groupOf(mine);
    Group const b = groupOf(theirs);
    bool const floats = (a == Group::Float32 || a == Group::Float64) &&
                        (b == Group::Float32 || b == Group::Float64);
    if (floats) {
        return getFloat64() == other.getFloat64();
    }
    if (a == b && (a == Group::Unsigned || a == Group::Signed)) {
        return mValue.bits == other.mValue.bits;
    }
    return getString() == other.getString();
}

bool kelVariant::operator!=(kelVariant const& other) const {
    return !operator==(other);
}

void kelVariant::serializeTo(kelISerializer& serializer) const {
    Format const format = mKind;
    serializer.serialize(static_cast<UInt8>(format));
    if (format == kelVariantFormat::String) {
        mValue.text->serializeTo(serializer);
    } else if (format == kelVariantFormat::Time) {
        mValue.time->serializeTo(serializer);
    } else {
        serializer.serialize(static_cast<UInt64>(mValue.bits));
    }
}

void kelVariant::deserializeFrom(kelISerializer& serializer) {
    internal::ReadProgress const progress(serializer);
    UInt8 number = 0;
    serializer.deserialize(number);
    Format const format = static_cast<Format>(number);
    // Each payload is read into a value of its own first: if the serializer throws on a short
    // stream, or delivers nothing without throwing, this variant still holds what it held.
    if (isNumeric(format)) {
        UInt64 bits = 0;
        serializer.deserialize(bits);
        if (!progress.arrived(1, 9)) {
            return;
        }
        setCell(format, normalised(format, bits));
    } else if (format == kelVariantFormat::String) {
        std::string bytes;
        if (!internal::readCountedText(serializer, bytes, progress, 1)) {
            return;
        }
        std::unique_ptr<kelString> text(new kelString(bytes.c_str()));
        release();
        mValue.text = text.release();
        setKind(kelVariantFormat::String);
    } else if (format == kelVariantFormat::Time) {
        std::unique_ptr<kelTime> time(new kelTime(0ull));
        time->deserializeFrom(serializer);
        if (!progress.arrived(1, 9)) {
            return;
        }
        release();
        mValue.time = time.release();
        setKind(kelVariantFormat::Time);
    } else {
        clear();
    }
}

void kelVariant::clear() {
    release();
    setKind(kelVariantFormat::UInt8);
    mValue.bits = 0;
}

void kelVariant::release() {
    if (mKind == kelVariantFormat::String) {
        delete mValue.text;
    } else if (mKind == kelVariantFormat::Time) {
        delete mValue.time;
    }
}

void kelVariant::setKind(kelVariantFormat::Enum kind) {
    if (kind != mKind) {
        mFormat = kind;
        mKind = kind;
    }
}

void kelVariant::stringnify() {
    if (mKind == kelVariantFormat::String) {
        return;
    }
    kelString* text = new kelString();
    release();
    mValue.text = text;
    setKind(kelVariantFormat::String);
}

void kelVariant::timetify() {
    if (mKind == kelVariantFormat::Time) {
        return;
    }
    kelTime* time = new kelTime();
    release();
    mValue.time = time;
    setKind(kelVariantFormat::Time);
}

void kelVariant::setCell(kelVariantFormat::Enum format, UInt64 bits) {
    release();
    setKind(format);
    mValue.bits = bits;
}

} // namespace KELKIT
