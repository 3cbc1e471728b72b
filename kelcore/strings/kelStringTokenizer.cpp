#include <kelcore/strings/kelStringTokenizer.h>

#include <cstring>
#include <memory>
#include <string>

namespace KELKIT {

kelStringTokenizer::kelStringTokenizer(char const* text) : mText(text), mParsed(false) {
    defaultInit();
}

kelStringTokenizer::kelStringTokenizer(char const* text, char const* delimiter)
    : mText(text), mDelimiter(delimiter), mParsed(false) {}

kelStringTokenizer::kelStringTokenizer(kelStringTokenizer const& other)
    : mText(other.mText), mDelimiter(other.mDelimiter), mParsed(other.mParsed) {
    copyTokens(other);
}

kelStringTokenizer& kelStringTokenizer::operator=(kelStringTokenizer const& other) {
    if (&other != this) {
        deleteTokens();
        mText = other.mText;
        mDelimiter = other.mDelimiter;
        mParsed = other.mParsed;
        copyTokens(other);
    }
    return *this;
}

kelStringTokenizer::~kelStringTokenizer() {
    deleteTokens();
}

int kelStringTokenizer::countTokens() {
    parse();
    return static_cast<int>(mTokens.size());
}

bool kelStringTokenizer::hasMoreTokens() {
    parse();
    return !mTokens.empty();
}

kelString kelStringTokenizer::nextToken() {
    parse();
    if (mTokens.empty()) {
        return kelString();
    }
    UInt32 const last = mTokens.size() - 1;
    std::unique_ptr<kelString> token(mTokens.get(last));
    mTokens.erase(kelListStringPtr::INDEX(last));
    return *token;
}

kelListString kelStringTokenizer::split(char const* text, char const* delimiter) {
    kelStringTokenizer tokenizer(text, delimiter);
    kelListString tokens;
    while (tokenizer.hasMoreTokens()) {
        tokens.add(tokenizer.nextToken());
    }
    return tokens;
}

void kelStringTokenizer::defaultInit() {
    mDelimiter = "\\";
    mParsed = false;
}

void kelStringTokenizer::parse() {
    if (mParsed) {
        return;
    }
    deleteTokens();
    char const* const text = mText.c_str();
    UInt32 const size = mText.size();
    char const* const delimiter = mDelimiter.c_str();
    UInt32 const length = mDelimiter.size();
    std::string working;
    working.reserve(2048);
    for (UInt32 i = 0; i < size;) {
        if (size - i < length || std::memcmp(text + i, delimiter, length) != 0) {
            working += text[i];
            ++i;
            continue;
        }
        if (!working.empty()) {
            mTokens.add(new kelString(working.c_str()));
            working.clear();
        }
        i += (length == 0) ? 1 : length;
    }
    if (!working.empty()) {
        mTokens.add(new kelString(working.c_str()));
    }
    mTokens.reverse();
    mParsed = true;
}

void kelStringTokenizer::deleteTokens() {
    for (UInt32 i = 0; i < mTokens.size(); ++i) {
        delete mTokens.get(i);
    }
    mTokens.clear();
}

void kelStringTokenizer::copyTokens(kelStringTokenizer const& other) {
    for (UInt32 i = 0; i < other.mTokens.size(); ++i) {
        std::unique_ptr<kelString> copy(new kelString(*other.mTokens.get(i)));
        mTokens.add(copy.get());
        copy.release();
    }
}

} // namespace KELKIT
