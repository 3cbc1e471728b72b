#ifndef KELCORE_FRAME_KELEXPORT_H
#define KELCORE_FRAME_KELEXPORT_H

// Symbols are hidden by default; KELCORE_API marks what the library exports.
#if defined(_WIN32)
#if defined(KELCORE_BUILDING)
#define KELCORE_API __declspec(dllexport)
#else
#define KELCORE_API __declspec(dllimport)
#endif
#else
#define KELCORE_API __attribute__((visibility("default")))
#endif

#endif
