// The byte streams and copyStream under a run of operations, each against a model of the
// documented rules: a buffer input stream reads, skips and counts what lies behind its position
// (also once closed, when it reads nothing more), copies go on from the same position by
// themselves; a buffer output stream writes up to the last byte of its block (from anywhere,
// its own block included) and counts its position; the file streams write a file whose bytes
// then read back with the same rules, a copy sharing the open file, and a missing file refuses
// with kelException. copyStream moves blocks of 10,240 bytes while the input's size() is not 0
// and fails on a short write or a read that delivers nothing (or claims more than it was
// asked); an input that claims far more than it holds costs nothing on the heap. Every block a
// stream reads or writes is exactly as large as the count given, so a byte beyond is a finding.

#include "kelFuzz.h"

#include <kelcore/memory/kelBufferInputStream.h>
#include <kelcore/memory/kelBufferOutputStream.h>
#include <kelcore/memory/kelFileInputStream.h>
#include <kelcore/memory/kelFileOutputStream.h>
#include <kelcore/memory/kelStreamUtils.h>

#include <memory>

using namespace KELKIT;

namespace {

typedef std::vector<std::uint8_t> Bytes;
UInt32 const BLOCK = 10240;

// A block of exactly n bytes, filled with a mark.
kelFuzz::Block marked(std::size_t n) {
    return kelFuzz::Block(Bytes(n, 0xA5));
}

// Up to maxLength bytes: a short piece of the input repeated, so that short inputs make the
// long runs that take several blocks.
Bytes consumeLong(FuzzedDataProvider& input, std::size_t maxLength) {
    std::size_t const length = input.ConsumeIntegralInRange<std::size_t>(0, maxLength);
    Bytes const piece = input.ConsumeBytes<std::uint8_t>(input.ConsumeIntegralInRange(1, 64));
    Bytes bytes(length);
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = piece.empty() ? static_cast<std::uint8_t>(i) : piece[i % piece.size()];
    }
    return bytes;
}

// The state of an input stream: the bytes it can give, its position and whether it is open.
struct InModel {
    Bytes bytes;
    std::size_t position = 0;
    bool closed = false;
    UInt32 left() const { return static_cast<UInt32>(bytes.size() - position); }
    // What a read of n bytes gives (and where it leaves the position).
    Bytes read(UInt32 n) {
        if (closed) {
            return Bytes();
        }
        UInt32 const count = std::min(n, left());
        Bytes out(bytes.begin() + position, bytes.begin() + position + count);
        position += count;
        return out;
    }
    UInt32 skip(UInt32 n) {
        UInt32 const count = closed ? 0 : std::min(n, left());
        position += count;
        return count;
    }
};

struct OutModel {
    Bytes bytes;
    std::size_t position = 0;
    bool closed = false;
    UInt32 write(Bytes const& data) {
        if (closed) {
            return 0;
        }
        UInt32 const count = static_cast<UInt32>(std::min(data.size(), bytes.size() - position));
        std::copy(data.begin(), data.begin() + count, bytes.begin() + position);
        position += count;
        return count;
    }
};

// Reads n bytes into a block of exactly n: the count, and the block's bytes beyond it untouched.
Bytes readBlock(kelInputStream& in, UInt32 n) {
    kelFuzz::Block const block = marked(n);
    UInt32 const count = in.read(block.data.get(), n);
    KEL_FUZZ_CHECK(count <= n);
    Bytes const all = block.bytes();
    KEL_FUZZ_CHECK(
        std::all_of(all.begin() + count, all.end(), [](std::uint8_t b) { return b == 0xA5; }));
    return Bytes(all.begin(), all.begin() + count);
}

void checkInput(kelInputStream& in, InModel& model, FuzzedDataProvider& input, bool fileForm) {
    switch (input.ConsumeIntegralInRange(0, 4)) {
    case 0: {
        UInt32 const n = input.ConsumeIntegralInRange<UInt32>(0, 3000);
        KEL_FUZZ_CHECK(readBlock(in, n) == model.read(n));
        break;
    }
    case 1: {
        Bytes const expected = model.read(1);
        KEL_FUZZ_CHECK(in.read() == (expected.empty() ? 0 : expected[0]));
        break;
    }
    case 2: {
        UInt32 const n = input.ConsumeBool() ? input.ConsumeIntegralInRange<UInt32>(0, 3000)
                                             : input.ConsumeIntegral<UInt32>();
        KEL_FUZZ_CHECK(in.skip(n) == model.skip(n));
        break;
    }
    case 3:
        KEL_FUZZ_CHECK(in.read(nullptr, 5) == 0);
        break;
    default:
        in.close();
        model.closed = true;
        break;
    }
    KEL_FUZZ_CHECK(in.isClosed() == model.closed);
    // A closed file stream no longer knows its size; a buffer stream still does.
    KEL_FUZZ_CHECK(in.size() == (fileForm && model.closed ? 0 : model.left()));
}

