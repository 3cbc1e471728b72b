#include <kelcore/events/kelCancelActionEvent.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/files/kelFileCopyEvent.h>
#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFileDeleteEvent.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolderCopyEvent.h>
#include <kelcore/files/kelFolderDeleteEvent.h>
#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelReverseComparator.h>
#include <kelcore/platform/kelDirectory.h>
#include <kelcore/platform/kelFileContent.h>
#include <kelcore/platform/kelFileHandle.h>
#include <kelcore/platform/kelFileInfo.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelPathChanges.h>
#include <kelcore/platform/kelShellOperation.h>
#include <kelcore/platform/kelTextReader.h>
#include <kelcore/platform/kelTreeItems.h>
#include <kelcore/strings/kelStringTokenizer.h>
#include <kelcore/time/kelTimer.h>

#include <algorithm>
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

// The attributes that the native word and kelFileAttributes both carry, bit for flag.
struct AttributeBit {
    UInt32 word;
    int flag;
};
constexpr AttributeBit kAttributeBits[] = {
    {platform::kAttributeArchive, kelFileAttributes::Archive},
    {platform::kAttributeHidden, kelFileAttributes::Hidden},
    {platform::kAttributeReadOnly, kelFileAttributes::ReadOnly},
    {platform::kAttributeSystem, kelFileAttributes::System},
};

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
    for (AttributeBit const& bit : kAttributeBits) {
        if ((word & bit.word) != 0) {
            flags |= bit.flag;
        }
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

// The attribute bits a file's attributes can be set to.
constexpr UInt32 kSettableAttributes = platform::kAttributeReadOnly | platform::kAttributeHidden |
                                       platform::kAttributeSystem | platform::kAttributeArchive;

// Copies and overwrites report progress per block of this size.
constexpr UInt32 kBlockSize = 10240;
// A copy moves this much per system call (a whole number of blocks) and then publishes the
// events of the blocks it moved: the events a block-by-block copy gives, at the speed of large
// transfers.
constexpr UInt32 kCopyStretch = 200 * kBlockSize;

void publish(kelEvent& event) {
    kelEventPublisher::getInstance().publishEvent(&event);
}

// A progress event goes out with each step below 1.0; the 1.0 goes out once, from
// publishDone, when the work is really done.
template <class Event>
void publishProgress(Event& event, double progress) {
    event.setProgress(progress);
    if (progress < 1.0) {
        publish(event);
    }
}

template <class Event>
void publishDone(Event& event) {
    event.setProgress(1.0);
    publish(event);
}

// Closes a handle on every way out, a notifier's exception included.
struct HandleCloser {
    explicit HandleCloser(platform::FileHandle opened) : handle(opened) {}
    ~HandleCloser() { platform::closeFileHandle(handle); }
    HandleCloser(HandleCloser const&) = delete;
    HandleCloser& operator=(HandleCloser const&) = delete;
    platform::FileHandle handle;
};

// A file being written that is thrown away, emptied and removed, unless it was finished.
struct WrittenFile {
    WrittenFile(platform::FileHandle opened, char const* name) : handle(opened), path(name) {}
    ~WrittenFile() {
        if (finished) {
            platform::closeFileHandle(handle);
        } else {
            platform::discardCopyTarget(handle, path);
        }
    }
    WrittenFile(WrittenFile const&) = delete;
    WrittenFile& operator=(WrittenFile const&) = delete;
    platform::FileHandle handle;
    char const* path;
    bool finished = false;
};

bool writeWhole(platform::FileHandle handle, unsigned char const* data, UInt32 size) {
    while (size > 0) {
        UInt32 const put = platform::writeFileHandle(handle, data, size);
        if (put == 0) {
            return false; // no progress, as on a full disk: no second try
        }
        data += put;
        size -= put;
    }
    return true;
}

// The items of a deletion or copy: by their paths, or, inside a folder operation, reached from
// the folder without following a link on the way.
struct Items {
    platform::TreeItems const* tree;

    bool word(char const* path, UInt32& word) const {
        return tree != nullptr ? tree->getItemAttributeWord(path, word)
                               : platform::getItemAttributeWord(path, word);
    }
    bool setWord(char const* path, UInt32 word) const {
        return tree != nullptr ? tree->setItemAttributeWord(path, word)
                               : platform::setItemAttributeWord(path, word);
    }
    bool isFile(char const* path) const {
        UInt32 found = 0;
        return tree != nullptr ? word(path, found) && (found & platform::kAttributeDirectory) == 0
                               : platform::isFileItem(path);
    }
    bool isLink(char const* path) const {
        UInt32 found = 0;
        return word(path, found) && (found & platform::kAttributeReparsePoint) != 0;
    }
    platform::FileHandle openForOverwrite(char const* path) const {
        return tree != nullptr ? tree->openForOverwrite(path) : platform::openForOverwrite(path);
    }
    platform::FileHandle openForReading(char const* path) const {
        return tree != nullptr
                   ? tree->openForReading(path)
                   : platform::openFileHandle(path, platform::FileAccess::Read,
                                              platform::FileCreation::OpenExisting,
                                              platform::kShareRead | platform::kShareWrite);
    }
    bool removeFile(char const* path) const {
        return tree != nullptr ? tree->removeFile(path) : platform::removeFile(path);
    }
};

// The shell's double-zero form: each path with its zero byte, then one more zero byte.
kelMemoryBuffer doubleZero(kelListString const& paths) {
    std::string bytes;
    for (UInt32 i = 0; i < paths.size(); ++i) {
        bytes.append(paths[i].c_str());
        bytes += '\0';
    }
    bytes += '\0';
    kelMemoryBuffer buffer;
    if (buffer.allocate(static_cast<UInt32>(bytes.size()))) {
        buffer.set(reinterpret_cast<UInt8 const*>(bytes.data()));
    }
    return buffer;
}

// copyFile, and the copy of each file of copyFolder (items within its tree), where a link is
// copied as a link so that nothing outside the tree is read.
bool copyOneFile(char const* source, char const* target, Items const& items) {
    if (items.tree != nullptr && items.isLink(source)) {
        if (!platform::copyLink(source, target)) {
            return false;
        }
        kelFileCopyEvent event(source, target, 0.0);
        publish(event);
        publishDone(event);
        return true;
    }
    platform::FileHandle const input = items.openForReading(source);
    if (input == platform::kNoFileHandle) {
        return false;
    }
    HandleCloser const inputCloser(input);
    platform::FileHandle const output = platform::openCopyTarget(target, input);
    if (output == platform::kNoFileHandle) {
        return false;
    }
    WrittenFile written(output, target);
    kelFileCopyEvent event(source, target, 0.0);
    publish(event);
    // The whole 64-bit size: it scales the progress only, and the copy runs to the source's end.
    UInt64 size = 0;
    if (!platform::getFileHandleSize(input, size)) {
        size = 0;
    }
    platform::CopyChannel channel(
        input, output,
        static_cast<UInt32>(std::min<UInt64>(kCopyStretch, std::max<UInt64>(size, kBlockSize))));
    UInt64 copied = 0;
    UInt64 reported = 0;
    for (;;) {
        UInt64 moved = 0;
        if (!channel.move(kCopyStretch, moved)) {
            return false;
        }
        copied += moved;
        bool const end = moved == 0;
        while (copied - reported >= kBlockSize || (end && reported < copied)) {
            reported = std::min<UInt64>(reported + kBlockSize, copied);
            publishProgress(event,
                            size == 0 ? 1.0 : std::min(1.0, static_cast<double>(reported) / size));
        }
        if (end) {
            break;
        }
    }
    if (copied < size) {
        return false; // the source shrank while it was copied
    }
    written.finished = true;
    publishDone(event);
    return true;
}

// deleteFile, and each file of deleteFolder (an item within its tree).
bool deleteOneFile(char const* path, bool overwrite, Items const& items) {
    kelFileDeleteEvent event(path, 0.0);
    kelCancelActionEvent cancel;
    publish(event);
    publish(cancel);
    if (cancel.isCancel()) {
        return false;
    }
    bool removable = true;
    // A link has no content of its own to overwrite: it is removed itself.
    if (overwrite && !items.isLink(path)) {
        platform::FileHandle const handle = items.openForOverwrite(path);
        removable = handle != platform::kNoFileHandle;
        if (removable) {
            HandleCloser const closer(handle);
            UInt64 size = 0;
            if (!platform::getFileHandleSize(handle, size)) {
                size = 0;
            }
            unsigned char block[kBlockSize];
            std::memset(block, ' ', sizeof block);
            kelTimer timer;
            timer.startTimer();
            double lastPoll = 0.0;
            UInt64 written = 0;
            while (written < size && !cancel.isCancel()) {
                UInt32 const put = platform::writeFileHandle(
                    handle, block,
                    static_cast<UInt32>(std::min<UInt64>(kBlockSize, size - written)));
                if (put == 0) {
                    removable = false; // not overwritten, so not removed
                    break;
                }
                written += put;
                publishProgress(event, static_cast<double>(written) / size);
                timer.stopTimer();
                if (timer.getTimer() - lastPoll > 1.0) {
                    lastPoll = timer.getTimer();
                    publish(cancel);
                }
            }
            // The spaces reach the disk before the name goes, or the old bytes might stay there.
            if (removable && !platform::flushFileHandle(handle)) {
                removable = false;
            }
        }
        if (cancel.isCancel()) {
            return false;
        }
    }
    bool removed = false;
    UInt32 word = 0;
    if (removable) {
        removed = items.removeFile(path);
        if (!removed && items.isFile(path) && items.word(path, word) &&
            items.setWord(path, platform::kAttributeNormal)) {
            // Read-only files refuse removal on Windows. The attributes come back if the
            // second try fails as well.
            removed = items.removeFile(path);
            if (!removed) {
                items.setWord(path, platform::kAttributeNormal | (word & kSettableAttributes));
            }
        }
    }
    publishDone(event);
    return removed || !items.isFile(path);
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
    for (AttributeBit const& bit : kAttributeBits) {
        if (attributes.isFlagsEnabled(bit.flag)) {
            word |= bit.word;
        }
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

bool kelFiles::processFilesOperation(kelFileOperationType const& type, kelListString const& sources,
                                     kelListString const* targets,
                                     kelFileOperationFlag const& flags) {
    UInt32 operation = 0;
    UInt32 shellFlags = 0;
    switch (type.getValue()) {
    case kelFileOperationType::Copy:
    case kelFileOperationType::Move:
        if (sources.size() == 0 || targets == nullptr || targets->size() != 1) {
            return false;
        }
        operation = type.getValue() == kelFileOperationType::Copy ? platform::kShellCopy
                                                                  : platform::kShellMove;
        break;
    case kelFileOperationType::Delete:
        if (targets != nullptr) {
            return false;
        }
        operation = platform::kShellDelete;
        break;
    case kelFileOperationType::Rename:
        if (sources.size() == 0 || targets == nullptr || targets->size() != sources.size()) {
            return false;
        }
        operation = platform::kShellRename;
        if (sources.size() > 1) {
            operation = platform::kShellMove;
            shellFlags |= platform::kShellMultipleTargets;
        }
        break;
    default:
        return false;
    }
    // The flag holds a value, tested as a mask: 1 shows errors, 2 asks for confirmation, and 3
    // (both bits) allows undo. The mask of DisplayProgress is 0, which always holds.
    if (!flags.isFlagsEnabled(kelFileOperationFlag::ShowErrors)) {
        shellFlags |= platform::kShellNoErrorDialog;
    }
    if (!flags.isFlagsEnabled(kelFileOperationFlag::ShowConfirmation)) {
        shellFlags |= platform::kShellNoConfirmation;
    }
    if (flags.isFlagsEnabled(kelFileOperationFlag::Recycle)) {
        shellFlags |= platform::kShellAllowUndo;
    }
    kelMemoryBuffer const from = doubleZero(sources);
    kelMemoryBuffer const to = targets == nullptr ? kelMemoryBuffer() : doubleZero(*targets);
    if (from.getSize() == 0 || (targets != nullptr && to.getSize() == 0)) {
        return false; // no memory for the lists
    }
    return platform::runShellOperation(
        operation, shellFlags, reinterpret_cast<char const*>(from.getBuffer()),
        targets == nullptr ? nullptr : reinterpret_cast<char const*>(to.getBuffer()));
}

bool kelFiles::processFilesOperation(kelFileOperationType const& type, kelListString const& sources,
                                     char const* target, kelFileOperationFlag const& flags) {
    if (target == nullptr) {
        return processFilesOperation(type, sources, static_cast<kelListString const*>(nullptr),
                                     flags);
    }
    kelListString targets;
    targets.add(kelString(target));
    return processFilesOperation(type, sources, &targets, flags);
}

bool kelFiles::createFile(char const* path, UInt32 size) {
    if (fileExists(path)) {
        return false;
    }
    // Made exclusively: an item that appeared since the check is not truncated.
    platform::FileHandle const handle = platform::openFileHandle(
        path, platform::FileAccess::Write, platform::FileCreation::CreateNew, platform::kShareRead);
    if (handle == platform::kNoFileHandle) {
        return false;
    }
    WrittenFile file(handle, path);
    UInt32 remaining = size;
    for (UInt32 const block : {102400u, 1024u, 1u}) {
        if (remaining == 0) {
            break;
        }
        std::vector<unsigned char> const zeros(block, 0);
        for (; remaining >= block; remaining -= block) {
            if (!writeWhole(handle, zeros.data(), block)) {
                return false;
            }
        }
    }
    file.finished = true;
    platform::closeFileHandle(handle);
    file.handle = platform::kNoFileHandle;
    return getFileSize(path) == size;
}

bool kelFiles::createFolder(char const* path) {
    if (folderExists(path)) {
        return true;
    }
    kelListString parts;
    splitPaths(path, parts);
    // The parts lose the leading backslashes; they come back first so that "\a\b" makes
    // "\a" at the root and never "a" in the working folder.
    std::string const text = textOf(path);
    std::string partial = text.substr(0, text.find_first_not_of('\\'));
    std::size_t const root = partial.size();
    for (UInt32 i = 0; i + 1 < parts.size(); ++i) {
        if (partial.size() > root) {
            partial += '\\';
        }
        partial += parts[i].c_str();
        platform::makeFolder(partial.c_str()); // most exist already
    }
    return platform::makeFolder(path) || folderExists(path);
}

bool kelFiles::deleteFile(char const* path) {
    return deleteFile(path, false);
}

bool kelFiles::deleteFile(char const* path, bool overwrite) {
    return deleteOneFile(path, overwrite, Items{nullptr});
}

bool kelFiles::deleteFolder(char const* path) {
    return deleteFolder(path, false);
}

bool kelFiles::deleteFolder(char const* path, bool overwrite) {
    if (!folderExists(path)) {
        return true;
    }
    // Items are reached from the folder opened now: one swapped for a link after the listing
    // never leads outside. A folder that cannot be opened went a moment ago.
    platform::TreeItems tree;
    if (!tree.open(path)) {
        return !folderExists(path);
    }
    Items const within{&tree};
    kelListString items;
    kelFileCriteriaDefault criteria;
    getFiles(path, items, true, true, &criteria);
    kelCancelActionEvent cancel;
    publish(cancel);
    if (cancel.isCancel()) {
        return false;
    }
    // Descending byte order puts every item before the folder that holds it, the root last.
    items.add(kelString(path));
    kelDefaultComparator<kelString> const byText;
    items.sort(kelReverseComparator(byText));
    publish(cancel);
    if (cancel.isCancel()) {
        return false;
    }
    kelFolderDeleteEvent overall(path, 0.0);
    publish(overall);
    bool folderFailed = false;
    UInt32 const total = items.size();
    for (UInt32 done = 0; done < total && !cancel.isCancel();) {
        char const* const item = items[done].c_str();
        if (within.isFile(item)) {
            publish(cancel);
            if (cancel.isCancel()) {
                break; // nothing goes once the caller has said stop
            }
            deleteOneFile(item, overwrite, within);
        } else {
            kelFolderDeleteEvent folder(item, 0.0);
            publish(folder);
            if (!tree.removeFolder(item)) {
                folderFailed = true;
            }
            publishDone(folder);
        }
        ++done;
        publishProgress(overall, static_cast<double>(done) / total);
    }
    if (cancel.isCancel()) {
        return false;
    }
    publishDone(overall);
    return !folderFailed || !folderExists(path);
}

bool kelFiles::copyFile(char const* source, char const* target) {
    return copyOneFile(source, target, Items{nullptr});
}

bool kelFiles::copyFolder(char const* source, char const* target) {
    kelListString parts;
    splitPaths(source, parts);
    // A root ("\", "\\") has no name to copy under, and would hold the target itself. Files are
    // read from the folder opened now, never through a link on the way.
    platform::TreeItems tree;
    if (!folderExists(source) || !folderExists(target) || parts.size() == 0 || !tree.open(source)) {
        return false;
    }
    Items const within{&tree};
    // Listed before anything is made, so a target inside source copies source as it was.
    kelListString entries;
    kelFileCriteriaDefault criteria;
    getFiles(source, entries, true, true, &criteria);
    entries.sort(kelDefaultComparator<kelString>());
    kelString const root = concat(target, parts[parts.size() - 1].c_str());
    bool ok = createFolder(root.c_str());
    kelFolderCopyEvent overall(source, target, 0.0);
    publish(overall);
    // Each entry is source's text plus the rest: only that leading text goes, so that a name
    // repeating the source's text deeper down is kept.
    std::string const prefix = textOf(source);
    UInt32 const total = entries.size();
    for (UInt32 done = 0; done < total;) {
        char const* const entry = entries[done].c_str();
        char const* const relative =
            std::strncmp(entry, prefix.c_str(), prefix.size()) == 0 ? entry + prefix.size() : entry;
        kelString const targetPath = concat(root.c_str(), relative);
        UInt32 word = 0;
        bool const found = within.word(entry, word);
        if (found && (word & platform::kAttributeDirectory) == 0) {
            if (ok) {
                ok = copyOneFile(entry, targetPath.c_str(), within);
            }
        } else {
            kelFolderCopyEvent folder(entry, targetPath.c_str(), 0.0);
            publish(folder);
            // An entry gone since the listing, or now behind a link, ends the copying: what
            // follows it might lie beneath that link in the copy as well.
            if (ok) {
                ok = found && createFolder(targetPath.c_str());
            }
            publishDone(folder);
        }
        ++done;
        publishProgress(overall, static_cast<double>(done) / total);
    }
    publishDone(overall);
    return ok;
}

} // namespace KELKIT
