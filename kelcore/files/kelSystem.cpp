#include <kelcore/files/kelSystem.h>

#include <kelcore/files/kelEnv.h>
#include <kelcore/platform/kelSystemInfo.h>

namespace KELKIT {

kelSystem::kelSystem() = default;

kelSystem::kelSystem(kelSystem const&) = default;

kelSystem& kelSystem::operator=(kelSystem const&) = default;

kelSystem::~kelSystem() = default;

kelSize kelSystem::getScreenResolution() {
    UInt32 width = 0;
    UInt32 height = 0;
    platform::screenSize(width, height);
    return kelSize(width, height);
}

kelString kelSystem::getPathSeparator() {
    return kelString("\\");
}

char const* kelSystem::getLineSeparator() {
    return "\r\n";
}

kelListDrive kelSystem::getDrives() {
    kelListDrive drives;
    for (platform::DriveEntry const& entry : platform::listDrives()) {
        drives.add(kelDrive(entry.letter, entry.label.c_str(), kelDriveType(entry.type)));
    }
    return drives;
}

UInt32 kelSystem::getLastError() {
    return platform::lastErrorCode();
}

kelString kelSystem::getLastErrorMessage() {
    return getErrorMessage(getLastError());
}

kelString kelSystem::getErrorMessage(UInt32 code) {
    return kelString(platform::errorText(code).c_str());
}

kelString kelSystem::getTempFolder() {
    kelString folder;
    kelEnv::getEnvVar("TEMP", folder);
    return folder;
}

kelString kelSystem::getUserRoamingFolder() {
    return kelString(platform::knownFolder(platform::KnownFolder::UserRoaming).c_str());
}

kelString kelSystem::getAllUsersDocumentsFolder() {
    return kelString(platform::knownFolder(platform::KnownFolder::AllUsersDocuments).c_str());
}

kelString kelSystem::getUserSettingsFolder() {
    return kelString(platform::knownFolder(platform::KnownFolder::UserSettings).c_str());
}

kelString kelSystem::getUserDocumentsFolder() {
    return kelString(platform::knownFolder(platform::KnownFolder::UserDocuments).c_str());
}

} // namespace KELKIT
