#include <kelcore/events/kelEventPublisher.h>

#include <kelcore/internal/kelEntered.h>
#include <kelcore/internal/kelPublisherLifetime.h>

#include <atomic>

namespace KELKIT {

using internal::Entered;

namespace {

// Constant-initialised and never destroyed, so that it can be read at any point of exit.
std::atomic<bool> gSingletonGone{false};

} // namespace

namespace internal {

bool isPublisherGone() {
    return gSingletonGone.load();
}

} // namespace internal

kelEventPublisher::kelEventPublisher() : mSingleton(true) {}

kelEventPublisher::kelEventPublisher(kelEventPublisher const& other)
    : mNotifiers(other.mNotifiers), mLock(other.mLock), mSingleton(false) {}

kelEventPublisher& kelEventPublisher::operator=(kelEventPublisher const& other) {
    if (this != &other) {
        mNotifiers = other.mNotifiers;
        mLock = other.mLock;
    }
    return *this;
}

kelEventPublisher::~kelEventPublisher() {
    // No lock here: on Windows the singleton goes after the other threads have been ended,
    // and one of them may have died holding it.
    if (mSingleton) {
        gSingletonGone.store(true);
    }
}

void kelEventPublisher::publishEvent(kelEvent* event) {
    Entered const entered(mLock);
    // The size is read afresh at each step: notifiers may change the list during the pass.
    for (UInt32 index = 0; index < mNotifiers.size(); ++index) {
        mNotifiers.get(index)->onEvent(event);
    }
}

void kelEventPublisher::registerNotifier(kelEventNotifier* notifier) {
    Entered const entered(mLock);
    if (!mNotifiers.contains(notifier)) {
        mNotifiers.add(notifier);
    }
}

void kelEventPublisher::unregisterNotifier(kelEventNotifier* notifier) {
    Entered const entered(mLock);
    mNotifiers.erase(notifier);
}

void kelEventPublisher::getNotifiers(kelListEventNotifierPtr& notifiers) {
    Entered const entered(mLock);
    notifiers = mNotifiers;
}

kelEventPublisher& kelEventPublisher::getInstance() {
    static kelEventPublisher instance;
    return instance;
}

} // namespace KELKIT
