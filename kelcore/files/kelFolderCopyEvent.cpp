#include <kelcore/files/kelFolderCopyEvent.h>

#include <kelcore/frame/kelEventTypes.h>

namespace KELKIT {

kelFolderCopyEvent::kelFolderCopyEvent() : mProgress(0.0) {}

kelFolderCopyEvent::kelFolderCopyEvent(char const* sourcePath, char const* targetPath,
                                       double progress)
    : mSourcePath(sourcePath), mTargetPath(targetPath), mProgress(progress) {}

kelFolderCopyEvent::kelFolderCopyEvent(kelFolderCopyEvent const&) = default;

kelFolderCopyEvent& kelFolderCopyEvent::operator=(kelFolderCopyEvent const&) = default;

kelFolderCopyEvent::~kelFolderCopyEvent() = default;

UInt64 kelFolderCopyEvent::getType() const {
    return kelEventTypes::FolderCopy;
}

char const* kelFolderCopyEvent::getSourcePath() const {
    return mSourcePath.c_str();
}

char const* kelFolderCopyEvent::getTargetPath() const {
    return mTargetPath.c_str();
}

double kelFolderCopyEvent::getProgress() const {
    return mProgress;
}

void kelFolderCopyEvent::setSourcePath(char const* sourcePath) {
    mSourcePath = sourcePath;
}

void kelFolderCopyEvent::setTargetPath(char const* targetPath) {
    mTargetPath = targetPath;
}

void kelFolderCopyEvent::setProgress(double progress) {
    mProgress = progress;
}

} // namespace KELKIT
