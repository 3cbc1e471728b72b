#include <kelcore/platform/kelSystemInfo.h>

#include <kelcore/platform/kelEnvironment.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mntent.h>
#include <pwd.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

namespace fs = std::filesystem;

namespace {

bool readFirstLine(std::string const& path, std::string& line) {
    std::ifstream in(path);
    return static_cast<bool>(std::getline(in, line));
}

// "1920x1080" (a connector's mode) or "1920,1080" (a frame buffer's size).
bool parseSize(std::string const& text, char separator, UInt32& width, UInt32& height) {
    char* end = nullptr;
    unsigned long const w = std::strtoul(text.c_str(), &end, 10);
    if (end == text.c_str() || *end != separator) {
        return false;
    }
    char const* rest = end + 1;
    unsigned long const h = std::strtoul(rest, &end, 10);
    if (end == rest || w == 0 || h == 0 || w > UINT32_MAX || h > UINT32_MAX) {
        return false;
    }
    width = static_cast<UInt32>(w);
    height = static_cast<UInt32>(h);
    return true;
}

bool isOneOf(char const* value, std::initializer_list<char const*> names) {
    return std::any_of(names.begin(), names.end(),
                       [value](char const* name) { return std::strcmp(value, name) == 0; });
}

bool isRemote(char const* fsType) {
    return isOneOf(fsType,
                   {"nfs", "nfs4", "cifs", "smb3", "smbfs", "ncpfs", "afs", "ceph", "9p", "davfs",
                    "glusterfs", "lustre", "fuse.sshfs", "fuse.glusterfs", "fuse.rclone"});
}

// Whether the block device behind a mount's source says it is removable: the device's own
// "removable" flag, or its parent's for a partition.
bool isRemovableDevice(char const* source) {
    char* device = ::realpath(source, nullptr);
    if (device == nullptr) {
        return false;
    }
    std::string const name = fs::path(device).filename().string();
    std::free(device);
    std::error_code error;
    fs::path const node = fs::canonical("/sys/class/block/" + name, error);
    if (error) {
        return false;
    }
    std::string flag;
    if (!readFirstLine((node / "removable").string(), flag)) {
        readFirstLine((node.parent_path() / "removable").string(), flag);
    }
    return flag == "1";
}

// Local file systems on a device, remote ones, and RAM or overlay roots; Unknown for the
// rest.
kelDriveType::Enum classify(mntent const& mount) {
    if (isRemote(mount.mnt_type)) {
        return kelDriveType::Remote;
    }
    if (isOneOf(mount.mnt_type, {"iso9660", "udf"})) {
        return kelDriveType::CdRom;
    }
    if (isOneOf(mount.mnt_type, {"tmpfs", "ramfs"})) {
        return kelDriveType::RamDisk;
    }
    if (std::strncmp(mount.mnt_fsname, "/dev/", 5) == 0 &&
        !isOneOf(mount.mnt_type, {"squashfs", "devtmpfs"})) {
        return isRemovableDevice(mount.mnt_fsname) ? kelDriveType::Removable : kelDriveType::Fixed;
    }
    return kelDriveType::Unknown;
}

// A POSIX path handed back as a library path; empty when it cannot be named through the
// library (it holds a backslash) or is not absolute.
std::string toLibraryPath(std::string const& path) {
    if (path.empty() || path[0] != '/' || path.find('\\') != std::string::npos) {
        return std::string();
    }
    // "/home/u/" + "/.config" names /home/u/.config: repeated and trailing slashes go.
    std::string result;
    for (char const c : path) {
        if (c != '/' || result.empty() || result.back() != '\\') {
            result += c == '/' ? '\\' : c;
        }
    }
    if (result.size() > 1 && result.back() == '\\') {
        result.pop_back();
    }
    return result;
}

std::string homeFolder() {
    std::string home;
    if (getEnvironmentVariable("HOME", home) && !home.empty() && home[0] == '/') {
        return home;
    }
    long const size = ::sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(size > 0 ? static_cast<std::size_t>(size) : 16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->pw_dir != nullptr && found->pw_dir[0] == '/') {
        return found->pw_dir;
    }
    return std::string();
}

// An XDG base folder: the variable when it holds an absolute path (relative ones are to be
// ignored), else the fallback under the home folder.
std::string xdgFolder(char const* variable, char const* underHome) {
    std::string value;
    if (getEnvironmentVariable(variable, value) && !value.empty() && value[0] == '/') {
        return value;
    }
    std::string const home = homeFolder();
    return home.empty() ? home : home + underHome;
}

// The value of a user-dirs entry: "$HOME/..." or an absolute path, in double quotes with
// backslash escapes. Empty when it is neither.
std::string userDirValue(std::string const& text, std::string const& home) {
    std::string value;
    if (!text.empty() && text[0] == '"') {
        for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
            if (text[i] == '\\' && i + 1 < text.size()) {
                ++i;
            }
            value += text[i];
        }
    } else {
        value = text.substr(0, text.find_first_of(" \t\r"));
    }
    if (value.compare(0, 5, "$HOME") == 0 && (value.size() == 5 || value[5] == '/')) {
        return home.empty() ? std::string() : home + value.substr(5);
    }
    return !value.empty() && value[0] == '/' ? value : std::string();
}

