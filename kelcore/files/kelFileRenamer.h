#ifndef KELCORE_FILES_KELFILERENAMER_H
#define KELCORE_FILES_KELFILERENAMER_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelBaseEnum.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

// clang-format off
#define KEL_ROWS_kelFileRenamer_Mode(X) X(Pattern, 0) X(Replace, 1)
// clang-format on

namespace KELKIT {

// Renames a batch of files of one folder by a rule.
//
// Pattern mode builds each new name from a template read left to right, with a cursor into the
// old name: '?' copies the character under the cursor (nothing past the end) and advances, '|'
// advances without copying, a run of '#' writes the next value of a running number (starting at
// 1 for every run), padded with zeros to the count of '#' read so far in the template; any other
// character, '*' included, is copied. So 'photo_###' gives photo_001, photo_002, ... and
// '??????.txt' turns report.doc into report.txt.
//
// Replace mode with plain texts replaces every occurrence of `from` by `to`. With the wildcards
// '*' and '?', `from` must match the whole name (case-sensitively; a '*' takes the longest text
// that leaves room for the rest, and keeps one character back for a wildcard that follows it),
// and the new name is `to` with its wildcards replaced, kind by kind and in order, by what the
// same wildcards of `from` matched: '*.txt' to '*.bak' turns x.txt into x.bak. `to` must use the
// kinds of wildcard of `from` in the same order and the same number of times each, but may drop
// trailing kinds; otherwise the run fails. A name that does not match stays as it is.
//
// preview computes the new names and whether one would collide with a name of the folder (taking
// the names the run frees or takes before it into account); rename renames, in list order, in a
// single pass: no temporary names, no ordering of chains, no rollback. A rename that fails ends
// the run with false; the files renamed before it stay renamed.
//
// The renamer works inside its folder and nowhere else: an old or new name that is empty, is "."
// or "..", or holds a slash or a backslash is a failing rename (preview lists it as it is, since
// it only shows names). An object is used by one thread at a time.
class KELCORE_API kelFileRenamer {
public:
    class KELCORE_API Mode : public kelBaseEnum {
    public:
        enum Enum : int { KEL_ROWS_kelFileRenamer_Mode(KEL_ENUM_ENUMERATOR) };
        KEL_ENUM_MEMBERS(Mode)
    };

    // Told after each file of a real run, renamed or unchanged; the result is ignored.
    class KELCORE_API IProgressNotifier {
    public:
        virtual ~IProgressNotifier();
        // progress is (index + 1) / count, as a fraction.
        virtual bool notifyProgress(char const* oldName, char const* newName, double progress) = 0;
    };

    // Replace mode, " " to " ": changes nothing.
    kelFileRenamer();
    kelFileRenamer(kelFileRenamer const& other);
    kelFileRenamer& operator=(kelFileRenamer const& other);
    virtual ~kelFileRenamer();

    // Bare file names in processing order; a repeated name is kept once, at its first place.
    void setFiles(char const* folder, kelListString const& files);
    void setPatternMode(char const* pattern);
    void setReplaceMode(char const* from, char const* to);

    // newNames gets one name per file, unchanged ones included; hasCollisions is raised (never
    // lowered: set it to false first) when a new name is taken by then. False for an empty
    // folder text or file list (newNames untouched) and for invalid replace texts.
    bool preview(kelListString& newNames, bool& hasCollisions);
    // notifier may be null. False at the first failing rename, without notifying it.
    bool rename(IProgressNotifier* notifier);

private:
    struct RENAME_INFO {
        kelListString* newNames;
        bool* hasCollisions;
        IProgressNotifier* notifier;
        bool doRename;
    };

    bool processRename(RENAME_INFO const& info);

    kelString mFolder;
    kelListString mFiles;
    Mode mMode;
    kelString mPattern;
    UInt32 mCounter;
    kelString mFrom;
    kelString mTo;
};

} // namespace KELKIT

#endif
