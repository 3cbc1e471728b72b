#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/platform/kelDirectory.h>
#include <kelcore/platform/kelFileHandle.h>
#include <kelcore/platform/kelFileInfo.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelPathChanges.h>
#include <kelcore/platform/kelTextReader.h>
#include <kelcore/strings/kelStringTokenizer.h>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace KELKIT {

namespace {

// Text reads go through one line buffer of this size: a read gives at most 10,239 characters.
constexpr int kLineBufferSize = 10240;

std::string textOf(char const* text) {
    return text == nullptr ? std::string() : std::string(text);
}

// left, a backslash unless left is empty or ends in one, then right.
std::string joined(std::string left, char const* right) {
    if (!left.empty() && left.back() != '\\') {
        left += '\\';
    }
    if (right != nullptr) {
        left += right;
    }
    return left;
}

// The native attribute word as kelFileAttributes; `name` decides CurrentFolder and
// ParentFolder.
kelFileAttributes attributesOf(char const* name, UInt32 word) {
    int flags = kelFileAttributes::None;
    if ((word & platform::kAttributeDirectory) != 0) {
        flags |= kelFileAttributes::Folder;
        if (std::strcmp(name, ".") == 0) {
            flags |= kelFileAttributes::CurrentFolder;
        } else if (std::strcmp(name, "..") == 0) {
            flags |= kelFileAttributes::ParentFolder;
        }
    } else {
        flags |= kelFileAttributes::File;
    }
    if ((word & platform::kAttributeArchive) != 0) {
        flags |= kelFileAttributes::Archive;
    }
    if ((word & platform::kAttributeHidden) != 0) {
        flags |= kelFileAttributes::Hidden;
    }
    if ((word & platform::kAttributeReadOnly) != 0) {
        flags |= kelFileAttributes::ReadOnly;
    }
    if ((word & platform::kAttributeSystem) != 0) {
        flags |= kelFileAttributes::System;
    }
    return kelFileAttributes(flags);
}

// The listing behind getFiles and the counts built on it: visit(fullPath, name) for each entry
// that criteria accepts, depth first, a folder before its content. One open enumeration per
// level and no recursion on the call stack, so the depth of a tree costs no stack. Without
// wantAttributes only File and Folder are sure, which suffices for kelFileCriteriaDefault.
template <class Visit>
void walk(char const* folder, bool recursive, kelFileCriteria* criteria, bool wantAttributes,
          Visit const& visit) {
    struct Level {
        platform::DirectoryReader reader;
        std::size_t prefixLength = 0; // of the running path: the folder and its backslash
    };
    std::vector<std::unique_ptr<Level>> levels;
    levels.emplace_back(new Level());
    if (!levels.back()->reader.open(folder)) {
        return;
    }
    std::string path = joined(folder, "");
    levels.back()->prefixLength = path.size();
    platform::DirectoryEntry entry;
    while (!levels.empty()) {
        Level& level = *levels.back();
        if (!level.reader.next(entry, wantAttributes)) {
            levels.pop_back();
            continue;
        }
        path.resize(level.prefixLength);
        path += entry.name;
        if (criteria != nullptr &&
            !criteria->accept(path.c_str(), attributesOf(entry.name, entry.attributes))) {
            continue;
        }
        visit(path, entry.name);
        // A folder too long to name is not entered, as a walk that starts there would not be;
        // this also ends a walk through a loop of mounts.
        if (recursive && platform::isEnterableEntry(entry) &&
            path.size() <= platform::kMaxPathLength) {
            std::unique_ptr<Level> child(new Level());
            if (child->reader.openChild(level.reader, entry.name, path.c_str())) {
                path += '\\';
                child->prefixLength = path.size();
                levels.push_back(std::move(child));
            }
        }
    }
}

// Every line feed out of a line read into the buffer.
void removeLineFeeds(char* line) {
    char* out = line;
    for (char const* in = line; *in != '\0'; ++in) {
        if (*in != '\n') {
            *out++ = *in;
        }
    }
    *out = '\0';
}

kelString sizeText(UInt64 hundredths, char const* unit) {
    char text[64];
    std::to_chars_result const done =
        std::to_chars(text, text + sizeof text - 8, static_cast<double>(hundredths) / 100.0,
                      std::chars_format::fixed, 2); // the C locale's digits, whatever the process's
    std::strcpy(done.ptr, unit);
    return kelString(text);
}

} // namespace

