// kelVariant's text side: setString recognises "true" and "false" in any case and the time
// text, and keeps any other text as String; a String variant reads numbers as the classic
// stream does; accept and fromString agree, fromString takes a text only when it prints back
// as the same characters and otherwise changes nothing. The model of acceptance per format: an
// integer or float format accepts exactly the texts that are the stream's print of the value
// the stream reads from them; Bool accepts "true" and "false"; String accepts all but a bool
// word or time text that prints differently.

#include "kelFuzz.h"

#include <kelcore/variant/kelVariant.h>

#include <cctype>
#include <cstring>

using namespace KELKIT;
using kelFuzz::streamNumber;
using kelFuzz::streamText;

namespace {

typedef kelVariantFormat F;

std::string upper(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

// Whether a variant of the format takes the text, by the model above. time is the text read as
// a time, when it is one.
bool accepts(int format, std::string const& t, bool isTime, std::string const& timeText) {
    char const* const c = t.c_str();
    switch (format) {
    case F::Bool:
        return t == "true" || t == "false";
    case F::UInt8:
        return t == streamText(unsigned(UInt8(streamNumber<unsigned short>(c))));
    case F::SInt8:
        return t == streamText(int(SInt8(streamNumber<short>(c))));
    case F::UInt16:
        return t == streamText(streamNumber<UInt16>(c));
    case F::SInt16:
        return t == streamText(streamNumber<SInt16>(c));
    case F::UInt32:
        return t == streamText(streamNumber<UInt32>(c));
    case F::SInt32:
        return t == streamText(streamNumber<SInt32>(c));
    case F::UInt64:
        return t == streamText(streamNumber<UInt64>(c));
    case F::SInt64:
        return t == streamText(streamNumber<SInt64>(c));
    case F::Float32:
        return t == streamText(streamNumber<float>(c));
    case F::Float64:
        return t == streamText(streamNumber<double>(c));
    case F::String: {
        std::string const word = upper(t);
        if (word == "TRUE" || word == "FALSE") {
            return t == "true" || t == "false";
        }
        return !isTime || timeText == t;
    }
    default:
        return isTime && timeText == t;
    }
}

kelVariant ofFormat(int format) {
    kelVariant v;
    switch (format) {
    case F::Bool:
        v.setBool(true);
        break;
    case F::String:
        v.setString("old");
        break;
    case F::Time:
        v.setTime(kelTime(86400ull));
        break;
    case F::Float32:
        v.setFloat32(0.5f);
        break;
    case F::Float64:
        v.setFloat64(0.25);
        break;
    case F::UInt8:
        v.setUInt8(3);
        break;
    case F::SInt8:
        v.setSInt8(-3);
        break;
    case F::UInt16:
        v.setUInt16(3);
        break;
    case F::SInt16:
        v.setSInt16(-3);
        break;
    case F::UInt32:
        v.setUInt32(3);
        break;
    case F::SInt32:
        v.setSInt32(-3);
        break;
    case F::UInt64:
        v.setUInt64(3);
        break;
    default:
        v.setSInt64(-3);
        break;
    }
    return v;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return kelFuzz::useUtc();
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const t = std::string(reinterpret_cast<char const*>(data), size).c_str();
    char const* const c = t.c_str();
    kelTime parsed(0ull);
    bool const isTime = parsed.fromString(c);
    std::string const timeText = parsed.toString().c_str();

    kelVariant const v(c);
    std::string const word = upper(t);
    int const expected = (word == "TRUE" || word == "FALSE") ? F::Bool
                         : isTime                            ? F::Time
                                                             : F::String;
    KEL_FUZZ_CHECK(v.getFormat().getValue() == expected);
    if (expected == F::Bool) {
        KEL_FUZZ_CHECK(v.getBool() == (word == "TRUE"));
    } else if (expected == F::Time) {
        KEL_FUZZ_CHECK(v.getTime() == parsed);
    } else {
        KEL_FUZZ_CHECK(t == v.getString().c_str());
        KEL_FUZZ_CHECK(v.getUInt8() == UInt8(streamNumber<unsigned short>(c)));
        KEL_FUZZ_CHECK(v.getSInt8() == SInt8(streamNumber<short>(c)));
        KEL_FUZZ_CHECK(v.getBool() == (UInt8(streamNumber<unsigned short>(c)) != 0));
        KEL_FUZZ_CHECK(v.getUInt16() == streamNumber<UInt16>(c));
        KEL_FUZZ_CHECK(v.getSInt32() == streamNumber<SInt32>(c));
        KEL_FUZZ_CHECK(v.getUInt64() == streamNumber<UInt64>(c));
        KEL_FUZZ_CHECK(v.getSInt64() == streamNumber<SInt64>(c));
        float const f = v.getFloat32(), fm = streamNumber<float>(c);
        double const d = v.getFloat64(), dm = streamNumber<double>(c);
        KEL_FUZZ_CHECK(std::memcmp(&f, &fm, sizeof f) == 0 && std::memcmp(&d, &dm, sizeof d) == 0);
    }

    for (int format = F::Bool; format <= F::Time; ++format) {
        kelVariant const before = ofFormat(format);
        kelVariant target = before;
        bool const accepted = before.accept(c);
        KEL_FUZZ_CHECK(accepted == accepts(format, t, isTime, timeText));
        KEL_FUZZ_CHECK(target.fromString(c) == accepted);
        if (accepted) {
            KEL_FUZZ_CHECK(t == target.getString().c_str());
        } else {
            KEL_FUZZ_CHECK(target.getFormat().getValue() == format && target == before);
        }
    }
    return 0;
}
