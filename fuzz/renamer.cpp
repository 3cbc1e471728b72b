// The renamer's engine over a folder in memory, and its preview through kelFileRenamer, against a
// model of the documented rules: pattern templates ('?' copies under the cursor, '|' skips, a
// run of '#' takes the next number padded to all '#' read so far, anything else is copied);
// replace texts, plain (every occurrence, left to right) or with wildcards, whose validity, the
// anchored match (each '*' longest first, keeping back what the pattern behind it reserves) and
// the expansion are modelled on their own; the collision flag over the names the run frees and
// takes; and a real run, which stops at the first rename that fails or would leave the folder,
// after notifying each file before it. matchWildcards agrees with the model's captures, which
// put back together give the matched text.

#include "kelFuzz.h"
#include "support/kelMemoryRenameFolder.h"

#include <kelcore/files/kelFileRenamer.h>
#include <kelcore/internal/kelRenameEngine.h>

#include <map>
#include <set>

using namespace KELKIT;
using internal::kelRenameRule;

namespace {

typedef std::vector<std::string> Names;

bool isWildcard(char c) {
    return c == '*' || c == '?';
}

// ---- The model ----------------------------------------------------------------------------

std::string patternName(std::string const& pattern, std::string const& name, UInt32& counter) {
    std::string out;
    std::size_t cursor = 0;
    std::size_t hashes = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const c = pattern[i];
        if (c == '?') {
            if (cursor < name.size()) {
                out += name[cursor++];
            }
        } else if (c == '|') {
            ++cursor;
        } else if (c != '#') {
            out += c;
        } else if (++hashes, i + 1 == pattern.size() || pattern[i + 1] != '#') {
            std::string number = std::to_string(++counter);
            out += std::string(number.size() < hashes ? hashes - number.size() : 0, '0') + number;
        }
    }
    return out;
}

// The kinds of wildcard in order of first appearance, with their counts.
std::vector<std::pair<char, std::size_t>> kindsOf(std::string const& text) {
    std::vector<std::pair<char, std::size_t>> kinds;
    for (char c : text) {
        if (isWildcard(c)) {
            auto it =
                std::find_if(kinds.begin(), kinds.end(),
                             [c](std::pair<char, std::size_t> const& k) { return k.first == c; });
            if (it == kinds.end()) {
                kinds.push_back({c, 1});
            } else {
                ++it->second;
            }
        }
    }
    return kinds;
}

bool validTexts(std::string const& from, std::string const& to) {
    auto const fromKinds = kindsOf(from);
    auto const toKinds = kindsOf(to);
    auto const count = [](std::string const& t) {
        return std::count_if(t.begin(), t.end(), isWildcard);
    };
    if (count(to) > count(from) || toKinds.size() > fromKinds.size()) {
        return false;
    }
    return std::equal(toKinds.begin(), toKinds.end(), fromKinds.begin());
}

// The anchored match, recursively: a '*' with pattern behind it tries from the longest text that
// leaves its reserve (up to and including the next wildcard, else all the pattern behind it)
// down to none. Pairs (p, t) known to fail are not tried again, which changes no result.
class Matcher {
public:
    Matcher(std::string const& pattern, std::string const& text) : mP(pattern), mT(text) {}

    // Captures as the wildcard followed by its text.
    bool match(Names& captures) { return from(0, 0, captures); }

private:
    bool from(std::size_t p, std::size_t t, Names& captures) {
        if (mFailed.count({p, t}) != 0) {
            return false;
        }
        std::size_t const held = captures.size();
        bool const matched = step(p, t, captures);
        if (!matched) {
            captures.resize(held);
            mFailed.insert({p, t});
        }
        return matched;
    }

