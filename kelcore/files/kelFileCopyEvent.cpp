#include <kelcore/files/kelFileCopyEvent.h>

#include <kelcore/frame/kelEventTypes.h>

namespace KELKIT {

kelFileCopyEvent::kelFileCopyEvent() : mProgress(0.0) {}

kelFileCopyEvent::kelFileCopyEvent(char const* sourcePath, char const* targetPath, double progress)
    : mSourcePath(sourcePath), mTargetPath(targetPath), mProgress(progress) {}

kelFileCopyEvent::kelFileCopyEvent(kelFileCopyEvent const&) = default;

kelFileCopyEvent& kelFileCopyEvent::operator=(kelFileCopyEvent const&) = default;

kelFileCopyEvent::~kelFileCopyEvent() = default;

UInt64 kelFileCopyEvent::getType() const {
    return kelEventTypes::FileCopy;
}

char const* kelFileCopyEvent::getSourcePath() const {
    return mSourcePath.c_str();
}

char const* kelFileCopyEvent::getTargetPath() const {
    return mTargetPath.c_str();
}

double kelFileCopyEvent::getProgress() const {
    return mProgress;
}

void kelFileCopyEvent::setSourcePath(char const* sourcePath) {
    mSourcePath = sourcePath;
}

void kelFileCopyEvent::setTargetPath(char const* targetPath) {
    mTargetPath = targetPath;
}

void kelFileCopyEvent::setProgress(double progress) {
    mProgress = progress;
}

} // namespace KELKIT
