#include <kelcore/files/kelFolderDeleteEvent.h>

#include <kelcore/frame/kelEventTypes.h>

namespace KELKIT {

kelFolderDeleteEvent::kelFolderDeleteEvent() : mProgress(0.0) {}

kelFolderDeleteEvent::kelFolderDeleteEvent(char const* path, double progress)
    : mPath(path), mProgress(progress) {}

kelFolderDeleteEvent::kelFolderDeleteEvent(kelFolderDeleteEvent const&) = default;

kelFolderDeleteEvent& kelFolderDeleteEvent::operator=(kelFolderDeleteEvent const&) = default;

kelFolderDeleteEvent::~kelFolderDeleteEvent() = default;

UInt64 kelFolderDeleteEvent::getType() const {
    return kelEventTypes::FolderDelete;
}

char const* kelFolderDeleteEvent::getPath() const {
    return mPath.c_str();
}

double kelFolderDeleteEvent::getProgress() const {
    return mProgress;
}

void kelFolderDeleteEvent::setPath(char const* path) {
    mPath = path;
}

void kelFolderDeleteEvent::setProgress(double progress) {
    mProgress = progress;
}

} // namespace KELKIT
