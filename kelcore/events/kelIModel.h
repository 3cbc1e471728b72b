#ifndef KELCORE_EVENTS_KELIMODEL_H
#define KELCORE_EVENTS_KELIMODEL_H

#include <kelcore/events/kelListIView.h>

namespace KELKIT {

// The model of a model-view-controller triad: it holds its views and tells them of changes.
class KELCORE_API kelIModel {
public:
    kelIModel() = default;
    kelIModel(kelIModel const&) = default;
    kelIModel& operator=(kelIModel const&) = default;
    virtual ~kelIModel();

    virtual void addView(kelIView* view) = 0;
    virtual bool removeView(kelIView* view) = 0;
    virtual bool removeViews() = 0;
    virtual kelListIView getViews() = 0;
    virtual void notifyViews() = 0;
};

} // namespace KELKIT

#endif
