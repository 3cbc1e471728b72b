// What the sections of the tour share: the failure of a section, a few printing helpers and
// the run's scratch folder.

#ifndef KELCORE_EXAMPLES_TOUR_TOUR_H
#define KELCORE_EXAMPLES_TOUR_TOUR_H

#include <kelcore/kelcore.h>

#include <string>

namespace tour {

using namespace KELKIT;

// Thrown by require; main reports it in one line and goes on with the next section.
struct SectionFailed {
    std::string what;
};

// Stops the section when an operation that should have worked did not.
void require(bool ok, char const* what);

void hexDump(UInt8 const* bytes, UInt32 size);
char const* yesNo(bool value);
// This process's id, so that names the tour gives out do not meet those of another run.
unsigned long long processId();
// A folder of this run, made on first use: kelcore-tour-<pid>\<name> in the temporary folder.
// main removes the whole of it when the tour ends, whether the sections worked or not.
kelString scratchFolder(char const* name);
// False, after a line on stderr, when something is left behind.
bool removeScratchFolders();
// A library path relative to the run's scratch folder, for shorter lines.
char const* shortPath(char const* path);

// Keeps a notifier on the event bus for as long as it lives, also when a section fails.
class Listening {
public:
    explicit Listening(kelEventNotifier* notifier) : mNotifier(notifier) {
        kelEventPublisher::getInstance().registerNotifier(mNotifier);
    }
    ~Listening() { kelEventPublisher::getInstance().unregisterNotifier(mNotifier); }
    Listening(Listening const&) = delete;
    Listening& operator=(Listening const&) = delete;

private:
    kelEventNotifier* mNotifier;
};

// The sections, in the order the tour runs them.
void text();
void encodings();
void conversions();
void serialization();
void failure();
void streams();
void bits();
void identities();
void variant();
void nodes();
void schedules();
void locks();
void threadsAndEvents();
void tasks();
void sharedMemory();
void files();
void renamer();
void environment();
void logging();

} // namespace tour

#endif
