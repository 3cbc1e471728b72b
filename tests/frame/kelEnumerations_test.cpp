#include <kelcore/frame/DailyType.h>
#include <kelcore/frame/RepetitiveType.h>
#include <kelcore/frame/ScheduleType.h>
#include <kelcore/frame/kelAssertManager.h>
#include <kelcore/frame/kelDriveType.h>
#include <kelcore/frame/kelEventTypes.h>
#include <kelcore/frame/kelFileAttributes.h>
#include <kelcore/frame/kelFileOperationFlag.h>
#include <kelcore/frame/kelFileOperationType.h>
#include <kelcore/frame/kelFileSizeUnit.h>
#include <kelcore/frame/kelMonth.h>
#include <kelcore/frame/kelTaskState.h>
#include <kelcore/frame/kelTimeUnit.h>
#include <kelcore/frame/kelVariantFormat.h>
#include <kelcore/frame/kelVersion.h>
#include <kelcore/frame/kelWeekDay.h>

#include <gtest/gtest.h>

#include <cctype>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace KELKIT;

namespace {

struct Row {
    std::string name;
    int value;
};

// The published table of one class, as "Name=number ..." text.
std::vector<Row> rowsOf(std::string const& table) {
    std::vector<Row> rows;
    std::istringstream in(table);
    std::string item;
    while (in >> item) {
        auto const equals = item.find('=');
        rows.push_back({item.substr(0, equals), std::stoi(item.substr(equals + 1))});
    }
    return rows;
}

std::string upper(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

template <class E>
void checkAgainstTable(char const* table) {
    SCOPED_TRACE(table);
    std::vector<Row> const rows = rowsOf(table);
    int const count = static_cast<int>(rows.size());
    E e;
    kelBaseEnum& base = e; // everything goes through the virtual slots
    ASSERT_EQ(count, base.getNumValues());
    EXPECT_EQ(0, base.getValue());
    auto const parsed = [&](std::string const& text) {
        e = 12345;
        e = text.c_str();
        return base.getValue();
    };
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(rows[i].value, base.getValues()[i]);
        e = rows[i].value;
        EXPECT_STREQ(rows[i].name.c_str(), base.toString());
        base.next();
        EXPECT_EQ(rows[(i + 1) % count].value, base.getValue());
        e = rows[i].value;
        base.previous();
        EXPECT_EQ(rows[(i + count - 1) % count].value, base.getValue());

        EXPECT_EQ(rows[i].value, parsed(rows[i].name));
        EXPECT_EQ(rows[i].value, parsed(upper(rows[i].name)));
        // Only the exact name and the name in capitals parse; a failure stores 0.
        std::string lower = rows[i].name;
        lower[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(lower[0])));
        if (lower != rows[i].name && upper(rows[i].name) != lower) {
            EXPECT_EQ(0, parsed(lower)) << lower;
        }
    }
    // Unnamed values: empty name, and both steps go to the first row.
    e = 99;
    EXPECT_STREQ("", base.toString());
    base.previous();
    EXPECT_EQ(rows[0].value, base.getValue());
    e = 99;
    base.next();
    EXPECT_EQ(rows[0].value, base.getValue());
    e = 7;
    e = static_cast<char const*>(nullptr);
    EXPECT_EQ(0, base.getValue());
    // The conversion reaches the stored value itself.
    E copy(rows[count - 1].value);
    static_cast<typename E::Enum&>(copy) = static_cast<typename E::Enum>(rows[0].value);
    EXPECT_TRUE(copy == static_cast<typename E::Enum>(rows[0].value));
    EXPECT_FALSE(copy != static_cast<typename E::Enum>(rows[0].value));
}

} // namespace

TEST(kelEnumerations, EveryClassFollowsItsTable) {
    checkAgainstTable<kelDriveType>("Fixed=0 Remote=1 CdRom=2 Removable=3 RamDisk=4 Unknown=5");
    checkAgainstTable<kelTaskState>("Play=0 Pause=1 Stop=2");
    checkAgainstTable<kelMonth>("January=1 February=2 March=3 April=4 May=5 June=6 July=7 "
                                "August=8 September=9 October=10 November=11 December=12");
    checkAgainstTable<kelWeekDay>(
        "Sunday=1 Monday=2 Tuesday=3 Wednesday=4 Thursday=5 Friday=6 Saturday=7");
    checkAgainstTable<kelTimeUnit>(
        "Years=0 Months=1 Weeks=2 Days=3 Hours=4 Minutes=5 Seconds=6 Milliseconds=7");
    checkAgainstTable<kelEventTypes>("FileCopy=0 FolderCopy=1 FileDelete=2 FolderDelete=3 "
                                     "HeartBeat=4 CancelAction=5 Custom=32768");
    checkAgainstTable<kelFileAttributes>("None=1 File=2 Folder=4 CurrentFolder=8 "
                                         "ParentFolder=16 Archive=32 Hidden=64 ReadOnly=128 "
                                         "System=256");
    checkAgainstTable<kelFileOperationFlag>(
        "DisplayProgress=0 ShowErrors=1 ShowConfirmation=2 Recycle=3");
    checkAgainstTable<kelFileOperationType>("Copy=0 Move=1 Delete=2 Rename=3");
    checkAgainstTable<kelFileSizeUnit>("Bytes=0 Kilobytes=1 Megabytes=2 Gigabytes=3 Terabytes=4");
    checkAgainstTable<kelVariantFormat>("Bool=0 UInt8=1 SInt8=2 UInt16=3 SInt16=4 UInt32=5 "
                                        "SInt32=6 UInt64=7 SInt64=8 Float32=9 Float64=10 "
                                        "String=11 Time=12");
    checkAgainstTable<ScheduleType>("Unique=0 Repetitive=1 Daily=2 Weekly=3 Montly=4");
    checkAgainstTable<RepetitiveType>("Minutes=0 Hours=1 Days=2 Weeks=3 Months=4");
    checkAgainstTable<DailyType>("Everyday=0 WeekDays=1 WeekEnds=2");
    checkAgainstTable<kelVersion::Flags>("None=0 Minor=1 Patch=2 Build=4 Trim=8 All=15");
    checkAgainstTable<kelAssertManager::Mode>("Default=0 Message=1 Exception=2");
}

TEST(kelEnumerations, QuirksOfNamesAndFlags) {
    ScheduleType schedule(ScheduleType::Weekly);
    schedule = "Monthly"; // the name callers use is "Montly"
    EXPECT_TRUE(schedule == ScheduleType::Unique);

    kelFileAttributes attributes(kelFileAttributes::Hidden);
    attributes.setFlags(kelFileAttributes::ReadOnly, true);
    EXPECT_EQ(192, attributes.getValue());
    EXPECT_STREQ("", attributes.toString());
    EXPECT_TRUE(attributes.isFlagsEnabled(kelFileAttributes::ReadOnly | kelFileAttributes::Hidden));
    EXPECT_FALSE(attributes.isFlagsEnabled(kelFileAttributes::Hidden | kelFileAttributes::File));
    EXPECT_TRUE(attributes.isFlagsEnabled(0));
    attributes.next();
    EXPECT_TRUE(attributes == kelFileAttributes::None);

    kelWeekDay day(kelWeekDay::Friday); // sequences take flag arithmetic too
    day.setFlags(2, false);
    EXPECT_EQ(4, day.getValue());
}
