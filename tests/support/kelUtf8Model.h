#ifndef KELCORE_TESTS_KELUTF8MODEL_H
#define KELCORE_TESTS_KELUTF8MODEL_H

// A model of the converter's Latin-1 reading of UTF-8, shared by the tests and the fuzz target:
// sequences are measured by their lead byte alone, pairs led by C2 or C3 are shifted, and
// everything else is replaced.

#include <algorithm>
#include <cstddef>
#include <string>

namespace kelTest {

// A UTF-8 sequence's length by the count of its lead byte's leading one bits, at most 6.
inline int utf8LeadLength(unsigned char lead) {
    int ones = 0;
    while (ones < 8 && ((lead << ones) & 0x80) != 0) {
        ++ones;
    }
    return ones < 2 ? 1 : std::min(ones, 6);
}

// replacement 0 or below: sequences that are not a C2/C3 pair give nothing. A pair cut off by
// the end takes 0 as its second byte.
inline std::string utf8ToLatin1(std::string const& text, int replacement) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        auto const lead = static_cast<unsigned char>(text[i]);
        std::size_t const length = static_cast<std::size_t>(utf8LeadLength(lead));
        auto const next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        int c = length == 1 ? lead : replacement;
        if (length == 2) {
            c = lead == 0xC3 ? (next + 64) & 0xFF : lead == 0xC2 ? next : lead;
        }
        if (c > 0) {
            out += static_cast<char>(c);
        }
        i += length;
    }
    return out;
}

} // namespace kelTest

#endif
