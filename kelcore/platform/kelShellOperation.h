#ifndef KELCORE_PLATFORM_KELSHELLOPERATION_H
#define KELCORE_PLATFORM_KELSHELLOPERATION_H

// Internal: the shell's batch operation on lists of paths (copy, move, delete, rename). Windows
// hands it to the shell; POSIX carries it out in the library with the same rules.

#include <kelcore/frame/kelTypes.h>

namespace KELKIT {
namespace platform {

// The shell's operation codes and flags, by their Windows values.
constexpr UInt32 kShellMove = 1;
constexpr UInt32 kShellCopy = 2;
constexpr UInt32 kShellDelete = 3;
constexpr UInt32 kShellRename = 4;

constexpr UInt32 kShellMultipleTargets = 0x0001; // target i belongs to source i
constexpr UInt32 kShellNoConfirmation = 0x0010;  // answer every question with yes
constexpr UInt32 kShellAllowUndo = 0x0040;       // deleting moves to the wastebasket
constexpr UInt32 kShellNoErrorDialog = 0x0400;

// Runs one operation. sources and targets are double-zero lists: each path with its zero byte,
// then one more zero byte; targets may be null. True only when the operation ran to its end
// without an error and without being aborted.
//
// POSIX has no dialogs. Deleting (or moving to the wastebasket) what the list names needs no
// confirmation; replacing an existing item at the target does, and without kShellNoConfirmation
// it is refused, so that nothing is replaced unless the caller said so. All sources must exist,
// no folder goes into itself and no item onto itself: those checks run before anything changes.
// Wildcards (* and ?) may stand in the last part of a source. Links are moved, copied and
// deleted as links, never followed. Copies keep permissions and modification times.
bool runShellOperation(UInt32 operation, UInt32 flags, char const* sources, char const* targets);

} // namespace platform
} // namespace KELKIT

#endif
