// kelSystem's known folders on POSIX, from a user-dirs.dirs file whose content is the input and
// from HOME, XDG_DATA_HOME and XDG_DOCUMENTS_DIR values the input sets, against a model of the
// documented rules: the documents folder is the last XDG_DOCUMENTS_DIR= line of the file (blanks
// before it allowed), its value quoted with backslash escapes or bare up to a blank, "$HOME" or
// "$HOME/..." under the home folder, else absolute or nothing; without one, an absolute
// $XDG_DOCUMENTS_DIR, else Documents under the home folder. The home folder is an absolute HOME,
// else the password entry's. Folders are library paths: backslashes, repeated and trailing
// separators dropped, nothing for a path that is not absolute or holds a backslash. The config
// folder stays this process's own scratch folder, so no real user's file is read.

#include "kelFuzz.h"

#include <kelcore/files/kelSystem.h>

#include <pwd.h>

using namespace KELKIT;

namespace {

struct Config {
    std::string folder = kelFuzz::scratchPath("config");
    std::string file = folder + "/user-dirs.dirs";
    Config() { std::filesystem::create_directory(folder); }
    ~Config() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
};

Config& config() {
    static Config c;
    return c;
}

std::string libraryFolder(std::string const& path) {
    if (path.empty() || path[0] != '/' || path.find('\\') != std::string::npos) {
        return std::string();
    }
    std::string out;
    for (char c : path) {
        if (c != '/') {
            out += c;
        } else if (out.empty() || out.back() != '\\') {
            out += '\\';
        }
    }
    if (out.size() > 1 && out.back() == '\\') {
        out.pop_back();
    }
    return out.c_str();
}

std::string homeFolder(std::string const& home, bool homeSet) {
    if (homeSet && !home.empty() && home[0] == '/') {
        return home;
    }
    passwd const* const entry = ::getpwuid(::getuid());
    return entry != nullptr && entry->pw_dir != nullptr && entry->pw_dir[0] == '/' ? entry->pw_dir
                                                                                   : "";
}

std::string entryValue(std::string const& text, std::string const& home) {
    std::string value;
    if (!text.empty() && text[0] == '"') {
        for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
            if (text[i] == '\\' && i + 1 < text.size()) {
                ++i;
            }
            value += text[i];
        }
    } else {
        std::size_t const end = text.find_first_of(" \t\r");
        value = text.substr(0, end);
    }
    if (value.compare(0, 5, "$HOME") == 0 && (value.size() == 5 || value[5] == '/')) {
        return home.empty() ? "" : home + value.substr(5);
    }
    return !value.empty() && value[0] == '/' ? value : "";
}

std::string documentsModel(std::string const& content, std::string const& home,
                           std::string const& variable, bool variableSet) {
    std::string found;
    std::string const key = "XDG_DOCUMENTS_DIR=";
    std::size_t at = 0;
    while (at < content.size()) {
        std::size_t const end = content.find('\n', at);
        std::string const line =
            content.substr(at, end == std::string::npos ? std::string::npos : end - at);
        at = end == std::string::npos ? content.size() : end + 1;
        std::size_t const start = line.find_first_not_of(" \t");
        if (start != std::string::npos && line.compare(start, key.size(), key) == 0) {
            found = entryValue(line.substr(start + key.size()), home);
        }
    }
    if (found.empty() && variableSet && !variable.empty() && variable[0] == '/') {
        found = variable;
    }
    if (found.empty() && !home.empty()) {
        found = home + "/Documents";
    }
    return libraryFolder(found);
}

// Sets the variable to the text, or removes it.
void setVariable(char const* name, std::string const& value, bool set) {
    if (set) {
        setenv(name, value.c_str(), 1);
    } else {
        unsetenv(name);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("XDG_CONFIG_HOME", config().folder.c_str(), 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    bool const homeSet = input.ConsumeIntegralInRange(0, 7) != 0;
    std::string const home = input.ConsumeRandomLengthString(32).c_str();
    bool const documentsSet = input.ConsumeBool();
    std::string const documents = input.ConsumeRandomLengthString(32).c_str();
    bool const dataSet = input.ConsumeBool();
    std::string const dataHome = input.ConsumeRandomLengthString(32).c_str();
    std::string const content = input.ConsumeRemainingBytesAsString();

    setVariable("HOME", home, homeSet);
    setVariable("XDG_DOCUMENTS_DIR", documents, documentsSet);
    setVariable("XDG_DATA_HOME", dataHome, dataSet);
    kelFuzz::writeFile(config().file, content);

    std::string const homeFolderText = homeFolder(home, homeSet);
    KEL_FUZZ_CHECK_TEXT(documentsModel(content, homeFolderText, documents, documentsSet),
                        kelSystem::getUserDocumentsFolder().c_str());
    KEL_FUZZ_CHECK_TEXT(libraryFolder(dataSet && !dataHome.empty() && dataHome[0] == '/' ? dataHome
                                      : homeFolderText.empty()                           ? ""
                                                               : homeFolderText + "/.local/share"),
                        kelSystem::getUserSettingsFolder().c_str());
    KEL_FUZZ_CHECK_TEXT(libraryFolder(config().folder), kelSystem::getUserRoamingFolder().c_str());
    return 0;
}
