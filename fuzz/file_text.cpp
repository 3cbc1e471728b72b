// kelFiles' file reads and kelCacheFile over a file whose content is the input (with, at a place
// the input picks, a run of one byte long enough to make lines longer than a read's chunk),
// against a model of the text reads: a carriage return before a line feed vanishes; a chunk is
// at most 10,239 characters, ending after a line feed; a line is a chunk without its line feed,
// cut at its first 0 byte. getLinesInFile counts the chunks, getTextFileContent lists the
// lines, find counts one character per line end and per chunk from its offset; the whole-file
// reads give the bytes exactly (and the text up to the first 0 byte), an empty file as a failure
// that leaves a text unchanged; a file object reads them in pieces from any position. The cache
// gives what it read until it is told to read again. A path in a missing folder fails everywhere,
// leaving the outputs as documented. No read allocates more than a small constant plus a few times
// the file, and a little per line.

#include "kelFuzz.h"

#include <kelcore/files/kelCacheFile.h>
#include <kelcore/files/kelFile.h>
#include <kelcore/files/kelFiles.h>

#include <memory>

using namespace KELKIT;

namespace {

std::size_t const CHUNK = 10239;

struct Scratch {
    std::string native = kelFuzz::scratchPath("text");
    std::string path = kelFuzz::libraryPath(native);
    std::string missing = kelFuzz::libraryPath(kelFuzz::scratchPath("no-folder") + "/text");
    kelCacheFile cache;
    ~Scratch() { std::remove(native.c_str()); }
};

Scratch& scratch() {
    static Scratch s;
    return s;
}

// The chunks of the text from offset on, as a text read delivers them.
std::vector<std::string> chunksOf(std::string const& content, std::size_t offset) {
    std::string text;
    for (std::size_t i = offset; i < content.size(); ++i) {
        if (!(content[i] == '\r' && i + 1 < content.size() && content[i + 1] == '\n')) {
            text += content[i];
        }
    }
    std::vector<std::string> chunks;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const lineFeed = text.find('\n', at);
        std::size_t const end =
            std::min(lineFeed == std::string::npos ? text.size() : lineFeed + 1, at + CHUNK);
        chunks.push_back(text.substr(at, end - at));
        at = end;
    }
    return chunks;
}

std::string lineOf(std::string chunk) {
    chunk = chunk.c_str();
    if (!chunk.empty() && chunk.back() == '\n') {
        chunk.pop_back();
    }
    return chunk;
}

UInt32 findModel(std::string const& content, UInt32 offset, std::string const& text) {
    UInt32 position = offset;
    for (std::string const& chunk : chunksOf(content, offset)) {
        std::string const line = lineOf(chunk);
        std::size_t const found = line.find(text);
        if (found != std::string::npos) {
            return position + static_cast<UInt32>(found);
        }
        position += static_cast<UInt32>(line.size()) + 1;
    }
    return 0;
}

std::vector<std::uint8_t> bytesOf(kelMemoryBuffer const& buffer) {
    return std::vector<std::uint8_t>(buffer.getBuffer(), buffer.getBuffer() + buffer.getSize());
}

void checkReads(std::string const& content, UInt32 offset, std::string const& text) {
    char const* const path = scratch().path.c_str();
    std::vector<std::string> const chunks = chunksOf(content, 0);
    KEL_FUZZ_CHECK(kelFiles::getLinesInFile(path) == chunks.size());
    KEL_FUZZ_CHECK(kelFiles::find(path, offset, text.c_str()) == findModel(content, offset, text));
    KEL_FUZZ_CHECK(kelFiles::find(path, text.c_str()) == findModel(content, 0, text));
    KEL_FUZZ_CHECK(kelFiles::find(path, offset, nullptr) == 0);

    std::vector<std::string> lines;
    for (std::string const& chunk : chunks) {
        lines.push_back(lineOf(chunk));
    }
    kelListString list;
    list.add(kelString(path)); // the path may lie in the list it replaces
    {
        kelFuzz::HeapCount heap;
        kelFiles::getTextFileContent(list[0].c_str(), list);
        KEL_FUZZ_CHECK(heap.allocated() <=
                       (std::size_t(1) << 20) + 8 * content.size() + 256 * lines.size());
    }
    KEL_FUZZ_CHECK(kelFuzz::textsOf(list) == lines);

    std::vector<std::uint8_t> const bytes(content.begin(), content.end());
    kelMemoryBuffer buffer(2);
    bool loaded;
    {
        kelFuzz::HeapCount heap;
        loaded = kelFiles::loadFile(path, buffer);
        KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), content.size()));
    }
    KEL_FUZZ_CHECK(loaded == !content.empty());
    KEL_FUZZ_CHECK(bytesOf(buffer) == bytes); // emptied when nothing was read
    kelMemoryBuffer again(2);
    kelFiles::getTextFileContent(path, again);
    KEL_FUZZ_CHECK(bytesOf(again) == bytes);
    kelString whole("unchanged");
    kelFiles::getTextFileContent(path, whole);
    KEL_FUZZ_CHECK_TEXT(content.empty() ? "unchanged" : content.c_str(), whole.c_str());
}

