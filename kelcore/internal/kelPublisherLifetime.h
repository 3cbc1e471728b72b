#ifndef KELCORE_INTERNAL_KELPUBLISHERLIFETIME_H
#define KELCORE_INTERNAL_KELPUBLISHERLIFETIME_H

namespace KELKIT {
namespace internal {

// True once the kelEventPublisher singleton has been destroyed at exit; a thread that could
// outlive it asks before publishing.
bool isPublisherGone();

} // namespace internal
} // namespace KELKIT

#endif
