#include <kelcore/files/kelFileRenamer.h>

#include <kelcore/files/kelFiles.h>
#include <kelcore/frame/kelAssertManager.h>
#include <kelcore/internal/kelRenameEngine.h>

#include <cstdint>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace KELKIT {

KEL_ENUM_DEFINE(kelFileRenamer::Mode, Mode, KEL_ROWS_kelFileRenamer_Mode)

namespace {

// ---- Wildcards of replace mode -------------------------------------------------------------

bool isWildcardCharacter(char c) {
    return c == '*' || c == '?';
}

bool hasWildcardCharacters(char const* text) {
    for (; *text != '\0'; ++text) {
        if (isWildcardCharacter(*text)) {
            return true;
        }
    }
    return false;
}

std::vector<UInt32> getWildcardPositions(std::string const& text) {
    std::vector<UInt32> positions;
    for (UInt32 i = 0; i < text.size(); ++i) {
        if (isWildcardCharacter(text[i])) {
            positions.push_back(i);
        }
    }
    return positions;
}

struct WildcardGroup {
    char wildcard;
    std::vector<UInt32> positions;
};

// One group per kind of wildcard, in the order of first appearance.
std::vector<WildcardGroup> getWildcardGroups(std::string const& text) {
    std::vector<WildcardGroup> groups;
    for (UInt32 position : getWildcardPositions(text)) {
        char const c = text[position];
        std::size_t g = 0;
        while (g < groups.size() && groups[g].wildcard != c) {
            ++g;
        }
        if (g == groups.size()) {
            groups.push_back({c, {}});
        }
        groups[g].positions.push_back(position);
    }
    return groups;
}

// `to` may use no more wildcards than `from`, and its kinds must be those of `from`, in the
// same order and each as often; it may leave out trailing kinds.
bool isReplaceParamsValid(std::string const& from, std::string const& to) {
    if (getWildcardPositions(to).size() > getWildcardPositions(from).size()) {
        return false;
    }
    std::vector<WildcardGroup> const fromGroups = getWildcardGroups(from);
    std::vector<WildcardGroup> const toGroups = getWildcardGroups(to);
    if (toGroups.size() > fromGroups.size()) {
        return false;
    }
    for (std::size_t g = 0; g < toGroups.size(); ++g) {
        if (toGroups[g].wildcard != fromGroups[g].wildcard ||
            toGroups[g].positions.size() != fromGroups[g].positions.size()) {
            return false;
        }
    }
    return true;
}

// What one wildcard matched: a span of the text.
struct WildcardCapture {
    char wildcard;
    UInt32 start;
    UInt32 length;
};

// The anchored match. A '*' followed by more pattern tries the longest text first, keeping
// back the characters up to and including the next wildcard (or all the pattern behind it when
// none follows), then shorter ones down to none; the first complete match in that order wins.
//
// Trying every split takes exponential time on patterns with many stars. Whether the rest of the
// pattern matches from a given (star, text position) does not depend on how we got there, so
// each pair that failed once is remembered and never tried again: every pair is explored at most
// once, and since only pairs known to fail are skipped, the first match found is the same one.
// The search keeps its own stack, so long patterns cannot exhaust the thread's stack.
class WildcardMatcher {
public:
    WildcardMatcher(std::string const& pattern, std::string const& text)
        : mPattern(pattern), mText(text) {
        // reserve[p] for each '*' at p that has pattern behind it; starIndex numbers the stars.
        mReserve.assign(pattern.size(), 0);
        mStarIndex.assign(pattern.size(), 0);
        mLiteralsBehind.assign(pattern.size(), false);
        std::size_t nextWildcard = pattern.size();
        for (std::size_t p = pattern.size(); p-- > 0;) {
            if (pattern[p] == '*') {
                mLiteralsBehind[p] = nextWildcard == pattern.size();
                mReserve[p] = static_cast<UInt32>(
                    nextWildcard < pattern.size() ? nextWildcard - p : pattern.size() - 1 - p);
            }
            if (isWildcardCharacter(pattern[p])) {
                nextWildcard = p;
            }
        }
        for (std::size_t p = 0; p < pattern.size(); ++p) {
            if (pattern[p] == '*') {
                mStarIndex[p] = mStars++;
            }
        }
        std::uint64_t const cells = std::uint64_t(mStars) * (text.size() + 1);
        mDense = cells <= (std::uint64_t(1) << 24); // up to 2 MB of bits, else a hash set
        if (mDense) {
            mFailedBits.assign(static_cast<std::size_t>(cells), false);
        }
    }