// The documents folder of the user-dirs file, else $XDG_DOCUMENTS_DIR, else ~/Documents.
std::string documentsFolder() {
    std::string const home = homeFolder();
    std::string const config = xdgFolder("XDG_CONFIG_HOME", "/.config");
    std::string found;
    if (!config.empty()) {
        std::ifstream in(config + "/user-dirs.dirs");
        std::string line;
        std::string const key = "XDG_DOCUMENTS_DIR=";
        while (std::getline(in, line)) {
            std::size_t const start = line.find_first_not_of(" \t");
            if (start != std::string::npos && line.compare(start, key.size(), key) == 0) {
                // As in a shell, a later assignment wins.
                found = userDirValue(line.substr(start + key.size()), home);
            }
        }
    }
    if (found.empty() && getEnvironmentVariable("XDG_DOCUMENTS_DIR", found) &&
        (found.empty() || found[0] != '/')) {
        found.clear();
    }
    if (found.empty() && !home.empty()) {
        found = home + "/Documents";
    }
    return found;
}

} // namespace

void screenSize(UInt32& width, UInt32& height) {
    width = 0;
    height = 0;
    // Without linking a display server, the first connected output's preferred mode (the first
    // line of its mode list) stands for the primary screen; the frame buffer comes next.
    std::error_code error;
    std::vector<fs::path> connectors;
    for (fs::directory_iterator it("/sys/class/drm", error), end; !error && it != end;
         it.increment(error)) {
        connectors.push_back(it->path());
    }
    std::sort(connectors.begin(), connectors.end());
    std::string line;
    for (fs::path const& connector : connectors) {
        if (readFirstLine((connector / "status").string(), line) && line == "connected" &&
            readFirstLine((connector / "modes").string(), line) &&
            parseSize(line, 'x', width, height)) {
            return;
        }
    }
    if (readFirstLine("/sys/class/graphics/fb0/virtual_size", line)) {
        parseSize(line, ',', width, height);
    }
}

std::vector<DriveEntry> listDrives() {
    // One drive per mounted local or remote file system, root first, then in mount order,
    // lettered from C to Z. Pseudo file systems, mounts over single files, squashed images and
    // a mount point seen before (only its first mount is listed) are left out.
    std::vector<DriveEntry> drives;
    std::FILE* table = ::setmntent("/proc/self/mounts", "r");
    if (table == nullptr) {
        return drives;
    }
    std::vector<char> buffer(16384);
    mntent entry{};
    bool haveRoot = false;
    DriveEntry root{'C', "\\", kelDriveType::Unknown};
    std::vector<DriveEntry> others;
    std::set<std::string> seen;
    while (::getmntent_r(table, &entry, buffer.data(), static_cast<int>(buffer.size()))) {
        std::string const dir = entry.mnt_dir;
        if (dir == "/") {
            // The last mount on the root is the one in effect.
            haveRoot = true;
            root.type = classify(entry);
            continue;
        }
        if (!seen.insert(dir).second) {
            continue;
        }
        kelDriveType::Enum const type = classify(entry);
        if (type == kelDriveType::Unknown || type == kelDriveType::RamDisk) {
            continue;
        }
        // Remote folders are not asked: a server that went away would hang the call.
        struct stat info {};
        if (type != kelDriveType::Remote &&
            (::stat(entry.mnt_dir, &info) != 0 || !S_ISDIR(info.st_mode))) {
            continue;
        }
        std::string label = toLibraryPath(dir);
        if (!label.empty()) {
            others.push_back(DriveEntry{0, label, type});
        }
    }
    ::endmntent(table);
    if (haveRoot) {
        drives.push_back(root);
    }
    for (DriveEntry& drive : others) {
        if (drives.size() == 'Z' - 'C' + 1) {
            break;
        }
        drive.letter = static_cast<char>('C' + drives.size());
        drives.push_back(drive);
    }
    return drives;
}

UInt32 lastErrorCode() {
    return static_cast<UInt32>(errno);
}

std::string errorText(UInt32 code) {
    // strerror_r would answer "Unknown error N" for a code without a message.
    char const* text = code <= INT_MAX ? ::strerrordesc_np(static_cast<int>(code)) : nullptr;
    return text != nullptr ? std::string(text) : std::string();
}

std::string knownFolder(KnownFolder folder) {
    // The folders are named, not made: a folder that does not exist yet is still the answer.
    switch (folder) {
    case KnownFolder::UserRoaming:
        return toLibraryPath(xdgFolder("XDG_CONFIG_HOME", "/.config"));
    case KnownFolder::UserSettings:
        return toLibraryPath(xdgFolder("XDG_DATA_HOME", "/.local/share"));
    case KnownFolder::UserDocuments:
        return toLibraryPath(documentsFolder());
    case KnownFolder::AllUsersDocuments:
        return toLibraryPath("/usr/share");
    }
    return std::string();
}

} // namespace platform
} // namespace KELKIT
