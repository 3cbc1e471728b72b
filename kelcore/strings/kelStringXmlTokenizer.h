#ifndef KELCORE_STRINGS_KELSTRINGXMLTOKENIZER_H
#define KELCORE_STRINGS_KELSTRINGXMLTOKENIZER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// Finds one element in XML-like text by plain searching; the markup is not parsed.
class KELCORE_API kelStringXmlTokenizer {
public:
    kelStringXmlTokenizer() = default;
    kelStringXmlTokenizer(kelStringXmlTokenizer const&) = default;
    kelStringXmlTokenizer& operator=(kelStringXmlTokenizer const&) = default;
    virtual ~kelStringXmlTokenizer();

    // The text between the first "<name>" and the first "</name>" (contentOnly), or from the
    // start of the one through the end of the other; empty when either is missing. The marks
    // must match exactly: no attributes, no pairing of nested elements, no entity decoding.
    // A closing mark before the opening one gives the rest of the text from the start point.
    static kelString extractXmlNode(kelString const& text, char const* name, bool contentOnly);
};

} // namespace KELKIT

#endif
