#include <kelcore/strings/kelStringXmlTokenizer.h>

#include <kelcore/strings/kelStringConverter.h>

namespace KELKIT {

kelStringXmlTokenizer::~kelStringXmlTokenizer() = default;

kelString kelStringXmlTokenizer::extractXmlNode(kelString const& text, char const* name,
                                                bool contentOnly) {
    char const* const element = (name == nullptr) ? "" : name;
    kelString const opening = kelStringConverter::format("<%s>", element);
    kelString const closing = kelStringConverter::format("</%s>", element);
    UInt32 openAt = 0, closeAt = 0;
    if (!text.find(opening, 0, openAt) || !text.find(closing, 0, closeAt)) {
        return kelString();
    }
    // 32-bit arithmetic on purpose: a closing mark before the opening one wraps the count, and
    // subString then takes the rest of the text.
    if (contentOnly) {
        UInt32 const start = openAt + opening.size();
        return text.subString(start, static_cast<UInt32>(closeAt - start));
    }
    return text.subString(openAt, static_cast<UInt32>(closeAt + closing.size() - openAt));
}

} // namespace KELKIT
