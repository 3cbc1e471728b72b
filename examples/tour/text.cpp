// Text: kelString, the encodings of kelStringConverter and its number conversions.

#include "tour.h"

#include <cstdio>

namespace tour {

namespace {

// A text with its bytes below 32 and from 128 up as hexadecimal, so that any terminal shows it.
std::string visible(kelString const& text) {
    std::string out;
    for (UInt32 i = 0; i < text.size(); ++i) {
        unsigned char const c = static_cast<unsigned char>(text[i]);
        char hex[8];
        std::snprintf(hex, sizeof hex, "<%02X>", c);
        out += (c >= 128 || c < 32) ? std::string(hex) : std::string(1, static_cast<char>(c));
    }
    return out;
}

} // namespace

void text() {
    kelString greeting("  hello, kelcore  ");
    std::printf("original:        [%s]\n", greeting.c_str());
    greeting.trim();
    std::printf("trimmed:         [%s]\n", greeting.c_str());
    greeting.makeUpper();
    std::printf("upper case:      [%s]\n", greeting.c_str());
    UInt32 pos = 0;
    require(greeting.find("KEL", pos), "find did not find KEL");
    std::printf("found KEL at:    %u\n", static_cast<unsigned>(pos));
    UInt32 count = greeting.replace("L", "l");
    std::printf("replaced %u L:    [%s]\n", static_cast<unsigned>(count), greeting.c_str());
    std::printf("last 7:          [%s]\n", greeting.subStringRight(7).c_str());
    std::printf("hash of abc:     %u (same as cba: %u)\n",
                static_cast<unsigned>(kelString("abc").getHashCode()),
                static_cast<unsigned>(kelString("cba").getHashCode()));
}

void encodings() {
    // kelString knows no encoding: these are the Latin-1 bytes of "café crème".
    kelString const latin1("caf\xE9 cr\xE8me");
    kelString const utf8 = kelStringConverter::toUTF8(latin1);
    std::printf("Latin-1 %-28s %u bytes\n", visible(latin1).c_str(),
                static_cast<unsigned>(latin1.size()));
    std::printf("UTF-8   %-28s %u bytes\n", visible(utf8).c_str(),
                static_cast<unsigned>(utf8.size()));
    kelString const back = kelStringConverter::fromUTF8(utf8);
    std::printf("back to Latin-1: %s, equal to the original: %s\n", visible(back).c_str(),
                yesNo(back == latin1));
    // The euro sign needs three UTF-8 bytes and has no Latin-1 byte: it becomes the blank.
    kelString const euros("5 \xE2\x82\xAC");
    std::printf("UTF-8 %s (5 euros) to Latin-1: [%s]\n", visible(euros).c_str(),
                visible(kelStringConverter::fromUTF8(euros)).c_str());

    kelMemoryBuffer const wide = kelStringConverter::toUnicode("Hi!");
    require(wide.getSize() > 0, "toUnicode converted nothing");
    std::printf("\"Hi!\" as UTF-16, terminator included: ");
    hexDump(wide.getBuffer(), wide.getSize());
    std::printf("and back: \"%s\"\n", kelStringConverter::fromUnicodeString(wide).c_str());

    char const* const raw = "Fish & chips <cheap> \"today\"";
    kelString const xml = kelStringConverter::toXML(raw);
    std::printf("toXML:   %s\n", xml.c_str());
    std::printf("fromXML: %s\n", kelStringConverter::fromXML(xml).c_str());
    kelString const node("  caf&#xE9;\n  au   lait ");
    std::printf("fromXML(\"%s\"): %s\n", visible(node).c_str(),
                visible(kelStringConverter::fromXML(node)).c_str());
    kelString const order("<order><item>tea</item><count>2</count></order>");
    std::printf("the <count> of %s: %s\n", order.c_str(),
                kelStringXmlTokenizer::extractXmlNode(order, "count", true).c_str());
}

void conversions() {
    std::printf("toString(3.14159265):  %s (six significant digits)\n",
                kelStringConverter::toString(3.14159265).c_str());
    std::printf("toUInt32(\"42abc\"):     %u (the leading number counts)\n",
                static_cast<unsigned>(kelStringConverter::toUInt32("42abc")));
    std::printf("toHex(UInt16 0xBEEF):  %s\n",
                kelStringConverter::toHex(static_cast<UInt16>(0xBEEF)).c_str());
}

} // namespace tour