    bool match(std::vector<WildcardCapture>& captures) {
        captures.clear();
        std::size_t p = 0;
        std::size_t t = 0;
        Step step = runToStar(p, t, captures);
        std::vector<Trial> trials;
        for (;;) {
            if (step == Step::Matched) {
                return true;
            }
            if (step == Step::AtStar) {
                if (!hasFailed(p, t) && mText.size() - t >= mReserve[p]) {
                    std::int64_t const longest = std::int64_t(mText.size() - t - mReserve[p]);
                    // With only literals behind it, a star must leave exactly them: one trial.
                    std::int64_t const shortest = mLiteralsBehind[p] ? longest : 0;
                    trials.push_back({p, t, longest, shortest, captures.size()});
                } else {
                    remember(p, t);
                }
            }
            // Next trial of the innermost star that has one left; stars without are done.
            while (!trials.empty() && trials.back().length < trials.back().shortest) {
                remember(trials.back().p, trials.back().t);
                trials.pop_back();
            }
            if (trials.empty()) {
                captures.clear();
                return false;
            }
            Trial& trial = trials.back();
            captures.resize(trial.captures);
            UInt32 const length = static_cast<UInt32>(trial.length--);
            captures.push_back({'*', static_cast<UInt32>(trial.t), length});
            p = trial.p + 1;
            t = trial.t + length;
            step = runToStar(p, t, captures);
        }
    }

private:
    enum class Step { Matched, Failed, AtStar };

    struct Trial {
        std::size_t p;
        std::size_t t;
        std::int64_t length; // the next length to try; below shortest when all were tried
        std::int64_t shortest;
        std::size_t captures;
    };

    // Walks the part of the pattern that needs no choice: literals, '?', and a final '*'.
    Step runToStar(std::size_t& p, std::size_t& t, std::vector<WildcardCapture>& captures) const {
        for (;;) {
            if (p >= mPattern.size()) {
                return t >= mText.size() ? Step::Matched : Step::Failed;
            }
            char const c = mPattern[p];
            if (c == '*') {
                if (p + 1 < mPattern.size()) {
                    return Step::AtStar;
                }
                captures.push_back(
                    {'*', static_cast<UInt32>(t), static_cast<UInt32>(mText.size() - t)});
                t = mText.size();
            } else if (t >= mText.size()) {
                return Step::Failed;
            } else if (c == '?') {
                captures.push_back({'?', static_cast<UInt32>(t), 1});
            } else if (c != mText[t]) {
                return Step::Failed;
            }
            if (c != '*') {
                ++t;
            }
            ++p;
        }
    }

    std::uint64_t key(std::size_t p, std::size_t t) const {
        return std::uint64_t(mStarIndex[p]) * (mText.size() + 1) + t;
    }
    bool hasFailed(std::size_t p, std::size_t t) const {
        return mDense ? bool(mFailedBits[static_cast<std::size_t>(key(p, t))])
                      : mFailedSparse.count(key(p, t)) != 0;
    }
    void remember(std::size_t p, std::size_t t) {
        if (mDense) {
            mFailedBits[static_cast<std::size_t>(key(p, t))] = true;
        } else {
            mFailedSparse.insert(key(p, t));
        }
    }

