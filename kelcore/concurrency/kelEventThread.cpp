#include <kelcore/concurrency/kelEventThread.h>

#include <kelcore/platform/kelEventTable.h>

namespace KELKIT {

const UInt32 kelEventThread::MAX_EVENTS = 100;
const UInt32 kelEventThread::THREAD_NEW_EVENT = 0;
const UInt32 kelEventThread::THREAD_EXIT_EVENT = 1;

namespace {
constexpr UInt32 kCapacity = 100;
}

// The ids, parallel to the entries of the platform's event table.
struct kelEventThread::Events {
    UInt32 ids[kCapacity] = {};
    UInt32 count = 0;
    std::shared_ptr<platform::EventTable> table = platform::createEventTable(kCapacity);
};

namespace {

class Locked {
public:
    explicit Locked(kelBaseThread& thread) : mThread(thread) { mThread.lock(); }
    ~Locked() { mThread.unlock(); }
    Locked(Locked const&) = delete;
    Locked& operator=(Locked const&) = delete;

private:
    kelBaseThread& mThread;
};

} // namespace

kelEventThread::kelEventThread() : mEvents(std::make_shared<Events>()) {
    static_assert(kCapacity >= 2, "room for the two reserved events");
    createEvent(THREAD_NEW_EVENT);
    createEvent(THREAD_EXIT_EVENT);
}

kelEventThread::kelEventThread(kelEventThread const& other) = default;

kelEventThread& kelEventThread::operator=(kelEventThread const& other) = default;

kelEventThread::~kelEventThread() {
    // The events themselves go with the last copy's reference to them.
    stopThread();
}

void kelEventThread::stopThread() {
    triggerEvent(THREAD_EXIT_EVENT);
    kelBaseThread::stopThread();
}

bool kelEventThread::findEventHandle(UInt32 id, UInt32& index) const {
    for (UInt32 i = 0; i < mEvents->count; ++i) {
        if (mEvents->ids[i] == id) {
            index = i;
            return true;
        }
    }
    return false;
}

bool kelEventThread::isStopRequested() {
    return isEventTriggered(THREAD_EXIT_EVENT);
}

bool kelEventThread::createEvent(UInt32 id) {
    Locked const locked(*this);
    UInt32 existing = 0;
    if (mEvents->count >= MAX_EVENTS || !mEvents->table || findEventHandle(id, existing)) {
        return false;
    }
    if (!platform::addEventEntry(*mEvents->table)) {
        return false;
    }
    mEvents->ids[mEvents->count] = id;
    ++mEvents->count;
    // A waiting thread leaves its wait and waits again on the grown table.
    triggerEvent(THREAD_NEW_EVENT);
    return true;
}

void kelEventThread::triggerEvent(UInt32 id) {
    Locked const locked(*this);
    UInt32 index = 0;
    if (findEventHandle(id, index)) {
        platform::setEventEntry(*mEvents->table, index);
    }
}

bool kelEventThread::isEventTriggered(UInt32 id) {
    Locked const locked(*this);
    UInt32 index = 0;
    return findEventHandle(id, index) && platform::isEventEntrySet(*mEvents->table, index);
}

void kelEventThread::onThreadEvent(UInt32 /*id*/) {}

void kelEventThread::thread() {
    std::shared_ptr<Events> const events = mEvents;
    if (!events->table) {
        return;
    }
    for (;;) {
        UInt32 count = 0;
        {
            Locked const locked(*this);
            count = events->count;
        }
        UInt32 index = 0;
        // A wait that fails would fail again at once: the loop ends rather than spin.
        if (!platform::waitForEventEntry(*events->table, count, index)) {
            return;
        }
        UInt32 id = 0;
        {
            Locked const locked(*this);
            id = events->ids[index];
        }
        if (id == THREAD_EXIT_EVENT) {
            return;
        }
        if (id != THREAD_NEW_EVENT) {
            onThreadEvent(id);
        }
        // After the handler: a trigger of the same id during the call is absorbed here.
        platform::resetEventEntry(*events->table, index);
    }
}

} // namespace KELKIT