kelFiles::kelFiles() {}

kelFiles::kelFiles(kelFiles const& /*other*/) {}

kelFiles& kelFiles::operator=(kelFiles const& /*other*/) {
    return *this;
}

kelFiles::~kelFiles() {}

char const* kelFiles::getFileInvalidCharacters() {
    return "<>\\:\"*?|\r\n";
}

bool kelFiles::fileExists(char const* path) {
    return platform::isFileItem(path);
}

// The working folder is never changed to find out: that would mislead every other thread's
// relative paths for the length of the call. The system's answer on the path itself gives the
// same result, "a folder this process can enter".
bool kelFiles::folderExists(char const* path) {
    return platform::isEnterableFolder(path);
}

kelFileAttributes kelFiles::getItemAttributes(char const* path) {
    UInt32 word = 0;
    if (!platform::getItemAttributeWord(path, word) ||
        ((word & platform::kAttributeDirectory) != 0 && !platform::isEnterableFolder(path))) {
        return kelFileAttributes(kelFileAttributes::None);
    }
    return attributesOf(path, word);
}

bool kelFiles::setFileAttributes(char const* path, kelFileAttributes const& attributes) {
    UInt32 word = platform::kAttributeNormal;
    if (attributes.isFlagsEnabled(kelFileAttributes::Archive)) {
        word |= platform::kAttributeArchive;
    }
    if (attributes.isFlagsEnabled(kelFileAttributes::Hidden)) {
        word |= platform::kAttributeHidden;
    }
    if (attributes.isFlagsEnabled(kelFileAttributes::ReadOnly)) {
        word |= platform::kAttributeReadOnly;
    }
    if (attributes.isFlagsEnabled(kelFileAttributes::System)) {
        word |= platform::kAttributeSystem;
    }
    return platform::setItemAttributeWord(path, word);
}

UInt64 kelFiles::getFileSize(char const* path) {
    platform::FileHandle const handle = platform::openFileHandle(
        path, platform::FileAccess::Read, platform::FileCreation::OpenExisting,
        platform::kShareRead | platform::kShareWrite);
    if (handle == platform::kNoFileHandle) {
        return 0;
    }
    UInt64 size = 0;
    if (!platform::getFileHandleSize(handle, size)) {
        size = 0;
    }
    platform::closeFileHandle(handle);
    return size;
}

kelString kelFiles::getCurrentFolder() {
    std::string folder;
    return platform::getWorkingFolder(folder) ? kelString(folder.c_str()) : kelString();
}

void kelFiles::getFiles(char const* folder, kelListString& files) {
    files.clear();
    // The listing pattern "<folder>\*.*" and its terminator fit in 2,048 characters.
    if (folder == nullptr || std::strlen(folder) + 5 > 2048) {
        return;
    }
    platform::DirectoryReader reader;
    if (!reader.open(folder)) {
        return;
    }
    platform::DirectoryEntry entry;
    while (reader.next(entry, false)) {
        files.add(kelString(entry.name));
    }
}

void kelFiles::getFiles(char const* folder, kelListString& files, bool recursive, bool fullPaths,
                        kelFileCriteria* criteria) {
    // The default criteria looks at File, Folder, CurrentFolder and ParentFolder only, which the
    // entry's type gives: no file status is needed for it (a class derived from it may look
    // further, so only the exact class counts).
    bool const wantAttributes =
        criteria != nullptr && typeid(*criteria) != typeid(kelFileCriteriaDefault);
    walk(folder, recursive, criteria, wantAttributes,
         [&files, fullPaths](std::string const& path, char const* name) {
             files.add(kelString(fullPaths ? path.c_str() : name));
         });
}

