#ifndef KELCORE_FRAME_KELNUMBERS_H
#define KELCORE_FRAME_KELNUMBERS_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// The process-wide singleton for sequence numbers, the numeric-text test and a byte swap.
class KELCORE_API kelNumbers {
public:
    static kelNumbers& getInstance();

    // Copies share the lock of the original, and the counter is one per process anyway.
    kelNumbers(kelNumbers const& other);
    kelNumbers& operator=(kelNumbers const& other);
    virtual ~kelNumbers();

    // 1, 2, 3, ... across the whole process, from any thread.
    UInt64 getNextSequenceNumber();

    // Not strict: whether a number can be read from the start of the text (leading blanks are
    // skipped, trailing characters ignored) as a double (allowDecimal), else as a signed, else
    // as an unsigned 64-bit integer. Strict: every character must be a digit, or '.' (at most
    // one, with allowDecimal), or a sign (with allowSign) in the first place only; the empty
    // text passes. A null text is never numeric.
    bool isNumeric(char const* text, bool allowDecimal, bool allowSign, bool strict);
    bool isNumeric(char const* text);

    // Reverses the order of the four bytes.
    void swapEndian(UInt32& value);

private:
    kelNumbers();

    kelCriticalSection mLock;
};

} // namespace KELKIT

#endif
