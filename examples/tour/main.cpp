// A short walk through kelcore: each section shows one subsystem at work.

#include <kelcore/kelcore.h>

#include <atomic>
#include <cstdio>

using namespace KELKIT;

namespace {

void section(char const* title) {
    std::printf("\n== %s ==\n", title);
}

void hexDump(UInt8 const* bytes, UInt32 size) {
    for (UInt32 i = 0; i < size; ++i) {
        std::printf("%02X%s", bytes[i], (i % 16 == 15 || i + 1 == size) ? "\n" : " ");
    }
}

void text() {
    section("Text");
    kelString greeting("  hello, kelcore  ");
    std::printf("original:        [%s]\n", greeting.c_str());
    greeting.trim();
    std::printf("trimmed:         [%s]\n", greeting.c_str());
    greeting.makeUpper();
    std::printf("upper case:      [%s]\n", greeting.c_str());
    UInt32 pos = 0;
    if (greeting.find("KEL", pos)) {
        std::printf("found KEL at:    %u\n", static_cast<unsigned>(pos));
    }
    UInt32 count = greeting.replace("L", "l");
    std::printf("replaced %u L:    [%s]\n", static_cast<unsigned>(count), greeting.c_str());
    std::printf("last 7:          [%s]\n", greeting.subStringRight(7).c_str());
    std::printf("hash of abc:     %u (same as cba: %u)\n",
                static_cast<unsigned>(kelString("abc").getHashCode()),
                static_cast<unsigned>(kelString("cba").getHashCode()));
}

void serialization() {
    section("Serialization round trip");
    kelBinarySerializer out;
    out.serialize(static_cast<UInt32>(2026));
    out.serialize(static_cast<SInt16>(-2));
    out.serialize(1.0f);
    kelString("kelcore").serializeTo(out);
    std::printf("wrote UInt32 2026, SInt16 -2, Float32 1.0 and the text \"kelcore\": %u bytes\n",
                static_cast<unsigned>(out.getSize()));
    hexDump(out.getBufferC(), out.getSize());

    kelBinarySerializer in;
    in.loadData(out.getBufferC(), out.getSize());
    UInt32 year = 0;
    SInt16 minusTwo = 0;
    Float32 one = 0;
    kelString name;
    in.deserialize(year);
    in.deserialize(minusTwo);
    in.deserialize(one);
    name.deserializeFrom(in);
    std::printf("read back: %u, %d, %.1f, \"%s\"\n", static_cast<unsigned>(year), minusTwo,
                static_cast<double>(one), name.c_str());
}

void failure() {
    section("Failure");
    UInt8 block[10] = {0xFF, 0xFF, 0xFF, 0xFF};
    kelMemorySerializer hostile(block, sizeof block);
    kelString victim("untouched");
    std::printf("reading a text whose length field says 4294967295 from a 10-byte block...\n");
    try {
        victim.deserializeFrom(hostile);
    } catch (kelException const& e) {
        std::printf("caught kelException: \"%s\" (%s, line %u)\n", e.getDescription(),
                    e.getSourceFile(), static_cast<unsigned>(e.getLineNumber()));
    }
    std::printf("the text is still [%s]\n", victim.c_str());
}

void conversions() {
    section("Conversions");
    std::printf("toString(3.14159265):  %s (six significant digits)\n",
                kelStringConverter::toString(3.14159265).c_str());
    std::printf("toUInt32(\"42abc\"):     %u (the leading number counts)\n",
                static_cast<unsigned>(kelStringConverter::toUInt32("42abc")));
    std::printf("toHex(UInt16 0xBEEF):  %s\n",
                kelStringConverter::toHex(static_cast<UInt16>(0xBEEF)).c_str());
}

void identities() {
    section("Enumerations and identity values");
    kelMonth month(kelMonth::December);
    month.next();
    std::printf("the month after December: %s\n", month.toString());
    ScheduleType type;
    type = "Montly";
    std::printf("ScheduleType \"Montly\" has the value %d\n", type.getValue());
    kelVersion version(2, 0, 0, 437);
    std::printf("version %s; with Trim, 2.1.0.0 prints as %s\n", version.toString().c_str(),
                kelVersion(2, 1, 0, 0).toString().c_str());
    kelGuid guid;
    std::printf("a fresh identifier: %s\n", guid.toString().c_str());
    std::printf("sequence numbers: %llu, %llu\n", kelNumbers::getInstance().getNextSequenceNumber(),
                kelNumbers::getInstance().getNextSequenceNumber());
}

void locks() {
    section("Locks");
    kelCriticalSection lock;
    lock.enter();
    lock.enter(); // re-entrant: the holder may enter again
    lock.leave();
    lock.leave();
    std::printf("entered a critical section twice and left it twice\n");
    std::printf("named mutex \"kelcore-tour\" exists before: %s\n",
                kelMutex::exist("kelcore-tour") ? "yes" : "no");
    {
        kelMutex named("kelcore-tour");
        named.reserve();
        std::printf("while one object holds it, it exists: %s\n",
                    kelMutex::exist("kelcore-tour") ? "yes" : "no");
        named.release();
    }
    std::printf("after the last object went: %s\n", kelMutex::exist("kelcore-tour") ? "yes" : "no");
}

void variant() {
    section("Variant");
    kelVariant v(-1);
    std::printf("SInt32 -1 read as UInt32: %u, as SInt8: %d, as bool: %s\n",
                static_cast<unsigned>(v.getUInt32()), v.getSInt8(), v.getBool() ? "true" : "false");
    v.setFloat64(1e30);
    std::printf("Float64 1e30 read as SInt64: %s\n", kelVariant(v.getSInt64()).getString().c_str());
    kelVariant flag("tRuE");
    kelVariant when("2024/03/15 12:34:56");
    std::printf("\"tRuE\" becomes format %s, a time text format %s, \"12\" format %s\n",
                flag.getFormat().toString(), when.getFormat().toString(),
                kelVariant("12").getFormat().toString());
    kelVariant byte(UInt8(0));
    std::printf("a UInt8 accepts \"12\": %s, \"300\": %s, \"012\": %s\n",
                byte.accept("12") ? "yes" : "no", byte.accept("300") ? "yes" : "no",
                byte.accept("012") ? "yes" : "no");
    std::printf("UInt8 5 == \"5\": %s; Float64 0.0 == -0.0: %s\n",
                kelVariant(UInt8(5)) == kelVariant("5") ? "yes" : "no",
                kelVariant(0.0) == kelVariant(-0.0) ? "yes" : "no");
    kelBinarySerializer out;
    kelVariant(UInt16(258)).serializeTo(out);
    std::printf("UInt16 258 serialized:\n");
    hexDump(out.getBufferC(), out.getSize());
}

void schedules() {
    section("Schedules");
    kelTime start(0ull);
    start.fromString("2024/01/31 09:30:00");
    kelSchedule monthly;
    monthly.setRepetitive(start, 1, RepetitiveType::Months);
    std::printf("%s\n", monthly.toString().c_str());
    std::printf("(no February 31st: the walk rolls into March and stays on the 2nd)\n");
    for (char const* when : {"2024/02/29 09:30:00", "2024/03/02 09:30:00", "2024/04/02 09:30:20"}) {
        kelTime t(0ull);
        t.fromString(when);
        std::printf("  matches %s: %s\n", when, monthly.matches(t) ? "yes" : "no");
    }
    kelSchedule read;
    if (read.fromString("Montly on July,January 15th at 07:05")) {
        std::printf("read back as:   %s\n", read.toString().c_str());
    }
}

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

void threadsAndEvents() {
    section("Threads, events and heartbeats");
    TourWorker worker;
    worker.createEvent(10);
    worker.startThread();
    worker.triggerEvent(10);
    while (!worker.handled) {
        kelThread::sleep(1);
    }
    worker.stopThread();

    TourListener listener;
    kelEventPublisher::getInstance().registerNotifier(&listener);
    kelHeartBeat* beat = kelScheduler::getInstance().createHeartBeat("tour", 200);
    kelThread::sleep(1000);
    kelScheduler::getInstance().deleteHeartBeat(beat);
    kelEventPublisher::getInstance().unregisterNotifier(&listener);
    std::printf("a 200 ms heartbeat beat %d times in one second\n", listener.beats.load());

    kelCancelActionEvent cancel;
    kelEventPublisher::getInstance().publishEvent(&cancel);
    std::printf("nobody cancelled: %s\n", cancel.isCancel() ? "cancelled" : "not cancelled");
}

} // namespace

int main() {
    std::printf("kelcore tour\n");
    text();
    serialization();
    failure();
    conversions();
    identities();
    locks();
    variant();
    schedules();
    threadsAndEvents();
    return 0;
}
