#include <kelcore/files/kelEnv.h>

#include <kelcore/platform/kelEnvironment.h>
#include <kelcore/strings/kelStringConverter.h>
#include <kelcore/strings/kelStringTokenizer.h>

namespace KELKIT {

kelEnv::kelEnv() = default;

kelEnv::kelEnv(kelEnv const&) = default;

kelEnv& kelEnv::operator=(kelEnv const&) = default;

kelEnv::~kelEnv() = default;

bool kelEnv::setEnvVar(char const* name, char const* value) {
    return platform::setEnvironmentVariable(name, value);
}

bool kelEnv::getEnvVar(char const* name, kelString& value) {
    std::string found;
    if (!platform::getEnvironmentVariable(name, found)) {
        value = "";
        return false;
    }
    value = found.c_str();
    return true;
}

void kelEnv::getAllVariables(kelListString& names, kelListString& values) {
    names.clear();
    values.clear();
    for (std::string const& entry : platform::environmentEntries()) {
        kelListString const tokens = kelStringTokenizer::split(entry.c_str(), "=");
        if (tokens.size() == 2) {
            names.add(tokens[0]);
            values.add(tokens[1]);
        }
    }
}

kelString kelEnv::expand(char const* text) {
    kelString result(text);
    kelListString names;
    kelListString values;
    getAllVariables(names, values);
    for (UInt32 i = 0; i < names.size(); ++i) {
        result.replace(kelStringConverter::format("%%%s%%", names[i].c_str()), values[i]);
    }
    return result;
}

} // namespace KELKIT
