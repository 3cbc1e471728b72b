#ifndef KELCORE_FILES_KELENV_H
#define KELCORE_FILES_KELENV_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The environment variables of the process. Only static operations; an object means nothing.
// Name look-ups are case-sensitive on POSIX and case-insensitive on Windows.
class KELCORE_API kelEnv {
public:
    kelEnv();
    kelEnv(kelEnv const& other);
    kelEnv& operator=(kelEnv const& other);
    virtual ~kelEnv();

    // Sets the variable for the whole process; an empty value removes it. False for an empty
    // name, a name holding "=", or when the system refuses.
    static bool setEnvVar(char const* name, char const* value);
    // False, with value emptied, when the variable is not set.
    static bool getEnvVar(char const* name, kelString& value);
    // Replaces both lists with the variables in the environment's own order, split at "=". An
    // entry that does not split into exactly two non-empty parts (an empty value, or a value
    // holding "=") is left out; a leading "=" vanishes.
    static void getAllVariables(kelListString& names, kelListString& values);
    // Replaces each "%NAME%" by its value, variable after variable in the order of
    // getAllVariables, case-sensitively. Unknown and left-out variables stay as written; a
    // reference that a value brings in is expanded only if its variable comes later.
    static kelString expand(char const* text);
};

} // namespace KELKIT

#endif