// copyStream by its documented loop: the count read, written, compared.
bool modelCopy(InModel& in, OutModel& out) {
    while (in.left() != 0) {
        Bytes const block = in.read(BLOCK);
        if (block.empty() || out.write(block) != block.size()) {
            return false;
        }
    }
    return true;
}

// An input that claims size() bytes and hands out the input's pieces: some short, some empty,
// some with a count beyond what was asked (writing no more than was asked).
class Claiming : public kelInputStream {
public:
    Claiming(FuzzedDataProvider& input) : mInput(input), mClaim(input.ConsumeIntegral<UInt32>()) {}
    UInt32 size() override { return mClaim; }
    void close() override {}
    bool isClosed() override { return false; }
    UInt32 read(UInt8* data, UInt32 size) override {
        int const kind = mInput.ConsumeIntegralInRange(0, 5);
        if (kind == 0 || mInput.remaining_bytes() == 0) {
            return 0;
        }
        if (kind == 1) {
            return size + 1; // a lie: nothing was written beyond size
        }
        Bytes const piece =
            mInput.ConsumeBytes<std::uint8_t>(mInput.ConsumeIntegralInRange<UInt32>(1, size));
        if (piece.empty()) {
            return 0;
        }
        std::memcpy(data, piece.data(), piece.size());
        delivered.insert(delivered.end(), piece.begin(), piece.end());
        mClaim = piece.size() >= mClaim ? mInput.ConsumeIntegral<UInt32>()
                                        : mClaim - UInt32(piece.size());
        return static_cast<UInt32>(piece.size());
    }
    UInt8 read() override { return 0; }
    UInt32 skip(UInt32) override { return 0; }
    Bytes delivered;

private:
    FuzzedDataProvider& mInput;
    UInt32 mClaim;
};

void runBuffers(FuzzedDataProvider& input) {
    InModel in[2];
    in[0].bytes = consumeLong(input, 30000);
    in[0].closed = input.ConsumeIntegralInRange(0, 15) == 0; // a null buffer is closed at once
    in[1] = in[0];
    kelFuzz::Block const source =
        marked(in[0].bytes.size()); // never a null pointer, also when empty
    std::copy(in[0].bytes.begin(), in[0].bytes.end(), source.data.get());
    UInt8 const* const start = in[0].closed ? nullptr : source.data.get();
    kelBufferInputStream ins[2] = {kelBufferInputStream(start, in[0].left()),
                                   kelBufferInputStream(start, in[0].left())};
    kelFuzz::Block const target = marked(input.ConsumeIntegralInRange(0, 30000));
    OutModel out;
    out.bytes = target.bytes();
    out.closed = input.ConsumeIntegralInRange(0, 15) == 0;
    kelBufferOutputStream sink(out.closed ? nullptr : target.data.get(), UInt32(target.size));

    for (int step = 0; step < 32 && input.remaining_bytes() > 0; ++step) {
        int const slot = input.ConsumeBool() ? 1 : 0;
        switch (input.ConsumeIntegralInRange(0, 8)) {
        case 0:
            checkInput(ins[slot], in[slot], input, false);
            break;
        case 1:
            // A copy goes on from the same position, by itself.
            ins[1 - slot] = ins[slot];
            in[1 - slot] = in[slot];
            break;
        case 2: {
            Bytes const data = consumeLong(input, 12000);
            kelFuzz::Block const block = marked(data.size());
            std::copy(data.begin(), data.end(), block.data.get());
            KEL_FUZZ_CHECK(sink.write(block.data.get(), UInt32(data.size())) == out.write(data));
            break;
        }
        case 3: {
            auto const value = input.ConsumeIntegral<std::uint8_t>();
            bool const room = !out.closed && out.position < out.bytes.size();
            KEL_FUZZ_CHECK(sink.write(value) == (room ? 1u : 0u));
            if (room) {
                out.bytes[out.position++] = value;
            }
            break;
        }
        case 4: {
            // From its own block: the source may overlap the place written.
            std::size_t const from = input.ConsumeIntegralInRange<std::size_t>(0, target.size);
            std::size_t const n = input.ConsumeIntegralInRange<std::size_t>(0, target.size - from);
            Bytes const data(out.bytes.begin() + from, out.bytes.begin() + from + n);
            KEL_FUZZ_CHECK(sink.write(target.data.get() + from, UInt32(n)) == out.write(data));
            break;
        }
        case 5:
            sink.flush();
            KEL_FUZZ_CHECK(sink.write(nullptr, 3) == 0);
            if (input.ConsumeBool()) {
                sink.close();
                out.closed = true;
            }
            break;
        case 6: {
            kelFuzz::HeapCount heap;
            bool const copied = kelStreamUtils::copyStream(&ins[slot], &sink);
            KEL_FUZZ_CHECK(heap.allocated() == 0);
            KEL_FUZZ_CHECK(copied == modelCopy(in[slot], out));
            break;
        }
        case 7: {
            Claiming claiming(input);
            OutModel expected = out;
            bool copied;
            {
                kelFuzz::HeapCount heap;
                copied = kelStreamUtils::copyStream(&claiming, &sink);
                KEL_FUZZ_CHECK(heap.allocated() == 0);
            }
            // What arrived went out as far as there was room; the run ended with the claim at 0.
            UInt32 const written = expected.write(claiming.delivered);
            out = expected;
            KEL_FUZZ_CHECK(!copied ||
                           (written == claiming.delivered.size() && claiming.size() == 0));
            break;
        }
        default:
            KEL_FUZZ_CHECK(!kelStreamUtils::copyStream(nullptr, &sink) &&
                           !kelStreamUtils::copyStream(&ins[slot], nullptr));
            break;
        }
        KEL_FUZZ_CHECK(target.bytes() == out.bytes);
        KEL_FUZZ_CHECK(sink.size() == out.position && sink.isClosed() == out.closed);
        KEL_FUZZ_CHECK(sink.available() == out.bytes.size() - out.position);
        KEL_FUZZ_CHECK(ins[slot].size() == in[slot].left() &&
                       ins[slot].isClosed() == in[slot].closed);
    }
}

