// Time and concurrency: schedules, locks, threads and the event bus, shared memory.

#include "tour.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <string>

namespace tour {

void schedules() {
    kelTime start(0ull);
    require(start.fromString("2024/01/31 09:30:00"), "kelTime::fromString refused the start");
    kelSchedule monthly;
    monthly.setRepetitive(start, 1, RepetitiveType::Months);
    std::printf("%s\n", monthly.toString().c_str());
    std::printf("(no February 31st: see where the walk goes on from January 31st)\n");
    for (char const* when : {"2024/02/29 09:30:00", "2024/03/02 09:30:00", "2024/04/02 09:30:20"}) {
        kelTime t(0ull);
        require(t.fromString(when), "kelTime::fromString refused a date");
        std::printf("  matches %s: %s\n", when, yesNo(monthly.matches(t)));
    }
    kelSchedule read;
    require(read.fromString("Montly on July,January 15th at 07:05"), "kelSchedule::fromString");
    std::printf("read back as:   %s\n", read.toString().c_str());
}

void locks() {
    kelCriticalSection lock;
    lock.enter();
    lock.enter(); // re-entrant: the holder may enter again
    lock.leave();
    lock.leave();
    std::printf("entered a critical section twice and left it twice\n");
    std::string const name = "kelcore-tour-" + std::to_string(processId());
    std::printf("named mutex \"%s\" exists before: %s\n", name.c_str(),
                yesNo(kelMutex::exist(name.c_str())));
    {
        kelMutex named(name.c_str());
        named.reserve();
        std::printf("while one object holds it, it exists: %s\n",
                    yesNo(kelMutex::exist(name.c_str())));
        named.release();
    }
    std::printf("after the last object went: %s\n", yesNo(kelMutex::exist(name.c_str())));
}

namespace {

// Counts the heartbeats named "tour" that reach it through the event bus.
class TourListener : public kelEventNotifier {
public:
    void onEvent(kelEvent* event) override {
        if (event->getType() == kelEventTypes::HeartBeat &&
            kelString(static_cast<kelHeartBeat*>(event)->getName()) == "tour") {
            ++beats;
        }
    }
    std::atomic<int> beats{0};
};

// Handles event 10 on its own thread.
class TourWorker : public kelEventThread {
public:
    ~TourWorker() override { stopThread(); }
    void onThreadEvent(UInt32 id) override {
        std::printf("event thread handled event %u\n", static_cast<unsigned>(id));
        handled = true;
    }
    std::atomic<bool> handled{false};
};

} // namespace

void threadsAndEvents() {
    TourWorker worker;
    require(worker.createEvent(10), "createEvent(10) returned false");
    require(worker.startThread(), "startThread returned false");
    worker.triggerEvent(10);
    for (int waited = 0; !worker.handled && waited < 10000; ++waited) {
        kelThread::sleep(1);
    }
    worker.stopThread();
    require(worker.handled, "the event thread did not handle event 10 within 10 s");

    TourListener listener;
    {
        Listening listening(&listener);
        kelHeartBeat* beat = kelScheduler::getInstance().createHeartBeat("tour", 200);
        require(beat != nullptr, "createHeartBeat returned null");
        kelThread::sleep(1000);
        kelScheduler::getInstance().deleteHeartBeat(beat);
    }
    std::printf("a 200 ms heartbeat beat %d times in one second\n", listener.beats.load());

    kelCancelActionEvent cancel;
    kelEventPublisher::getInstance().publishEvent(&cancel);
    std::printf("nobody cancelled: %s\n", cancel.isCancel() ? "cancelled" : "not cancelled");
}

void sharedMemory() {
    std::string const name = "kelcore-tour-" + std::to_string(processId());
    std::printf("block \"%s\" exists before: %s\n", name.c_str(),
                yesNo(kelSharedMemory::exist(name.c_str())));
    kelSharedMemory writer;
    require(writer.connect(name.c_str(), 100), "the first connect returned false");
    std::printf("first connection asked for 100 bytes and got %u (whole pages), exists: %s\n",
                static_cast<unsigned>(writer.getSize()),
                yesNo(kelSharedMemory::exist(name.c_str())));
    char const message[] = "hello from the first connection";
    writer.lock();
    std::memcpy(writer.getBuffer(), message, sizeof message);
    writer.unlock();

    // Another process would do the same; this one connects a second time itself.
    kelSharedMemory reader;
    require(reader.connect(name.c_str(), 1), "the second connect returned false");
    reader.lock();
    char const* bytes = reinterpret_cast<char const*>(reader.getBuffer());
    std::string const got(bytes, std::find(bytes, bytes + reader.getSize(), '\0'));
    reader.unlock();
    std::printf("second connection (asked for 1 byte) sees %u bytes holding \"%s\"\n",
                static_cast<unsigned>(reader.getSize()), got.c_str());
    require(writer.disconnect(), "the first disconnect returned false");
    std::printf("first disconnected; the block exists: %s\n",
                yesNo(kelSharedMemory::exist(name.c_str())));
    require(reader.disconnect(), "the second disconnect returned false");
    std::printf("second disconnected; the block exists: %s\n",
                yesNo(kelSharedMemory::exist(name.c_str())));
}

} // namespace tour
