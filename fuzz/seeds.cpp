// Writes the seed inputs that the library produces itself, one file per value, into the corpus
// folders named after the targets:  kelcore_fuzz_seeds <fuzz/corpus folder>
// For the targets that split their input with FuzzedDataProvider it also writes the documented
// examples in that layout. The plain text seeds of the first targets (examples of the documented
// text forms) were written by hand and are committed.

#include <kelcore/kelcore.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace KELKIT;
namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

fs::path gRoot;

void save(char const* family, std::string const& name, std::string const& bytes) {
    fs::create_directories(gRoot / family);
    std::ofstream out(gRoot / family / name, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void save(char const* family, std::string const& name, kelBinarySerializer const& s) {
    save(family, name, std::string(reinterpret_cast<char const*>(s.getBufferC()), s.getSize()));
}

// An input as FuzzedDataProvider takes it apart: texts and bytes from the front, integers from
// the back. A random-length text doubles its backslashes and ends at a backslash followed by
// another character; an integer of a range takes as many bytes from the back as the range needs,
// the first byte taken (the input's last) being the most significant.
class Layout {
public:
    Layout& text(std::string const& t) {
        for (char c : t) {
            mFront += c;
            if (c == '\\') {
                mFront += c;
            }
        }
        mFront += "\\ ";
        return *this;
    }
    Layout& bytes(std::string const& b) {
        mFront += b;
        return *this;
    }
    // value - min of the range min to max.
    Layout& in(std::uint64_t value, std::uint64_t min, std::uint64_t max) {
        std::uint64_t const offset = value - min;
        int width = 0;
        while (width < 8 && ((max - min) >> (8 * width)) > 0) {
            ++width;
        }
        for (int i = width - 1; i >= 0; --i) {
            mBack.push_back(static_cast<char>(offset >> (8 * i)));
        }
        return *this;
    }
    Layout& flag(bool value) { return in(value ? 1 : 0, 0, 255); }
    Layout& byte(std::uint8_t value) { return in(value, 0, 255); }
    std::string data() const { return mFront + std::string(mBack.rbegin(), mBack.rend()); }

private:
    std::string mFront;
    std::string mBack; // in the order taken
};

void saveAll(char const* family, char const* prefix, std::vector<std::string> const& inputs) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        save(family, prefix + std::to_string(i), inputs[i]);
    }
}

// The texts: the remaining bytes, behind them the replacement and the locale flag.
void textEncodingSeeds() {
    auto const input = [](std::string const& text, bool utf8) {
        return Layout().bytes(text).flag(utf8).byte('?').data();
    };
    std::vector<std::string> examples;
    for (std::string const& text :
         {"caf\xE9 \xA9 \xFF"s, "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xC3"s,
          "a &amp; b &lt;c&gt; &quot;d&quot; &apos;e&apos;"s,
          "&#x20AC; &#233; &#128512; &#x1G; &bogus;"s, "<![CDATA[a < b]]> tail"s,
          "  two \t\n  blanks  <tail"s, "\x01\x1F&#x41; &#x"s, "A\0z\0~\0\0\0"s,
          "\0\xD8"
          "A\0\0\xDC\0\0"s}) {
        examples.push_back(input(text, false));
        examples.push_back(input(text, true));
    }
    saveAll("text_encodings", "example-", examples);
    // What the library writes: UTF-8 of Latin-1, XML text, UTF-16 units.
    kelString const utf8 = kelStringConverter::toUTF8(kelString("Gr\xFC\xDF"
                                                                "e, caf\xE9"));
    kelString const xml = kelStringConverter::toXML("if a<b & c>\"d\" 'e'\x01 &#x41;");
    kelMemoryBuffer const units = kelStringConverter::toUnicode("Az~");
    std::string const unitBytes(reinterpret_cast<char const*>(units.getBuffer()), units.getSize());
    saveAll("text_encodings", "written-",
            {input(utf8.c_str(), true), input(xml.c_str(), false), input(unitBytes, true)});
}

// Two paths: a random-length text, then the rest.
void pathSeeds() {
    std::vector<std::string> examples;
    for (auto const& pair :
         std::vector<std::pair<char const*, char const*>>{{"a.b\\c", "\\tmp\\work\\a.txt"},
                                                          {"C:\\dir\\", "file[abc].txt"},
                                                          {"photo[]", "x\\\\y\\"},
                                                          {"", "*.t?t"},
                                                          {".\\", "..\\[12]\\[ab].log"}}) {
        examples.push_back(Layout().text(pair.first).bytes(pair.second).data());
    }
    saveAll("path_text", "example-", examples);
}

