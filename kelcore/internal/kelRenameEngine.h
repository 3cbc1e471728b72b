#ifndef KELCORE_INTERNAL_KELRENAMEENGINE_H
#define KELCORE_INTERNAL_KELRENAMEENGINE_H

// Internal, not installed: the renamer's engine, reachable without a file system so that tests
// and benchmarks can drive it with a folder of their own.

#include <kelcore/containers/kelLists.h>
#include <kelcore/files/kelFileRenamer.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {
namespace internal {

// The folder a run works in.
class KELCORE_API kelRenameFolder {
public:
    virtual ~kelRenameFolder();
    // Adds the bare names the folder holds now, "." and ".." included.
    virtual void listNames(kelListString& names) = 0;
    // Renames one entry, bare names both; true on success.
    virtual bool renameEntry(char const* oldName, char const* newName) = 0;
};

struct kelRenameRule {
    bool patternMode;
    kelString pattern;
    kelString from;
    kelString to;
};

// One run over `files` (not empty) as preview and rename do it: counter starts at 0 and ends at
// the last number used.
KELCORE_API bool runRenameEngine(kelListString const& files, kelRenameRule const& rule,
                                 UInt32& counter, kelRenameFolder& folder, kelListString* newNames,
                                 bool* hasCollisions, kelFileRenamer::IProgressNotifier* notifier,
                                 bool doRename);

// The anchored wildcard match of replace mode alone. On a match, captures gets one item per
// wildcard of the pattern, in pattern order: the wildcard character followed by its text.
KELCORE_API bool matchWildcards(char const* pattern, char const* text, kelListString& captures);

} // namespace internal
} // namespace KELKIT

#endif