    std::string const& mPattern;
    std::string const& mText;
    std::vector<UInt32> mReserve;
    std::vector<UInt32> mStarIndex;
    std::vector<bool> mLiteralsBehind;
    UInt32 mStars = 0;
    bool mDense = true;
    std::vector<bool> mFailedBits;
    std::unordered_set<std::uint64_t> mFailedSparse;
};

// The template with its wildcards replaced, the n-th of each kind by the n-th capture of that
// kind. Captured text is inserted as it is and never searched again: on POSIX a file name may
// itself hold '*' or '?', and those must not be taken for wildcards of the template. False when
// a wildcard of the template has no capture left.
bool expand(std::string const& templateText, std::string const& name,
            std::vector<WildcardCapture> const& captures, std::string& expanded) {
    expanded.clear();
    std::vector<std::size_t> ofKind[2]; // the captures of '*' and of '?', in order
    for (std::size_t i = 0; i < captures.size(); ++i) {
        ofKind[captures[i].wildcard == '*' ? 0 : 1].push_back(i);
    }
    std::size_t used[2] = {0, 0};
    bool complete = true;
    for (char c : templateText) {
        int const kind = c == '*' ? 0 : 1;
        if (!isWildcardCharacter(c)) {
            expanded += c;
        } else if (used[kind] == ofKind[kind].size()) {
            expanded += c;
            complete = false;
        } else {
            WildcardCapture const& capture = captures[ofKind[kind][used[kind]++]];
            expanded.append(name, capture.start, capture.length);
        }
    }
    return complete;
}

void reportExpansion(bool complete, int line, char const* expression) {
    if (!complete) {
        // Reported under the unit's documented name, wherever the library was built.
        kelAssertManager::getInstance().processError(".\\kelFileRenamer", line, expression);
    }
}

// ---- The two modes ---------------------------------------------------------------------------

std::string applyPattern(std::string const& pattern, std::string const& name, UInt32& counter) {
    std::string result;
    std::size_t cursor = 0;
    std::size_t hashes = 0; // not reset between groups: a later group is padded to all of them
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const c = pattern[i];
        if (c == '?') {
            if (cursor < name.size()) {
                result += name[cursor++];
            }
        } else if (c == '|') {
            ++cursor;
        } else if (c == '#') {
            ++hashes;
            if (i + 1 == pattern.size() || pattern[i + 1] != '#') {
                std::string number = std::to_string(++counter);
                if (number.size() < hashes) {
                    number.insert(0, hashes - number.size(), '0');
                }
                result += number;
            }
        } else {
            result += c;
        }
    }
    return result;
}

// The new name of replace mode, whose parameters were found valid.
kelString replaceName(std::string const& from, std::string const& to, kelString const& name) {
    kelString result = name;
    if (!hasWildcardCharacters(from.c_str()) && !hasWildcardCharacters(to.c_str())) {
        result.replace(from.c_str(), to.c_str());
        return result;
    }
    std::string const text = name.c_str();
    std::vector<WildcardCapture> captures;
    if (!WildcardMatcher(from, text).match(captures)) {
        return result; // no match is no failure: the name stays
    }
    std::string expandedFrom;
    std::string expandedTo;
    reportExpansion(expand(from, text, captures, expandedFrom), __LINE__,
                    "hasWildcardCharacters(expandedFrom.c_str()) == false");
    reportExpansion(expand(to, text, captures, expandedTo), __LINE__,
                    "hasWildcardCharacters(expandedTo.c_str()) == false");
    // The match covers the whole name, so this gives expandedTo.
    result.replace(expandedFrom.c_str(), expandedTo.c_str());
    return result;
}

// The renamer's folder on disk.
class FilesFolder : public internal::kelRenameFolder {
public:
    explicit FilesFolder(kelString const& folder) : mFolder(folder) {}
    void listNames(kelListString& names) override {
        kelFiles::getFiles(mFolder.c_str(), names, false, false, nullptr);
    }
    bool renameEntry(char const* oldName, char const* newName) override {
        return kelFiles::rename(kelFiles::concat(mFolder.c_str(), oldName).c_str(),
                                kelFiles::concat(mFolder.c_str(), newName).c_str());
    }

private:
    kelString const& mFolder;
};

// A name the renamer may hand to the file system: one entry of its own folder.
bool staysInFolder(kelString const& name) {
    std::string const text = name.c_str();
    return !text.empty() && text != "." && text != ".." &&
           text.find_first_of("/\\") == std::string::npos;
}

} // namespace

// ---- The engine ------------------------------------------------------------------------------