// The search text, whether a long run of one byte goes in, the byte, the offset, the sizes of
// the file object's reads, then the content.
void fileTextSeeds() {
    auto const input = [](char const* text, std::string const& content, std::size_t run,
                          char filler, std::uint16_t start) {
        Layout layout;
        layout.text(text).flag(run > 0);
        if (run > 0) {
            layout.in(run, 0, 12000);
        }
        layout.byte(static_cast<std::uint8_t>(filler)).in(start, 0, 65535).in(3, 0, 6);
        for (std::uint64_t piece : {4, 9000, 1}) {
            layout.in(piece, 0, 9000);
        }
        return layout.bytes(content).data();
    };
    saveAll("file_text", "example-",
            {input("needle", "line one\r\nline two with needle\n\nlast line", 0, 'x', 12),
             input("x", "a line longer than a chunk follows:\n", 10500, 'x', 3),
             input("", std::string("zero\0byte\nand a\rcarriage return\r\n", 33), 0, 0, 0),
             input("b", "", 0, 'b', 7)});
}

// The mode, the template or the two texts, then each name with its place in the folder.
void renamerSeeds() {
    struct Example {
        bool pattern;
        char const* first;
        char const* second;
        std::vector<char const*> names;
    };
    std::vector<Example> const examples = {
        {true, "??????.txt", "", {"report.doc"}},
        {true, "????", "", {"ab"}},
        {true, "||?", "", {"abc"}},
        {true, "photo_###", "", {"a", "b", "c"}},
        {true, "#-#", "", {"a", "b"}},
        {false, "a", "b", {"banana"}},
        {false, "*.txt", "*.bak", {"x.txt", "x.doc"}},
        {false, "a?c", "x?z", {"abc"}},
        {false, "*", "x", {"p", "q"}},
        {false, "*_*", "*-*", {"a_b_c"}},
        {false, "*a*", "[*][*]", {"xa", "xab"}},
        {false, "*.?", "*.x", {"a.b", "ab"}},
        {false, "*?", "?*", {"abc"}},
        {false, "a", "ab", {"ab", "a"}},
    };
    std::vector<std::string> inputs;
    for (Example const& e : examples) {
        Layout layout;
        layout.flag(e.pattern).text(e.first).text(e.second);
        for (char const* name : e.names) {
            layout.text(name).in(2, 0, 7);
        }
        inputs.push_back(layout.data());
    }
    saveAll("renamer", "example-", inputs);
}

// The count of variables, each name (behind the prefix) and value, then the text to expand.
void environmentSeeds() {
    saveAll("environment", "example-",
            {Layout()
                 .in(2, 0, 4)
                 .text("A")
                 .text("one")
                 .text("B")
                 .text("two")
                 .bytes("%KFA% and %KFB%, %KFC% stays, %PCT% %A% %B% %DOUBLE% %INNER% %LEAD%")
                 .data(),
             Layout().in(1, 0, 4).text("X").text("%KFX%").bytes("%KFX%%KFX%").data(),
             Layout().in(1, 0, 4).text("=").text("refused").bytes("%KF=%").data()});
}

// The known folders: HOME, XDG_DOCUMENTS_DIR and XDG_DATA_HOME (each set or not), then the file.
void userFolderSeeds() {
    auto const input = [](char const* home, char const* documents, std::string const& file) {
        return Layout()
            .in(home != nullptr ? 1 : 0, 0, 7)
            .text(home != nullptr ? home : "")
            .flag(documents != nullptr)
            .text(documents != nullptr ? documents : "")
            .flag(true)
            .text("/srv//data/")
            .bytes(file)
            .data();
    };
    saveAll("user_folders", "example-",
            {input("/home/u", nullptr,
                   "# written by xdg-user-dirs-update\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
                   "XDG_DOCUMENTS_DIR=\"$HOME/Documents\"\n"),
             input("/home/u/", "/srv/docs", "  XDG_DOCUMENTS_DIR=/srv/my//docs/  # bare\n"),
             input("/home/u", "relative", "XDG_DOCUMENTS_DIR=\"$HOME/My\\ \\\"Docs\\\"\"\r\n"),
             input(nullptr, nullptr,
                   "XDG_DOCUMENTS_DIR=\"$HOMEx/y\"\nXDG_DOCUMENTS_DIR=\"/a\\\\b\"\n")});
}

