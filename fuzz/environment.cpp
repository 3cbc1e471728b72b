// kelEnv over variables whose names (behind a fixed prefix, so that the process's own variables
// stay as they are), values and references the input makes: setting refuses a name holding
// "=", an empty value removes, getting gives what was set or false with the value emptied; the
// list of all variables is the process environment read directly, in its order, each entry
// split at "=" into exactly two non-empty parts or left out; expand replaces each "%NAME%" of
// that list in turn, every occurrence left to right without rescanning what it put in.

#include "kelFuzz.h"

#include <kelcore/files/kelEnv.h>

extern char** environ;

using namespace KELKIT;

namespace {

// The names the last input set, removed before the next one.
std::vector<std::string>& setBefore() {
    static std::vector<std::string> names;
    return names;
}

} // namespace

// A small environment of known entries, the same on every machine, with the awkward forms the
// list leaves out or splits oddly; PATH stays for the sanitizers' reports.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    char const* const path = std::getenv("PATH");
    std::string const keep = path != nullptr ? path : "/usr/bin:/bin";
    clearenv();
    setenv("PATH", keep.c_str(), 1);
    static char entries[][16] = {"=LEAD=value", "=alone",      "EMPTY=", "DOUBLE==b", "INNER=d=e",
                                 "%PCT%=pct",   "HOME=\\home", "A=%B%",  "B=%A%"};
    for (char* entry : entries) {
        putenv(entry);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    for (std::string const& name : setBefore()) {
        KEL_FUZZ_CHECK(kelEnv::setEnvVar(name.c_str(), ""));
        kelString value("old");
        KEL_FUZZ_CHECK(!kelEnv::getEnvVar(name.c_str(), value) && value.empty());
    }
    setBefore().clear();

    FuzzedDataProvider input(data, size);
    int const count = input.ConsumeIntegralInRange(0, 4);
    for (int i = 0; i < count; ++i) {
        std::string const name = "KF" + std::string(input.ConsumeRandomLengthString(8).c_str());
        std::string const value = input.ConsumeRandomLengthString(16).c_str();
        bool const refused = name.find('=') != std::string::npos;
        KEL_FUZZ_CHECK(kelEnv::setEnvVar(name.c_str(), value.c_str()) == !refused);
        if (refused) {
            continue;
        }
        setBefore().push_back(name);
        kelString got("old");
        KEL_FUZZ_CHECK(kelEnv::getEnvVar(name.c_str(), got) == !value.empty());
        KEL_FUZZ_CHECK_TEXT(value, got.c_str());
    }
    KEL_FUZZ_CHECK(!kelEnv::setEnvVar("", "x") && !kelEnv::setEnvVar("KF=", "x"));

    std::vector<std::string> names, values;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        std::vector<std::string> const parts = kelFuzz::nonEmptyParts(*entry, '=');
        if (parts.size() == 2) {
            names.push_back(parts[0]);
            values.push_back(parts[1]);
        }
    }
    kelListString gotNames, gotValues;
    gotNames.add(kelString("old"));
    kelEnv::getAllVariables(gotNames, gotValues);
    KEL_FUZZ_CHECK(kelFuzz::textsOf(gotNames) == names);
    KEL_FUZZ_CHECK(kelFuzz::textsOf(gotValues) == values);

    std::string expected = input.ConsumeRemainingBytesAsString().c_str();
    std::string const text = expected;
    for (std::size_t i = 0; i < names.size(); ++i) {
        expected = kelFuzz::replacedAll(expected, "%" + names[i] + "%", values[i]);
    }
    KEL_FUZZ_CHECK_TEXT(expected, kelEnv::expand(text.c_str()).c_str());
    return 0;
}
