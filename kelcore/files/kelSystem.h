#ifndef KELCORE_FILES_KELSYSTEM_H
#define KELCORE_FILES_KELSYSTEM_H

#include <kelcore/files/kelListDrive.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelSize.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// Questions about the machine. Only static operations; an object means nothing. Nothing
// throws: a question that cannot be answered gives an empty text, an empty list or 0 x 0.
//
// On POSIX: drives are the mounted file systems lettered from C (root first, label = mount
// point), the folders follow the XDG base and user folders, and error codes are errno values.
class KELCORE_API kelSystem {
public:
    kelSystem();
    kelSystem(kelSystem const& other);
    kelSystem& operator=(kelSystem const& other);
    virtual ~kelSystem();

    // 0 x 0 where no display can be asked.
    static kelSize getScreenResolution();
    // A backslash on every platform.
    static kelString getPathSeparator();
    // Carriage return and line feed on every platform.
    static char const* getLineSeparator();
    static kelListDrive getDrives();
    // The calling thread's last error: ask before any other system call on that thread.
    static UInt32 getLastError();
    static kelString getLastErrorMessage();
    // The system's text, with whatever line end it brings; empty for a code without one.
    static kelString getErrorMessage(UInt32 code);
    // The variable TEMP, empty when it is not set.
    static kelString getTempFolder();
    // The folders are named, not created; empty when they cannot be found.
    static kelString getUserRoamingFolder();
    static kelString getAllUsersDocumentsFolder();
    static kelString getUserSettingsFolder();
    static kelString getUserDocumentsFolder();
};

} // namespace KELKIT

#endif
