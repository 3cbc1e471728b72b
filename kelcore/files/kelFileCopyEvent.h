#ifndef KELCORE_FILES_KELFILECOPYEVENT_H
#define KELCORE_FILES_KELFILECOPYEVENT_H

#include <kelcore/events/kelEvent.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The progress of kelFiles::copyFile: published at 0.0, after each block and at 1.0.
// Progress runs from 0.0 to 1.0. The event holds its own copies of the path texts; a null text
// is taken as empty.
class KELCORE_API kelFileCopyEvent : public kelEvent {
public:
    kelFileCopyEvent();
    kelFileCopyEvent(char const* sourcePath, char const* targetPath, double progress);
    kelFileCopyEvent(kelFileCopyEvent const& other);
    kelFileCopyEvent& operator=(kelFileCopyEvent const& other);
    ~kelFileCopyEvent() override;

    // kelEventTypes::FileCopy (0).
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
