// Bytes and values: serializers and their failures, dumpers and streams, bit fields, the
// enumeration and identity classes, and the variant.

#include "tour.h"

#include <cstdio>

namespace tour {

void serialization() {
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
    UInt8 block[10] = {0xFF, 0xFF, 0xFF, 0xFF};
    kelMemorySerializer hostile(block, sizeof block);
    kelString victim("untouched");
    std::printf("reading a text whose length field says 4294967295 from a 10-byte block...\n");
    try {
        victim.deserializeFrom(hostile);
        require(false, "a text longer than its block was read");
    } catch (kelException const& e) {
        std::printf("caught kelException: \"%s\" (%s, line %u)\n", e.getDescription(),
                    e.getSourceFile(), static_cast<unsigned>(e.getLineNumber()));
    }
    std::printf("the text is still [%s]\n", victim.c_str());
}

void streams() {
    // A dumper writes bare bytes: numbers little-endian, texts without a length.
    kelMemoryDumper memory;
    memory.dump(static_cast<UInt16>(0x1234));
    memory.dump(static_cast<SInt32>(-2));
    memory.dump(kelString("kel"));
    memory.dump(true);
    kelMemoryBuffer const& dumped = memory.getBuffer();
    std::printf("UInt16 0x1234, SInt32 -2, \"kel\" and true dumped to memory: %u bytes\n",
                static_cast<unsigned>(dumped.getSize()));
    hexDump(dumped.getBuffer(), dumped.getSize());

    kelString const path = kelFiles::concat(scratchFolder("streams").c_str(), "dump.bin");
    {
        kelFileDumper file(path.c_str());
        require(*file.getFilePath() != '\0', "kelFileDumper could not create its file");
        UInt32 const squares[] = {1, 4, 9};
        file.dump(dumped);
        file.dump(squares, 3);
    } // the last copy of a dumper closes the file
    std::printf("the same bytes and the UInt32 squares 1, 4, 9 dumped to %s: %s\n",
                shortPath(path.c_str()),
                kelFiles::getUserFriendlySize(kelFiles::getFileSize(path.c_str())).c_str());

    // Throws kelException when the file will not open; the tour reports that as a failure.
    kelFileInputStream input(path.c_str());
    UInt8 copy[32] = {};
    kelBufferOutputStream output(copy, sizeof copy);
    require(kelStreamUtils::copyStream(&input, &output), "copyStream returned false");
    std::printf("copied from the file stream into a %u-byte buffer stream: %u bytes, %u free\n",
                static_cast<unsigned>(sizeof copy), static_cast<unsigned>(output.size()),
                static_cast<unsigned>(output.available()));
    input.close();

    kelBufferInputStream reader(copy, output.size());
    UInt8 text[4] = {};
    require(reader.skip(6) == 6 && reader.read(text, 3) == 3, "the buffer stream read short");
    std::printf("skipped 6 bytes (the UInt16 and the SInt32), read 3: \"%s\"; %u bytes left\n",
                reinterpret_cast<char*>(text), static_cast<unsigned>(reader.size()));
    kelBufferOutputStream small(copy, 4);
    std::printf("a 4-byte buffer stream takes %u of the 7 bytes of \"kelcore\"\n",
                static_cast<unsigned>(small.write(reinterpret_cast<UInt8 const*>("kelcore"), 7)));
}

void bits() {
    // One 32-bit word of a record: two flags in bits 0 and 1, a 12-bit count in bits 4 to 15,
    // and from bit 16 a signed 12-bit temperature in steps of 0.1.
    UInt8 record[4] = {};
    kelBoolPacker ready(record, 0);
    kelBoolPacker alarm(record, 1);
    kelBitsPacker count(record, 4, 12, 1.0, false);
    double const step = kelBitsPacker::getScaling(-204.7, 204.7, 12);
    kelBitsPacker temperature(record, 16, 12, step, true);
    ready = 1;
    count = 0xABC;
    temperature = -12.34;
    std::printf("ready, count 0xABC (2748) and temperature -12.34 (step %g) packed: ", step);
    hexDump(record, sizeof record);
    std::printf("read back: ready %g, alarm %g, count %g, temperature %g\n",
                static_cast<double>(ready), static_cast<double>(alarm), static_cast<double>(count),
                static_cast<double>(temperature));
    double low = 0;
    double high = 0;
    kelBitsPacker::getRanges(12, 1.0, false, low, high);
    count = 5000;
    std::printf("the count holds %g to %g; 5000 keeps its low 12 bits and reads %g\n", low, high,
                static_cast<double>(count));

    UInt8 flags[2] = {};
    kelBitAccumulator writer(flags, sizeof flags);
    for (char bit : {'1', '0', '1', '1', '0', '0', '1'}) {
        writer.insertBit(bit == '1');
    }
    writer.reset();
    std::printf("bits 1011001 inserted one by one: %02X %02X; read back: ", flags[0], flags[1]);
    for (int i = 0; i < 7; ++i, ++writer) {
        std::printf("%d", writer.getBit() ? 1 : 0);
    }
    std::printf("\n");
}

void identities() {
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
    unsigned long long const first = kelNumbers::getInstance().getNextSequenceNumber();
    unsigned long long const second = kelNumbers::getInstance().getNextSequenceNumber();
    std::printf("sequence numbers: %llu, %llu\n", first, second);
}

void variant() {
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

} // namespace tour
