// kelStringTokenizer and kelStringXmlTokenizer against a plain model: tokens are the non-empty
// runs between whole matches of the delimiter (an empty delimiter gives none), handed out once
// each, in order, with copies that go on by themselves; an element is found by the first
// opening and the first closing mark, with the closing mark's position taken in 32 bits.

#include "kelFuzz.h"

#include <kelcore/strings/kelStringTokenizer.h>
#include <kelcore/strings/kelStringXmlTokenizer.h>

using namespace KELKIT;

namespace {

std::vector<std::string> modelSplit(std::string const& text, std::string const& delimiter) {
    std::vector<std::string> tokens;
    if (delimiter.empty()) {
        return tokens;
    }
    std::string current;
    for (std::size_t i = 0; i < text.size();) {
        if (text.compare(i, delimiter.size(), delimiter) == 0) {
            if (!current.empty()) {
                tokens.push_back(current);
            }
            current.clear();
            i += delimiter.size();
        } else {
            current += text[i++];
        }
    }
    if (!current.empty()) {
        tokens.push_back(current);
    }
    return tokens;
}

void checkTokens(std::string const& text, std::string const& delimiter, bool defaultDelimiter) {
    std::vector<std::string> const expected = modelSplit(text, defaultDelimiter ? "\\" : delimiter);
    kelStringTokenizer tokenizer = defaultDelimiter
                                       ? kelStringTokenizer(text.c_str())
                                       : kelStringTokenizer(text.c_str(), delimiter.c_str());
    std::size_t const half = expected.size() / 2;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (i == half) {
            // A copy hands out the same rest, and taking from it leaves the original alone.
            kelStringTokenizer copy(tokenizer);
            while (copy.hasMoreTokens()) {
                copy.nextToken();
            }
        }
        KEL_FUZZ_CHECK(tokenizer.countTokens() == static_cast<int>(expected.size() - i));
        KEL_FUZZ_CHECK(tokenizer.hasMoreTokens());
        KEL_FUZZ_CHECK(expected[i] == tokenizer.nextToken().c_str());
    }
    KEL_FUZZ_CHECK(!tokenizer.hasMoreTokens());
    KEL_FUZZ_CHECK(tokenizer.nextToken().empty());
    KEL_FUZZ_CHECK(tokenizer.countTokens() == 0);

    if (!defaultDelimiter) {
        kelListString const list = kelStringTokenizer::split(text.c_str(), delimiter.c_str());
        KEL_FUZZ_CHECK(list.size() == expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            KEL_FUZZ_CHECK(expected[i] == list.get(UInt32(i)).c_str());
        }
    }
}

// What kelString::subString gives: empty from a start at or beyond the end.
std::string sub(std::string const& text, std::uint32_t start, std::uint32_t count) {
    return start >= text.size() ? std::string() : text.substr(start, count);
}

void checkElement(std::string const& text, std::string const& name, bool contentOnly) {
    std::string const opening = "<" + name + ">", closing = "</" + name + ">";
    std::size_t const open = text.find(opening), close = text.find(closing);
    std::string expected;
    if (open != std::string::npos && close != std::string::npos) {
        std::uint32_t const start = std::uint32_t(open + (contentOnly ? opening.size() : 0));
        std::uint32_t const end = std::uint32_t(close + (contentOnly ? 0 : closing.size()));
        expected = sub(text, start, end - start);
    }
    kelString const found =
        kelStringXmlTokenizer::extractXmlNode(kelString(text.c_str()), name.c_str(), contentOnly);
    KEL_FUZZ_CHECK(expected == found.c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    bool const contentOnly = input.ConsumeBool();
    std::string const delimiter = input.ConsumeRandomLengthString(8).c_str();
    std::string const text = input.ConsumeRemainingBytesAsString().c_str();
    checkTokens(text, delimiter, false);
    checkTokens(text, delimiter, true);
    checkElement(text, delimiter, contentOnly);
    return 0;
}