// Operations on bits and packers, in the layout of the target: the documented examples.
void bitSeeds() {
    auto const pick = [](Layout& l, std::uint64_t index) { l.in(index, 0, 22); };
    auto const quarters = [](Layout& l, double v) {
        l.in(22, 0, 22).in(static_cast<std::uint64_t>(static_cast<std::int64_t>(v * 4) + 70000), 0,
                           140000);
    };
    // A field: offset, length, the scaling's place in the target's table, sign; then the range
    // asked of getScaling as two interesting values.
    auto const field = [](Layout& l, unsigned offset, unsigned length, unsigned scaling,
                          bool isSigned) {
        l.in(1, 0, 4).flag(true).in(offset, 0, 63).flag(true);
        l.in(length, 1, 64 - std::min(offset, 63u)).in(scaling, 0, 10).flag(isSigned);
        l.in(0, 0, 22).in(7, 0, 22);
    };
    Layout packers;
    packers.flag(false);
    field(packers, 0, 8, 0, false); // 200.7 stores C8
    pick(packers.bytes("\0"s), 7);
    field(packers, 0, 8, 0, false); // 300.0 stores 2C
    pick(packers.bytes("\0"s), 8);
    field(packers, 0, 8, 0, false); // -3.0 stores FD
    pick(packers.bytes("\0"s), 6);
    field(packers, 0, 4, 1, false); // scaling 0.5: 3.3 stores 6
    pick(packers.bytes("\0"s), 5);
    field(packers, 0, 4, 0, true); // -3.0 stores 03
    pick(packers.bytes("\0"s), 6);
    field(packers, 0, 8, 3, true); // scaling 0.1: 20.0 stores FF
    quarters(packers.bytes("\0"s), 20.0);
    field(packers, 3, 10, 2, false); // scaling 0.25: 100.0 stores the word 0C80
    quarters(packers.bytes("\0\0"s), 100.0);
    field(packers, 2, 3, 0, false); // 1.0 over FF leaves E7
    pick(packers.bytes("\xFF"s), 3);
    field(packers, 8, 40, 0, false); // 2^64 + 4096 stores as 4096
    pick(packers.bytes(std::string(8, '\xFF')), 14);
    packers.in(0, 0, 4).byte(9).bytes("\0\0"s); // a bool at offset 9: 2.5 sets it
    quarters(packers, 2.5);

    // setBit(9) on two zero bytes, insertBit true, false, true, moveTo(11), the cursor's moves.
    Layout bits;
    bits.flag(true).in(2, 0, 24).bytes("\0\0"s).in(1, 0, 7);
    bits.in(1, 0, 11).flag(true).in(9, 0, 32).flag(true).flag(true);
    bits.in(2, 0, 11);
    for (bool value : {true, false, true}) {
        bits.in(5, 0, 11).flag(value);
    }
    bits.in(10, 0, 11).flag(true).in(11, 0, 32).in(3, 0, 11);
    bits.in(8, 0, 11).flag(true).in(1000, 0, 5000).in(6, 0, 11);
    bits.in(9, 0, 11).in(1000, 0, 0xFFFFFFFF).in(7, 0, 11).in(11, 0, 11);
    bits.in(0, 0, 11).flag(false).in(0xFFFFFFFF, 0, 0xFFFFFFFF);
    // Eight insertBit(true) on one byte: FF, the cursor on its last bit.
    Layout full;
    full.flag(true).in(1, 0, 24).bytes("\0"s).in(1, 0, 7);
    for (int i = 0; i < 9; ++i) {
        full.in(5, 0, 11).flag(true);
    }
    saveAll("bits", "example-", {packers.data(), bits.data(), full.data()});
}