std::string const& scratch() {
    static struct Path {
        std::string native = kelFuzz::scratchPath("stream");
        std::string library = kelFuzz::libraryPath(native);
        ~Path() { std::remove(native.c_str()); }
    } path;
    return path.library;
}

void runFiles(FuzzedDataProvider& input) {
    // Written through two objects sharing the file, each counting its own writes.
    Bytes written;
    {
        kelFileOutputStream first(scratch().c_str());
        kelFileOutputStream second(first);
        UInt32 counts[2] = {0, 0};
        bool closed[2] = {false, false};
        kelFileOutputStream* streams[2] = {&first, &second};
        for (int step = 0; step < 8 && input.remaining_bytes() > 0; ++step) {
            int const which = input.ConsumeBool() ? 1 : 0;
            kelOutputStream& out = *streams[which];
            int const op = input.ConsumeIntegralInRange(0, 3);
            if (op == 0) {
                Bytes const data = consumeLong(input, 8000);
                kelFuzz::Block const block = marked(data.size());
                std::copy(data.begin(), data.end(), block.data.get());
                UInt32 const expected = closed[which] ? 0 : UInt32(data.size());
                KEL_FUZZ_CHECK(out.write(block.data.get(), UInt32(data.size())) == expected);
                if (!closed[which]) {
                    written.insert(written.end(), data.begin(), data.end());
                }
                counts[which] += expected;
            } else if (op == 1) {
                auto const value = input.ConsumeIntegral<std::uint8_t>();
                KEL_FUZZ_CHECK(out.write(value) == (closed[which] ? 0u : 1u));
                if (!closed[which]) {
                    written.push_back(value);
                    ++counts[which];
                }
            } else if (op == 2) {
                out.flush();
            } else if (!closed[1 - which]) { // one of them stays open until the end
                out.close();
                closed[which] = true;
            }
            KEL_FUZZ_CHECK(out.size() == counts[which] && out.isClosed() == closed[which]);
            KEL_FUZZ_CHECK(out.available() == 0xFFFFFFFFu);
        }
    }

    InModel model;
    model.bytes = written;
    kelFileInputStream in(scratch().c_str());
    kelFileInputStream shared(in);
    KEL_FUZZ_CHECK(in.size() == written.size());
    for (int step = 0; step < 16 && input.remaining_bytes() > 0; ++step) {
        checkInput(input.ConsumeBool() ? in : shared, model, input, true);
        if (model.closed) {
            break;
        }
    }
    if (!model.closed) {
        kelFuzz::Block const target =
            marked(input.ConsumeIntegralInRange<std::size_t>(0, written.size() + 2));
        OutModel out;
        out.bytes = target.bytes();
        kelBufferOutputStream sink(target.data.get(), UInt32(target.size));
        KEL_FUZZ_CHECK(kelStreamUtils::copyStream(&shared, &sink) == modelCopy(model, out));
        KEL_FUZZ_CHECK(target.bytes() == out.bytes);
    }
    std::string const missing = kelFuzz::libraryPath(kelFuzz::scratchPath("no-folder") + "/stream");
    KEL_FUZZ_CHECK(kelFuzz::throws([&] { kelFileInputStream nothing(missing.c_str()); }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool()) {
        runBuffers(input);
    } else {
        runFiles(input);
    }
    return 0;
}