UInt32 kelFiles::getNumFilesInFolder(char const* folder, bool recursive) {
    kelFileCriteriaDefault criteria;
    UInt32 count = 0;
    walk(folder, recursive, &criteria, false,
         [&count](std::string const&, char const*) { ++count; });
    return count;
}

UInt32 kelFiles::getFolderSize(char const* folder) {
    if (!folderExists(folder)) {
        return 0;
    }
    kelFileCriteriaDefault criteria;
    UInt32 sum = 0;
    walk(folder, true, &criteria, false, [&sum](std::string const& path, char const*) {
        sum += static_cast<UInt32>(getFileSize(path.c_str()));
    });
    return sum;
}

UInt32 kelFiles::find(char const* path, char const* text) {
    return find(path, 0, text);
}

UInt32 kelFiles::find(char const* path, UInt32 offset, char const* text) {
    platform::TextReader reader;
    if (text == nullptr || !reader.open(path)) {
        return 0;
    }
    if (offset != 0) {
        reader.seek(offset);
    }
    UInt32 position = offset;
    char line[kLineBufferSize];
    while (reader.readLine(line, kLineBufferSize)) {
        removeLineFeeds(line);
        char const* const found = std::strstr(line, text);
        if (found != nullptr) {
            return position + static_cast<UInt32>(found - line);
        }
        position += static_cast<UInt32>(std::strlen(line)) + 1;
    }
    return 0;
}

UInt32 kelFiles::getLinesInFile(char const* path) {
    platform::TextReader reader;
    if (!reader.open(path)) {
        return 0;
    }
    UInt32 count = 0;
    char line[kLineBufferSize];
    while (reader.readLine(line, kLineBufferSize)) {
        ++count;
    }
    return count;
}

void kelFiles::getTextFileContent(char const* path, kelListString& lines) {
    std::string const file = textOf(path); // path may point into lines
    lines.clear();
    platform::TextReader reader;
    if (!reader.open(file.c_str())) {
        return;
    }
    char line[kLineBufferSize];
    while (reader.readLine(line, kLineBufferSize)) {
        removeLineFeeds(line);
        lines.add(kelString(line));
    }
}

void kelFiles::getTextFileContent(char const* path, kelString& content) {
    kelMemoryBuffer buffer;
    if (loadFile(path, buffer)) {
        content = buffer.toString(); // up to the first zero byte
    }
}

void kelFiles::getTextFileContent(char const* path, kelMemoryBuffer& content) {
    loadFile(path, content);
}

bool kelFiles::loadFile(char const* path, kelMemoryBuffer& content) {
    UInt32 const size = static_cast<UInt32>(getFileSize(path));
    platform::FileHandle handle = platform::kNoFileHandle;
    if (size == 0 || !content.allocate(size) || content.getSize() != size ||
        (handle = platform::openFileHandle(
             path, platform::FileAccess::Read, platform::FileCreation::OpenExisting,
             platform::kShareRead | platform::kShareWrite)) == platform::kNoFileHandle) {
        content.clear();
        return false;
    }
    UInt32 done = 0;
    while (done < size) {
        UInt32 const count =
            platform::readFileHandle(handle, content.getBuffer() + done, size - done);
        if (count == 0) {
            break;
        }
        done += count;
    }
    platform::closeFileHandle(handle);
    if (done != size) {
        content.clear();
        return false;
    }
    return true;
}

