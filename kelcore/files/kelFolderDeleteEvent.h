#ifndef KELCORE_FILES_KELFOLDERDELETEEVENT_H
#define KELCORE_FILES_KELFOLDERDELETEEVENT_H

#include <kelcore/events/kelEvent.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The progress of kelFiles::deleteFolder, overall (the folder given) and for each folder removed.
// Progress runs from 0.0 to 1.0. The event holds its own copy of the path text; a null text is
// taken as empty.
class KELCORE_API kelFolderDeleteEvent : public kelEvent {
public:
    kelFolderDeleteEvent();
    kelFolderDeleteEvent(char const* path, double progress);
    kelFolderDeleteEvent(kelFolderDeleteEvent const& other);
    kelFolderDeleteEvent& operator=(kelFolderDeleteEvent const& other);
    ~kelFolderDeleteEvent() override;

    // kelEventTypes::FolderDelete (3).
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