void checkCache(std::string const& content, std::string const& changed) {
    kelCacheFile& cache = scratch().cache;
    char const* const path = scratch().path.c_str();
    std::vector<std::uint8_t> const bytes(content.begin(), content.end());
    kelCacheFile::FILE_DATA data;
    {
        kelFuzz::HeapCount heap;
        KEL_FUZZ_CHECK(cache.reload(path, data));
        KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), content.size()));
    }
    KEL_FUZZ_CHECK(data.size == content.size() && bytesOf(data.data) == bytes);
    // A change on disk shows only after the next reload.
    kelFuzz::writeFile(scratch().native, changed);
    kelCacheFile::FILE_DATA cached;
    KEL_FUZZ_CHECK(cache.retreive(path, cached));
    KEL_FUZZ_CHECK(cached.size == content.size() && bytesOf(cached.data) == bytes);
    KEL_FUZZ_CHECK(cache.reload(path));
    KEL_FUZZ_CHECK(cache.retreive(path, cached));
    KEL_FUZZ_CHECK(cached.size == changed.size() &&
                   bytesOf(cached.data) ==
                       std::vector<std::uint8_t>(changed.begin(), changed.end()));
}

// A file object reads the bytes in pieces of the given sizes, each into a block of exactly that
// size, from the position given (which may lie beyond the end).
void checkFileObject(std::string const& content, std::size_t at,
                     std::vector<UInt32> const& pieces) {
    kelFile file(scratch().path.c_str());
    KEL_FUZZ_CHECK(file.open(kelFile::READ) && file.getSize() == content.size());
    KEL_FUZZ_CHECK(file.setPosition(static_cast<UInt32>(at)) && file.getPosition() == at);
    for (UInt32 n : pieces) {
        std::unique_ptr<unsigned char[]> block(new unsigned char[n]);
        UInt32 const count = file.read(block.get(), n);
        std::size_t const left = at < content.size() ? content.size() - at : 0;
        KEL_FUZZ_CHECK(count == std::min<std::size_t>(n, left));
        KEL_FUZZ_CHECK(count == 0 || std::memcmp(block.get(), content.data() + at, count) == 0);
        at += count;
        KEL_FUZZ_CHECK(file.getPosition() == at);
    }
    file.close();
    KEL_FUZZ_CHECK(!file.isOpened() && file.read(nullptr, 0) == 0);
}

void checkMissing() {
    char const* const path = scratch().missing.c_str();
    KEL_FUZZ_CHECK(kelFiles::getLinesInFile(path) == 0 && kelFiles::find(path, "") == 0);
    kelListString list;
    list.add(kelString("old"));
    kelFiles::getTextFileContent(path, list);
    KEL_FUZZ_CHECK(list.size() == 0);
    kelString text("unchanged");
    kelFiles::getTextFileContent(path, text);
    KEL_FUZZ_CHECK_TEXT("unchanged", text.c_str());
    kelMemoryBuffer buffer(2);
    KEL_FUZZ_CHECK(!kelFiles::loadFile(path, buffer) && buffer.getSize() == 0);
    kelCacheFile::FILE_DATA data;
    data.size = 2;
    data.data.set(reinterpret_cast<UInt8 const*>("ab"), 2);
    KEL_FUZZ_CHECK(!scratch().cache.reload(path, data) && !scratch().cache.retreive(path, data));
    KEL_FUZZ_CHECK(data.size == 2 && data.data.getSize() == 2);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::string const text = input.ConsumeRandomLengthString(16).c_str();
    std::size_t const run = input.ConsumeBool() ? input.ConsumeIntegralInRange(0, 12000) : 0;
    auto const filler = input.ConsumeIntegral<char>();
    auto const start = input.ConsumeIntegral<std::uint16_t>();
    std::vector<UInt32> pieces(input.ConsumeIntegralInRange(0, 6));
    for (UInt32& piece : pieces) {
        piece = input.ConsumeIntegralInRange<UInt32>(0, 9000);
    }
    std::string content = input.ConsumeRemainingBytesAsString();
    std::size_t const at = run == 0 ? 0 : (content.size() + 1) * (run % 997) / 997;
    content.insert(std::min(at, content.size()), run, filler);
    UInt32 const offset = static_cast<UInt32>(start % (content.size() + 2));

    kelFuzz::writeFile(scratch().native, content);
    checkReads(content, offset, text);
    std::string changed(content.rbegin(), content.rend());
    changed += 'x';
    checkCache(content, changed);
    checkFileObject(changed, start % (changed.size() + 2), pieces); // what the file holds now
    if (size % 16 == 0) {
        checkMissing();
    }
    return 0;
}