kelString kelFiles::getUserFriendlySize(UInt64 size) {
    kelFileSizeUnit::Enum unit = kelFileSizeUnit::Terabytes;
    if (size < 1024ull) {
        unit = kelFileSizeUnit::Bytes;
    } else if (size < 1024000ull) {
        unit = kelFileSizeUnit::Kilobytes;
    } else if (size < 1048576000ull) {
        unit = kelFileSizeUnit::Megabytes;
    } else if (size < 1073741824000ull) {
        unit = kelFileSizeUnit::Gigabytes;
    }
    return getUserFriendlySize(size, kelFileSizeUnit(unit));
}

// Unsigned 64-bit arithmetic that wraps, each division truncating, as the sizes always were.
kelString kelFiles::getUserFriendlySize(UInt64 size, kelFileSizeUnit unit) {
    switch (unit.getValue()) {
    case kelFileSizeUnit::Bytes: {
        std::string text = std::to_string(size);
        text += " bytes";
        return kelString(text.c_str());
    }
    case kelFileSizeUnit::Kilobytes:
        return sizeText(size * 100 / 1024, " KB");
    case kelFileSizeUnit::Megabytes:
        return sizeText(size / 1024 * 100 / 1024, " MB");
    case kelFileSizeUnit::Gigabytes:
        return sizeText(size / 1024 * 100 / 1048576, " GB");
    case kelFileSizeUnit::Terabytes:
        return sizeText(size / 1024 * 100 / 1073741824, " TB");
    default:
        return kelString(); // no such unit
    }
}

void kelFiles::getFileExtention(char const* path, kelString& extension) {
    std::string const text = textOf(path); // path may point into extension
    std::string result = extension.c_str();
    for (char const c : text) {
        if (c == '.') {
            result.clear();
        } else {
            result += c;
        }
    }
    extension = result.c_str();
}

void kelFiles::splitPaths(char const* path, kelString& folderName, kelString& fileName) {
    std::string const text = textOf(path);
    std::size_t const last = text.rfind('\\');
    if (last == std::string::npos) {
        folderName = ".\\";
        fileName = text.c_str();
    } else {
        folderName = text.substr(0, last + 1).c_str();
        fileName = text.substr(last + 1).c_str();
    }
}

void kelFiles::splitPaths(char const* path, kelListString& parts) {
    std::string const text = textOf(path);
    kelStringTokenizer tokens(text.c_str(), "\\");
    while (tokens.hasMoreTokens()) {
        parts.add(tokens.nextToken());
    }
}

void kelFiles::getFileName(char const* path, kelString& fileName) {
    kelString folderName;
    splitPaths(path, folderName, fileName);
}

void kelFiles::getFolderName(char const* path, kelString& folderName) {
    kelString fileName;
    splitPaths(path, folderName, fileName);
}

void kelFiles::getParentName(char const* path, kelString& parentName) {
    std::string text = textOf(path);
    if (!text.empty() && text.back() == '\\') {
        text.pop_back();
    }
    getFolderName(text.c_str(), parentName);
}

void kelFiles::concat(char const* left, char const* right, kelString& result) {
    result = joined(textOf(left), right).c_str();
}

kelString kelFiles::concat(char const* left, char const* right) {
    return kelString(joined(textOf(left), right).c_str());
}

bool kelFiles::isWildcardPath(char const* path) {
    return path != nullptr && std::strpbrk(path, "*?") != nullptr;
}

void kelFiles::expand(char const* path, kelListString& paths) {
    std::string const text = textOf(path);
    std::size_t const open = text.find('[');
    std::size_t const close = open == std::string::npos ? open : text.find(']', open + 1);
    if (close == std::string::npos) {
        paths.add(kelString(text.c_str()));
        return;
    }
    std::string const head = text.substr(0, open);
    std::string const tail = text.substr(close + 1);
    for (std::size_t i = open + 1; i < close; ++i) {
        paths.add(kelString((head + text[i] + tail).c_str()));
    }
}

bool kelFiles::rename(char const* oldPath, char const* newPath) {
    return platform::renameItem(oldPath, newPath);
}

} // namespace KELKIT
