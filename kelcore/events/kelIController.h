#ifndef KELCORE_EVENTS_KELICONTROLLER_H
#define KELCORE_EVENTS_KELICONTROLLER_H

#include <kelcore/events/kelListIModel.h>

namespace KELKIT {

// The controller of a model-view-controller triad: it lists the models that it changes.
class KELCORE_API kelIController {
public:
    kelIController() = default;
    kelIController(kelIController const&) = default;
    kelIController& operator=(kelIController const&) = default;
    virtual ~kelIController();

    virtual void addModel(kelIModel* model) = 0;
    virtual bool removeModel(kelIModel* model) = 0;
    virtual bool removeModels() = 0;
    virtual kelListIModel getModels() = 0;
};

} // namespace KELKIT

#endif