// Buffer streams: the input's length and repeated piece, the output block; then operations.
// File streams: eight writes through two objects, then reads.
void streamSeeds() {
    auto const buffers = [](std::size_t length, std::string const& piece, std::size_t target) {
        Layout l;
        l.flag(true).in(length, 0, 30000).in(piece.size(), 1, 64).bytes(piece);
        l.in(1, 0, 15).in(target, 0, 30000).in(1, 0, 15);
        return l;
    };
    Layout threeBlocks = buffers(25000, "abc", 25000); // copies in 10240, 10240 and 4520
    threeBlocks.flag(false).in(6, 0, 8).flag(false).in(0, 0, 8).in(0, 0, 4).in(4, 0, 3000);
    Layout shortOutput = buffers(25000, "abc", 100); // writes 100 bytes, false
    shortOutput.flag(false).in(6, 0, 8);
    Layout steps = buffers(10, "0123456789", 4);
    steps.flag(false).in(0, 0, 8).in(0, 0, 4).in(4, 0, 3000);             // read 4 of 10
    steps.flag(false).in(0, 0, 8).in(0, 0, 4).in(100, 0, 3000);           // read the other 6
    steps.flag(true).in(0, 0, 8).in(2, 0, 4).flag(true).in(100, 0, 3000); // skip all
    steps.flag(false).in(1, 0, 8);                                        // a copy
    steps.flag(true).in(0, 0, 8).in(4, 0, 4);                             // close
    steps.flag(false).in(2, 0, 8).in(3, 0, 12000).in(3, 1, 64).bytes("xyz");
    steps.flag(false).in(2, 0, 8).in(3, 0, 12000).in(3, 1, 64).bytes("xyz"); // one byte fits
    steps.flag(false).in(3, 0, 8).byte('!');                                 // full
    steps.flag(true).in(7, 0, 8).in(0xFFFFFFFF, 0, 0xFFFFFFFF);              // a claiming input
    steps.in(2, 0, 5).in(5, 1, 10240).bytes("hello").in(0, 0, 5);

    Layout files;
    files.flag(false);
    files.flag(false).in(0, 0, 3).in(8000, 0, 8000).in(5, 1, 64).bytes("line\n");
    files.flag(true).in(1, 0, 3).byte('z');
    files.flag(false).in(2, 0, 3);
    files.flag(false).in(1, 0, 3).byte(0);
    files.flag(true).in(2, 0, 3);
    files.flag(true).in(0, 0, 3).in(3, 0, 8000).in(3, 1, 64).bytes("end");
    files.flag(true).in(3, 0, 3);
    files.flag(false).in(1, 0, 3).byte('\n');
    files.flag(false).in(2, 0, 4).flag(true).in(5, 0, 3000);
    files.flag(true).in(0, 0, 4).in(100, 0, 3000);
    files.flag(false).in(1, 0, 4);
    saveAll("streams", "example-",
            {threeBlocks.data(), shortOutput.data(), steps.data(), files.data()});
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
        return 2;
    }
    gRoot = argv[1];

    // Several values in a row, as a reader meets them, and the stream of a hostile length.
    kelBinarySerializer texts;
    for (char const* text : {"", "abc", "a;b\"c", "Unique on 2024/03/09 07:05"}) {
        kelString(text).serializeTo(texts);
    }
    save("string_wire", "texts", texts);
    kelBinarySerializer hostile;
    hostile.serialize(UInt32(0xFFFFFFFFu));
    hostile.serialize(reinterpret_cast<UInt8 const*>("abc"), 3);
    save("string_wire", "hostile-length", hostile);
    save("buffer_wire", "hostile-length", hostile);

    kelBinarySerializer buffers;
    for (UInt32 size : {0u, 1u, 2u, 4u, 8u, 13u}) {
        kelMemoryBuffer buffer(size);
        for (UInt32 i = 0; i < size; ++i) {
            buffer[i] = static_cast<UInt8>(0x41 + i);
        }
        buffer.serializeTo(buffers);
    }
    save("buffer_wire", "buffers", buffers);

    kelBinarySerializer variants;
    kelVariant const values[] = {kelVariant(true),
                                 kelVariant(UInt8(200)),
                                 kelVariant(char(-5)),
                                 kelVariant(UInt16(60000)),
                                 kelVariant(short(-300)),
                                 kelVariant(UInt32(4000000000u)),
                                 kelVariant(SInt32(-7)),
                                 kelVariant(18446744073709551615ull),
                                 kelVariant(-9000000000ll),
                                 kelVariant(1.5f),
                                 kelVariant(-2.25),
                                 kelVariant("text"),
                                 kelVariant(kelTime(1709967900ull))};
    for (kelVariant const& v : values) {
        kelBinarySerializer one;
        v.serializeTo(one);
        save("variant_wire", std::string("format-") + v.getFormat().toString(), one);
        v.serializeTo(variants);
    }
    save("variant_wire", "all-formats", variants);
    kelBinarySerializer hostileVariant;
    hostileVariant.serialize(UInt8(11));
    hostileVariant.serialize(UInt32(0xFFFFFFFFu));
    hostileVariant.serialize(reinterpret_cast<UInt8 const*>("abc"), 3);
    save("variant_wire", "hostile-length", hostileVariant);

    kelBinarySerializer time;
    kelTime(1709967900ull).serializeTo(time);
    save("time", "wire", time);

    textEncodingSeeds();
    pathSeeds();
    fileTextSeeds();
    renamerSeeds();
    environmentSeeds();
    userFolderSeeds();
    bitSeeds();
    streamSeeds();
    return 0;
}
