#ifndef KELCORE_FILES_KELFILEDELETEEVENT_H
#define KELCORE_FILES_KELFILEDELETEEVENT_H

#include <kelcore/events/kelEvent.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The progress of kelFiles::deleteFile: published at 0.0, after each overwritten block and at 1.0.
// Progress runs from 0.0 to 1.0. The event holds its own copy of the path text; a null text is
// taken as empty.
class KELCORE_API kelFileDeleteEvent : public kelEvent {
public:
    kelFileDeleteEvent();
    kelFileDeleteEvent(char const* path, double progress);
    kelFileDeleteEvent(kelFileDeleteEvent const& other);
    kelFileDeleteEvent& operator=(kelFileDeleteEvent const& other);
    ~kelFileDeleteEvent() override;

    // kelEventTypes::FileDelete (2).
    UInt64 getType() const override;

    char const* getPath() const;
    double getProgress() const;
    void setPath(char const* path);
    void setProgress(double progress);

private:
    kelString mPath;
    double mProgress;
};

} // namespace KELKIT

#endif