    bool step(std::size_t p, std::size_t t, Names& captures) {
        for (;;) {
            if (p >= mP.size()) {
                return t == mT.size();
            }
            char const c = mP[p];
            if (c == '*' && p + 1 == mP.size()) {
                captures.push_back("*" + mT.substr(t));
                return true;
            }
            if (c == '*') {
                std::size_t const next = mP.find_first_of("*?", p + 1);
                std::size_t const reserve =
                    next != std::string::npos ? next - p : mP.size() - 1 - p;
                for (std::int64_t k = std::int64_t(mT.size() - t) - std::int64_t(reserve); k >= 0;
                     --k) {
                    captures.push_back("*" + mT.substr(t, std::size_t(k)));
                    if (from(p + 1, t + std::size_t(k), captures)) {
                        return true;
                    }
                    captures.pop_back();
                }
                return false;
            }
            if (t >= mT.size() || (c != '?' && c != mT[t])) {
                return false;
            }
            if (c == '?') {
                captures.push_back(std::string("?") + mT[t]);
            }
            ++p;
            ++t;
        }
    }

    std::string const& mP;
    std::string const& mT;
    std::set<std::pair<std::size_t, std::size_t>> mFailed;
};

// The template with the n-th wildcard of each kind replaced by the n-th capture of that kind.
std::string expanded(std::string const& templateText, Names const& captures) {
    std::string out;
    std::map<char, std::size_t> used;
    for (char c : templateText) {
        if (!isWildcard(c)) {
            out += c;
            continue;
        }
        std::size_t n = used[c]++;
        for (std::string const& capture : captures) {
            if (capture[0] == c && n-- == 0) {
                out += capture.substr(1);
                break;
            }
        }
    }
    return out;
}

std::string replaceName(std::string const& from, std::string const& to, std::string const& name) {
    if (std::none_of(from.begin(), from.end(), isWildcard) &&
        std::none_of(to.begin(), to.end(), isWildcard)) {
        return kelFuzz::replacedAll(name, from, to);
    }
    Names captures;
    if (!Matcher(from, name).match(captures)) {
        return name;
    }
    // The old name with each occurrence of the expanded from (the name itself) replaced, so an
    // empty name stays empty.
    return name.empty() ? name : expanded(to, captures);
}

bool staysInFolder(std::string const& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\") == std::string::npos;
}

struct Outcome {
    bool result = false;
    Names newNames;
    bool collision = false;
    std::set<std::string> folder;
    std::string notes;
    UInt32 counter = 0;
};

std::string note(std::string const& oldName, std::string const& newName, std::size_t index,
                 std::size_t count) {
    return oldName + ">" + newName + "@" +
           std::to_string(static_cast<double>(index + 1) / static_cast<double>(count)) + "|";
}

Outcome modelRun(kelRenameRule const& rule, Names const& files, std::set<std::string> folder,
                 bool doRename) {
    Outcome out;
    out.folder = folder;
    std::string const from = rule.from.c_str(), to = rule.to.c_str();
    if (files.empty() || (!rule.patternMode && !validTexts(from, to))) {
        return out;
    }
    std::set<std::string> taken = folder;
    for (std::size_t i = 0; i < files.size(); ++i) {
        std::string const& oldName = files[i];
        std::string const newName = rule.patternMode
                                        ? patternName(rule.pattern.c_str(), oldName, out.counter)
                                        : replaceName(from, to, oldName);
        out.newNames.push_back(newName);
        bool const changed = newName != oldName;
        if (changed) {
            taken.erase(oldName);
            out.collision = out.collision || taken.count(newName) != 0;
            taken.insert(newName);
        }
        if (changed && doRename) {
            if (!staysInFolder(oldName) || !staysInFolder(newName) ||
                out.folder.count(oldName) == 0 || out.folder.count(newName) != 0) {
                return out;
            }
            out.folder.erase(oldName);
            out.folder.insert(newName);
        }
        out.notes += note(oldName, newName, i, files.size());
    }
    out.result = true;
    return out;
}

// ---- The library --------------------------------------------------------------------------

