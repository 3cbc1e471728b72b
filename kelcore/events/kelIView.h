#ifndef KELCORE_EVENTS_KELIVIEW_H
#define KELCORE_EVENTS_KELIVIEW_H

#include <kelcore/frame/kelExport.h>

namespace KELKIT {

class kelIController;

// The view of a model-view-controller triad. A view that cannot draw now says so through
// isViewDeferred and is marked dirty instead of updated.
class KELCORE_API kelIView {
public:
    kelIView() = default;
    kelIView(kelIView const&) = default;
    kelIView& operator=(kelIView const&) = default;
    virtual ~kelIView();

    virtual bool isViewDirty() const = 0;
    virtual void setViewDirty(bool dirty) = 0;
    // Anything but 0 puts the update off.
    virtual int isViewDeferred() = 0;
    virtual void updateView() = 0;
    virtual void setController(kelIController* controller) = 0;
    virtual kelIController* getController() = 0;
};

} // namespace KELKIT

#endif