namespace internal {

kelRenameFolder::~kelRenameFolder() = default;

bool runRenameEngine(kelListString const& files, kelRenameRule const& rule, UInt32& counter,
                     kelRenameFolder& folder, kelListString* newNames, bool* hasCollisions,
                     kelFileRenamer::IProgressNotifier* notifier, bool doRename) {
    counter = 0;
    if (files.empty()) {
        return false;
    }
    if (newNames != nullptr) {
        newNames->clear();
    }
    std::string const pattern = rule.pattern.c_str();
    std::string const from = rule.from.c_str();
    std::string const to = rule.to.c_str();
    // Invalid texts fail at the first file, before anything is listed or renamed.
    if (!rule.patternMode && !isReplaceParamsValid(from, to)) {
        return false;
    }
    std::set<kelString> taken;
    if (hasCollisions != nullptr) {
        kelListString present;
        folder.listNames(present);
        for (UInt32 i = 0; i < present.size(); ++i) {
            taken.insert(present[i]);
        }
    }
    UInt32 const count = files.size();
    for (UInt32 i = 0; i < count; ++i) {
        kelString const& oldName = files[i];
        kelString const newName =
            rule.patternMode ? kelString(applyPattern(pattern, oldName.c_str(), counter).c_str())
                             : replaceName(from, to, oldName);
        if (newNames != nullptr) {
            newNames->add(newName);
        }
        bool const changed = newName != oldName;
        if (changed && hasCollisions != nullptr) {
            taken.erase(oldName);
            if (!*hasCollisions) {
                *hasCollisions = taken.count(newName) != 0;
            }
            taken.insert(newName);
        }
        if (changed && doRename &&
            (!staysInFolder(oldName) || !staysInFolder(newName) ||
             !folder.renameEntry(oldName.c_str(), newName.c_str()))) {
            return false;
        }
        if (notifier != nullptr) {
            notifier->notifyProgress(oldName.c_str(), newName.c_str(),
                                     static_cast<double>(i + 1) / static_cast<double>(count));
        }
    }
    return true;
}

bool matchWildcards(char const* pattern, char const* text, kelListString& captures) {
    captures.clear();
    std::string const patternText = pattern != nullptr ? pattern : "";
    std::string const name = text != nullptr ? text : "";
    std::vector<WildcardCapture> found;
    if (!WildcardMatcher(patternText, name).match(found)) {
        return false;
    }
    for (WildcardCapture const& capture : found) {
        captures.add((std::string(1, capture.wildcard) + name.substr(capture.start, capture.length))
                         .c_str());
    }
    return true;
}

} // namespace internal

// ---- The renamer -----------------------------------------------------------------------------

kelFileRenamer::IProgressNotifier::~IProgressNotifier() = default;

kelFileRenamer::kelFileRenamer() : mMode(Mode::Replace), mCounter(0), mFrom(" "), mTo(" ") {}

kelFileRenamer::kelFileRenamer(kelFileRenamer const&) = default;

kelFileRenamer& kelFileRenamer::operator=(kelFileRenamer const&) = default;

kelFileRenamer::~kelFileRenamer() = default;

void kelFileRenamer::setFiles(char const* folder, kelListString const& files) {
    mFolder = folder != nullptr ? folder : "";
    mFiles = files;
    mFiles.unique();
}

void kelFileRenamer::setPatternMode(char const* pattern) {
    mMode = Mode::Pattern;
    mPattern = pattern != nullptr ? pattern : "";
}

void kelFileRenamer::setReplaceMode(char const* from, char const* to) {
    mMode = Mode::Replace;
    mFrom = from != nullptr ? from : "";
    mTo = to != nullptr ? to : "";
}

bool kelFileRenamer::preview(kelListString& newNames, bool& hasCollisions) {
    RENAME_INFO const info = {&newNames, &hasCollisions, nullptr, false};
    return processRename(info);
}

bool kelFileRenamer::rename(IProgressNotifier* notifier) {
    RENAME_INFO const info = {nullptr, nullptr, notifier, true};
    return processRename(info);
}

bool kelFileRenamer::processRename(RENAME_INFO const& info) {
    mCounter = 0;
    if (mFolder.empty() || mFiles.empty()) {
        return false;
    }
    FilesFolder folder(mFolder);
    internal::kelRenameRule const rule = {mMode == Mode::Pattern, mPattern, mFrom, mTo};
    return internal::runRenameEngine(mFiles, rule, mCounter, folder, info.newNames,
                                     info.hasCollisions, info.notifier, info.doRename);
}

} // namespace KELKIT
