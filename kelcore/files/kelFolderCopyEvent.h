#ifndef KELCORE_FILES_KELFOLDERCOPYEVENT_H
#define KELCORE_FILES_KELFOLDERCOPYEVENT_H

#include <kelcore/events/kelEvent.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The progress of kelFiles::copyFolder, overall (the two folders given) and for each folder made.
// Progress runs from 0.0 to 1.0. The event holds its own copies of the path texts; a null text
// is taken as empty.
class KELCORE_API kelFolderCopyEvent : public kelEvent {
public:
    kelFolderCopyEvent();
    kelFolderCopyEvent(char const* sourcePath, char const* targetPath, double progress);
    kelFolderCopyEvent(kelFolderCopyEvent const& other);
    kelFolderCopyEvent& operator=(kelFolderCopyEvent const& other);
    ~kelFolderCopyEvent() override;

    // kelEventTypes::FolderCopy (1).
    UInt64 getType() const override;

    char const* getSourcePath() const;
    char const* getTargetPath() const;
    double getProgress() const;
    void setSourcePath(char const* sourcePath);
    void setTargetPath(char const* targetPath);
    void setProgress(double progress);

private:
    kelString mSourcePath;
    kelString mTargetPath;
    double mProgress;
};

} // namespace KELKIT

#endif
