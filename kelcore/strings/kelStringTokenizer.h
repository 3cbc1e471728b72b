#ifndef KELCORE_STRINGS_KELSTRINGTOKENIZER_H
#define KELCORE_STRINGS_KELSTRINGTOKENIZER_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// Splits a text on a delimiter and hands the tokens out one at a time. The text is split at the
// first call that needs the tokens. Empty tokens never occur: leading, trailing and repeated
// delimiters vanish, and an empty delimiter yields no token at all. A delimiter of several
// characters is skipped as a whole where it matches.
//
// Reading changes the tokenizer: each nextToken() uses one token up, and there is no second
// pass. A copy has tokens of its own.
class KELCORE_API kelStringTokenizer {
public:
    // The delimiter is a single backslash.
    kelStringTokenizer(char const* text);
    kelStringTokenizer(char const* text, char const* delimiter);
    kelStringTokenizer(kelStringTokenizer const& other);
    kelStringTokenizer& operator=(kelStringTokenizer const& other);
    virtual ~kelStringTokenizer();

    // The tokens not yet handed out.
    int countTokens();
    bool hasMoreTokens();
    // The next token; the empty text when none is left.
    kelString nextToken();

    static kelListString split(char const* text, char const* delimiter);

private:
    void defaultInit();
    void parse();
    void deleteTokens();
    void copyTokens(kelStringTokenizer const& other);

    kelString mText;
    // Owned. Kept last token first, so that handing one out takes it off the end.
    kelListStringPtr mTokens;
    kelString mDelimiter;
    bool mParsed;
};

} // namespace KELKIT

#endif
