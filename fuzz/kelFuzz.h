#ifndef KELCORE_FUZZ_KELFUZZ_H
#define KELCORE_FUZZ_KELFUZZ_H

// What the fuzz targets share: a failing check that libFuzzer reports as a crash, a count of
// the heap bytes a call allocates, the library's serializers loaded with the same bytes and the
// run of reads every wire target makes through them, scratch files of the process, and the
// small conversions the models need.

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelFileSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include <fuzzer/FuzzedDataProvider.h>
#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace kelFuzz {

[[noreturn]] inline void fail(char const* what, char const* file, int line) {
    std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, what);
    std::abort();
}

#define KEL_FUZZ_CHECK(condition)                                                                  \
    ((condition) ? static_cast<void>(0) : ::kelFuzz::fail(#condition, __FILE__, __LINE__))

// The bytes of a text, printable ones as they are and the others as \xHH, for a report.
inline std::string escaped(std::string const& text) {
    std::string out;
    for (unsigned char c : text) {
        char hex[8];
        std::snprintf(hex, sizeof hex, c >= 32 && c < 127 && c != '\\' ? "%c" : "\\x%02x", c);
        out += hex;
    }
    return out;
}

// A failing comparison of two texts, reported with both.
[[noreturn]] inline void failEqual(std::string const& expected, std::string const& actual,
                                   char const* what, char const* file, int line) {
    std::fprintf(stderr, "%s:%d: expected \"%s\"\n    got \"%s\"\n", file, line,
                 escaped(expected).c_str(), escaped(actual).c_str());
    fail(what, file, line);
}

// Two texts that must be equal: the model's first, then the library's.
#define KEL_FUZZ_CHECK_TEXT(expected, actual)                                                      \
    ::kelFuzz::checkText((expected), (actual), #expected " == " #actual, __FILE__, __LINE__)

inline void checkText(std::string const& expected, std::string const& actual, char const* what,
                      char const* file, int line) {
    if (expected != actual) {
        failEqual(expected, actual, what, file, line);
    }
}

// Counts the bytes of every allocation made while an object of this class lives (the count is
// cumulative: a block that is grown counts each time). One at a time.
class HeapCount {
public:
    HeapCount() {
        static bool const installed =
            (__sanitizer_install_malloc_and_free_hooks(onMalloc, nullptr), true);
        static_cast<void>(installed);
        bytes() = 0;
        counting() = true;
    }
    ~HeapCount() { counting() = false; }
    HeapCount(HeapCount const&) = delete;
    HeapCount& operator=(HeapCount const&) = delete;

    std::size_t allocated() const { return bytes(); }

private:
    static std::atomic<bool>& counting() {
        static std::atomic<bool> flag{false};
        return flag;
    }
    static std::atomic<std::size_t>& bytes() {
        static std::atomic<std::size_t> total{0};
        return total;
    }
    static void onMalloc(void const volatile*, std::size_t size) {
        if (counting()) {
            bytes() += size;
        }
    }
};

// A reader may spend a small constant plus a few times the bytes it was given.
inline bool withinBudget(std::size_t allocated, std::size_t inputSize) {
    return allocated <= (std::size_t(1) << 20) + 8 * inputSize;
}

// Runs a read; true when the serializer refused it by its exception.
template <class Read>
bool throws(Read read) {
    try {
        read();
    } catch (KELKIT::kelException const&) {
        return true;
    }
    return false;
}

// A classic-locale string stream extraction, the reading the converter's headers promise.
template <class T>
bool streamRead(char const* text, T& value) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    value = T();
    return static_cast<bool>(in >> value);
}

// The same, 0 when it fails.
template <class T>
T streamNumber(char const* text) {
    T value;
    return streamRead(text, value) ? value : T();
}

// What a classic-locale output stream prints.
template <class T>
std::string streamText(T value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return out.str();
}

// The value of n bytes, least significant first.
inline std::uint64_t littleEndian(std::uint8_t const* bytes, std::size_t n) {
    std::uint64_t value = 0;
    for (std::size_t i = n; i > 0; --i) {
        value = value << 8 | bytes[i - 1];
    }
    return value;
}

// A UInt32 count and the payload behind it, as an independent reading of the bytes at hand.
struct Counted {
    Counted(std::uint8_t const* bytes, std::size_t available) {
        if (available < 4) {
            return;
        }
        hasCount = true;
        count = static_cast<std::uint32_t>(littleEndian(bytes, 4));
        std::size_t const present = std::min<std::size_t>(count, available - 4);
        payload.assign(bytes + 4, bytes + 4 + present);
        complete = present == count;
    }
    bool hasCount = false;
    bool complete = false;
    std::uint32_t count = 0;
    std::vector<std::uint8_t> payload; // what of it is present
};

// A path of this process's own for a scratch item (the pid and the tag make it unique), in a
// memory-backed folder where there is one: targets write and read it for every input.
inline std::string scratchPath(char const* tag) {
    std::error_code ignored;
    std::filesystem::path const folder = std::filesystem::is_directory("/dev/shm", ignored)
                                             ? std::filesystem::path("/dev/shm")
                                             : std::filesystem::temp_directory_path();
    return (folder / ("kelcore-fuzz-" + std::to_string(::getpid()) + "-" + tag)).string();
}

// A path as the library's interface spells it: backslashes.
inline std::string libraryPath(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

// A heap block of exactly the given bytes (one of its own also when there are none), so that any
// access beyond it is reported.
struct Block {
    explicit Block(std::vector<std::uint8_t> const& bytes)
        : size(bytes.size()), data(new std::uint8_t[bytes.size()]) {
        std::copy(bytes.begin(), bytes.end(), data.get());
    }
    std::vector<std::uint8_t> bytes() const {
        return std::vector<std::uint8_t>(data.get(), data.get() + size);
    }
    std::size_t size;
    std::unique_ptr<std::uint8_t[]> data;
};

// Replaces the file's content with the bytes.
inline void writeFile(std::string const& path, std::string const& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    KEL_FUZZ_CHECK(file != nullptr);
    KEL_FUZZ_CHECK(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
    KEL_FUZZ_CHECK(std::fclose(file) == 0);
}

// The texts of a list, in order.
inline std::vector<std::string> textsOf(KELKIT::kelListString const& list) {
    std::vector<std::string> texts;
    for (KELKIT::UInt32 i = 0; i < list.size(); ++i) {
        texts.push_back(list[i].c_str());
    }
    return texts;
}

// The non-empty runs of a text between separators, in order.
inline std::vector<std::string> nonEmptyParts(std::string const& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    for (char c : text + separator) {
        if (c != separator) {
            part += c;
        } else if (!part.empty()) {
            parts.push_back(part);
            part.clear();
        }
    }
    return parts;
}

// Every occurrence of from replaced by to, left to right, never searching what was put in; an
// empty from replaces nothing (kelString::replace).
inline std::string replacedAll(std::string const& text, std::string const& from,
                               std::string const& to) {
    if (from.empty()) {
        return text;
    }
    std::string out;
    std::size_t at = 0;
    for (std::size_t found; (found = text.find(from, at)) != std::string::npos;) {
        out += text.substr(at, found - at) + to;
        at = found + from.size();
    }
    return out + text.substr(at);
}

// The targets whose models use the calendar run in UTC, where it has a closed form.
inline int useUtc() {
    setenv("TZ", "UTC", 1);
    tzset();
    return 0;
}

enum class Kind { Binary, Memory, Buffered, File };

// The memory serializers refuse a read past their bytes with an exception; the buffered and
// file serializers cannot, and read short.
inline bool throwsOnShortRead(Kind kind) {
    return kind == Kind::Binary || kind == Kind::Memory;
}

// The four serializers of the library, each holding the given bytes through loadData, so that
// reading starts at their first byte. One file per process, in memory where possible.
class Serializers {
public:
    Serializers(std::uint8_t const* data, std::size_t size)
        : mBlock(data, data + size), mMemory(mBlock.data(), static_cast<KELKIT::UInt32>(size)) {
        KELKIT::UInt32 const length = static_cast<KELKIT::UInt32>(size);
        mBinary.loadData(data, length);
        mMemory.loadData(data, length);
        mBuffered.loadData(data, length);
        scratchFile().loadData(data, length);
    }

    // f(serializer, kind) for each of the four.
    template <class F>
    void forEach(F f) {
        f(static_cast<KELKIT::kelISerializer&>(mBinary), Kind::Binary);
        f(static_cast<KELKIT::kelISerializer&>(mMemory), Kind::Memory);
        f(static_cast<KELKIT::kelISerializer&>(mBuffered), Kind::Buffered);
        f(static_cast<KELKIT::kelISerializer&>(scratchFile()), Kind::File);
    }

    // Bytes consumed so far: the read position, as every serializer reports it.
    static KELKIT::UInt32 consumed(KELKIT::kelISerializer& s, KELKIT::UInt32 loaded) {
        return loaded - s.getRemainingSize();
    }

    // The process's one file serializer, in mode ReadAndWrite.
    static KELKIT::kelFileSerializer& scratchFile() {
        static ScratchFile scratch;
        return scratch.serializer;
    }

private:
    struct ScratchFile {
        ScratchFile()
            : path(scratchPath("serializer")),
              serializer(path.c_str(), KELKIT::kelFileSerializer::FileMode(
                                           KELKIT::kelFileSerializer::FileMode::ReadAndWrite)) {}
        ~ScratchFile() {
            serializer.closeFile();
            std::error_code ignored;
            std::filesystem::remove(path, ignored);
        }
        std::string path;
        KELKIT::kelFileSerializer serializer;
    };

    std::vector<std::uint8_t> mBlock;
    KELKIT::kelBinarySerializer mBinary;
    KELKIT::kelMemorySerializer mMemory;
    KELKIT::kelBufferedSerializer mBuffered;
};

// The input from a serializer's read position on. A buffered serializer moves on by what was
// asked, also beyond the end of its bytes: then nothing lies ahead.
struct Ahead {
    std::uint8_t const* bytes;
    std::size_t size;
};

// Reads values of T one after the other from each of the four serializers loaded with the
// input, as a reader meets a stream of them, until a read is refused or makes no progress (16
// reads at most). For each read, complete(ahead) is the model's verdict on whether a whole value
// lies ahead: the memory serializers throw exactly when it does not. No read allocates beyond
// withinBudget; a refused or empty one leaves the value as it was (same(value, before)); any
// other is judged by check(value, before, kind, ahead, complete, consumed bytes).
template <class T, class Complete, class Same, class Check>
void readRuns(std::uint8_t const* data, std::size_t size, T const& initial, Complete complete,
              Same same, Check check) {
    Serializers serializers(data, size);
    KELKIT::UInt32 const loaded = static_cast<KELKIT::UInt32>(size);
    serializers.forEach([&](KELKIT::kelISerializer& s, Kind kind) {
        T value(initial);
        for (int round = 0; round < 16; ++round) {
            KELKIT::UInt32 const at = Serializers::consumed(s, loaded);
            Ahead const ahead{data + std::min(at, loaded), at < loaded ? loaded - at : 0u};
            bool const whole = complete(ahead);
            T const before(value);
            bool threw;
            {
                HeapCount heap;
                threw = throws([&] { value.deserializeFrom(s); });
                KEL_FUZZ_CHECK(withinBudget(heap.allocated(), size));
            }
            KELKIT::UInt32 const consumed = Serializers::consumed(s, loaded) - at;
            KEL_FUZZ_CHECK(threw == (throwsOnShortRead(kind) && !whole));
            if (threw || consumed == 0) {
                KEL_FUZZ_CHECK(same(value, before));
                return;
            }
            check(value, before, kind, ahead, whole, consumed);
        }
    });
}

// What was read travels back: its wire form has wireSize bytes and reads into fresh as the same
// value. Gives the wire form.
template <class T, class Same>
std::vector<std::uint8_t> writesBack(T const& value, T fresh, std::size_t wireSize, Same same) {
    KELKIT::kelBinarySerializer out;
    value.serializeTo(out);
    KEL_FUZZ_CHECK(out.getSize() == wireSize);
    std::vector<std::uint8_t> wire(out.getBufferC(), out.getBufferC() + out.getSize());
    fresh.deserializeFrom(out);
    KEL_FUZZ_CHECK(same(fresh, value));
    return wire;
}

} // namespace kelFuzz

#endif
