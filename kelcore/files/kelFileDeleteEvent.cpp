#include <kelcore/files/kelFileDeleteEvent.h>

#include <kelcore/frame/kelEventTypes.h>

namespace KELKIT {

kelFileDeleteEvent::kelFileDeleteEvent() : mProgress(0.0) {}

kelFileDeleteEvent::kelFileDeleteEvent(char const* path, double progress)
    : mPath(path), mProgress(progress) {}

kelFileDeleteEvent::kelFileDeleteEvent(kelFileDeleteEvent const&) = default;

kelFileDeleteEvent& kelFileDeleteEvent::operator=(kelFileDeleteEvent const&) = default;

kelFileDeleteEvent::~kelFileDeleteEvent() = default;

UInt64 kelFileDeleteEvent::getType() const {
    return kelEventTypes::FileDelete;
}

char const* kelFileDeleteEvent::getPath() const {
    return mPath.c_str();
}

double kelFileDeleteEvent::getProgress() const {
    return mProgress;
}

void kelFileDeleteEvent::setPath(char const* path) {
    mPath = path;
}

void kelFileDeleteEvent::setProgress(double progress) {
    mProgress = progress;
}

} // namespace KELKIT