void checkRuns(kelRenameRule const& rule, Names const& files,
               std::set<std::string> const& present) {
    Outcome const preview = modelRun(rule, files, present, false);
    kelTest::MemoryRenameFolder folder;
    folder.names = present;
    folder.separator = '|';
    folder.answer = true;
    kelListString newNames = kelTest::listOf({"left over"});
    bool collision = false;
    UInt32 counter = 99;
    bool const previewed = internal::runRenameEngine(kelTest::listOf(files), rule, counter, folder,
                                                     &newNames, &collision, nullptr, false);
    KEL_FUZZ_CHECK(previewed == preview.result);
    // An empty list fails before the names are touched.
    KEL_FUZZ_CHECK(kelFuzz::textsOf(newNames) ==
                   (files.empty() ? Names{"left over"} : preview.newNames));
    KEL_FUZZ_CHECK(collision == preview.collision);
    KEL_FUZZ_CHECK(counter == preview.counter);
    KEL_FUZZ_CHECK(folder.names == present);

    Outcome const run = modelRun(rule, files, present, true);
    KEL_FUZZ_CHECK(internal::runRenameEngine(kelTest::listOf(files), rule, counter, folder, nullptr,
                                             nullptr, &folder, true) == run.result);
    KEL_FUZZ_CHECK(folder.names == run.folder);
    KEL_FUZZ_CHECK_TEXT(run.notes, folder.seen);

    // The public preview, in a folder that does not exist (it lists nothing), of the files
    // without repeats.
    static std::string const nowhere = kelFuzz::libraryPath(kelFuzz::scratchPath("no-folder"));
    Names unique;
    for (std::string const& name : files) {
        if (std::find(unique.begin(), unique.end(), name) == unique.end()) {
            unique.push_back(name);
        }
    }
    kelFileRenamer renamer;
    renamer.setFiles(nowhere.c_str(), kelTest::listOf(files));
    if (rule.patternMode) {
        renamer.setPatternMode(rule.pattern.c_str());
    } else {
        renamer.setReplaceMode(rule.from.c_str(), rule.to.c_str());
    }
    Outcome const elsewhere = modelRun(rule, unique, {}, false);
    kelListString publicNames;
    collision = false;
    KEL_FUZZ_CHECK(renamer.preview(publicNames, collision) == elsewhere.result);
    KEL_FUZZ_CHECK(kelFuzz::textsOf(publicNames) == elsewhere.newNames);
    KEL_FUZZ_CHECK(collision == elsewhere.collision);
}

void checkMatcher(std::string const& pattern, std::string const& text) {
    Names expected;
    bool const matches = Matcher(pattern, text).match(expected);
    kelListString captures = kelTest::listOf({"left over"});
    KEL_FUZZ_CHECK(internal::matchWildcards(pattern.c_str(), text.c_str(), captures) == matches);
    KEL_FUZZ_CHECK(kelFuzz::textsOf(captures) == (matches ? expected : Names()));
    if (matches) {
        // The pattern with each wildcard replaced by its capture is the text.
        std::string rebuilt;
        std::size_t next = 0;
        for (char c : pattern) {
            rebuilt += isWildcard(c) ? expected[next++].substr(1) : std::string(1, c);
        }
        KEL_FUZZ_CHECK_TEXT(text, rebuilt);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    kelRenameRule rule;
    rule.patternMode = input.ConsumeBool();
    std::string const first = input.ConsumeRandomLengthString(48).c_str();
    std::string const second = input.ConsumeRandomLengthString(48).c_str();
    (rule.patternMode ? rule.pattern : rule.from) = first.c_str();
    rule.to = second.c_str();
    Names files;
    std::set<std::string> present = {".", ".."};
    while (files.size() < 12 && input.remaining_bytes() > 0) {
        std::string const name = input.ConsumeRandomLengthString(32).c_str();
        // Most names are in the folder, some are not; a few names are only in the folder.
        int const place = input.ConsumeIntegralInRange(0, 7);
        if (place != 0) {
            present.insert(name);
        }
        if (place != 1) {
            files.push_back(name);
        }
    }
    checkRuns(rule, files, present);
    checkMatcher(first, second);
    for (std::string const& name : files) {
        checkMatcher(first, name);
    }
    return 0;
}
