#include <kelcore/containers/kelNode.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/menus/kelIcon.h>
#include <kelcore/menus/kelIconTransparency.h>
#include <kelcore/menus/kelMenu.h>
#include <kelcore/menus/kelMenuCommandIdFilter.h>
#include <kelcore/menus/kelMenuNumbering.h>
#include <kelcore/menus/kelMenuSeparator.h>
#include <kelcore/menus/kelMenuSequentialIdFilter.h>
#include <kelcore/menus/kelMenuUniqueIdFilter.h>

#include "menus/kelMenuTrees.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

using namespace KELKIT;

TEST(kelMenu, EntriesSeparatorsIconsAndFilters) {
    kelMenu root;
    EXPECT_STREQ(root.toString().c_str(), "menu [name=\"\" uid=-1 cid=-1 sid=-1]");
    kelMenu* open = new kelMenu(&root, "Open");
    open->setUniqueId(7);
    open->setCommandId(1000);
    open->setSequentialId(3);
    EXPECT_STREQ(open->toString().c_str(), "menu [name=\"Open\" uid=7 cid=1000 sid=3]");
    kelMenuSeparator* line = new kelMenuSeparator(&root);
    EXPECT_TRUE(line->isSeparator() && line->isEnabled() && line->getParentNode() == &root);
    EXPECT_EQ(line->getMaxChildren(), 0u);
    kelMenu loose;
    EXPECT_FALSE(line->addNode(&loose));
    new kelNode(&root); // not a menu: the identifier filters pass over it

    kelNode* found[4] = {};
    root.setUniqueId(7);
    EXPECT_EQ(root.findNodes(kelMenuUniqueIdFilter(7), found, 4, true), 2u);
    EXPECT_TRUE(found[0] == &root && found[1] == open);
    EXPECT_EQ(root.findNodes(kelMenuCommandIdFilter(-1), found, 4, true), 2u);
    EXPECT_EQ(found[1], line);
    EXPECT_EQ(root.findNodes(kelMenuSequentialIdFilter(3), found, 4, true), 1u);
    EXPECT_FALSE(kelMenuUniqueIdFilter(-1).matches(nullptr));

    // Icons order by path, then index, against a tuple oracle over generated pairs.
    EXPECT_TRUE(kelIcon::NullIcon == kelIcon("") && kelIcon::NullIcon.getIndex() == 0);
    std::mt19937 rng(3);
    char const* paths[] = {"", "a", "b", "ab"};
    for (int i = 0; i < 200; ++i) {
        int const pa = rng() % 4, pb = rng() % 4;
        UInt16 const ia = rng() % 3, ib = rng() % 3;
        kelIcon const a(paths[pa], ia), b(paths[pb], ib);
        std::tuple<std::string, UInt16> const ta(paths[pa], ia), tb(paths[pb], ib);
        std::vector<bool> const got = {a == b, a != b, a<b, a <= b, a> b, a >= b};
        EXPECT_EQ(got, std::vector<bool>({ta == tb, ta != tb, ta<tb, ta <= tb, ta> tb, ta >= tb}));
    }
}

TEST(kelMenu, CopiesShareTheTreeAndCopyTheFields) {
    kelMenu file(nullptr, "File");
    new kelMenu(&file, "Open");
    file.setIcon(kelIcon("icons.dll", 4));
    file.setChecked(true);
    file.setUniqueId(9);
    kelMenu view(file);
    EXPECT_EQ(view.getChildren(0), file.getChildren(0));
    EXPECT_TRUE(view.isChecked() && view.getIcon() == file.getIcon() && view.getUniqueId() == 9);
    kelMenu other(nullptr, "Other");
    new kelMenuSeparator(&other);
    other = view; // the separator goes with other's former tree
    EXPECT_STREQ(other.getText(), "File");
    EXPECT_EQ(other.getChildrenCount(), 1u);
    kelMenuSeparator line(nullptr);
    kelMenuSeparator lineCopy(line);
    EXPECT_FALSE(lineCopy.addNode(new kelMenu(&file, "Save")));
    EXPECT_EQ(file.getChildrenCount(), 2u);
}

TEST(kelMenuNumbering, DepthFirstSkippingInvisibleEntries) {
    // The counters wrap rather than overflow.
    kelMenu root(nullptr, "root");
    new kelMenu(&root, "a");
    UInt32 command = 0xFFFFFFFFu;
    SInt32 sequence = INT_MAX;
    kelMenuNumbering::number(root, command, sequence);
    EXPECT_TRUE(command == 1 && sequence == INT_MIN + 1);
    EXPECT_EQ(static_cast<kelMenu*>(root.getChildren(0))->getSequentialId(), INT_MIN);

    // Generated trees against the test's own recursive rule, and the visitor's order.
    std::mt19937 rng(5);
    for (int round = 0; round < 40; ++round) {
        kelMenu top(nullptr, "top");
        std::vector<kelMenu*> const all = menutest::grow(top, 1 + rng() % 60, rng);
        UInt32 next = rng() % 1000;
        SInt32 seq = static_cast<SInt32>(rng() % 50);
        menutest::Oracle oracle{next, seq, {}, {}};
        oracle.run(top);
        menutest::EventLog log;
        kelMenuNumbering::walk(top, next, seq, log);
        for (kelMenu* item : all) {
            EXPECT_EQ(menutest::ids(item), oracle.expect(item));
        }
        EXPECT_EQ(log.events, oracle.events);
        EXPECT_EQ(next, static_cast<UInt32>(oracle.command));
    }
    kelMenu chain(nullptr, "chain");
    kelMenu* tip = &chain;
    for (int i = 0; i < 100000; ++i) {
        tip = new kelMenu(tip, "x");
    }
    UInt32 deep = 0;
    kelMenuNumbering::number(chain, deep);
    EXPECT_EQ(deep, 100001u);
    EXPECT_EQ(tip->getSequentialId(), 100000);
}

TEST(kelIconTransparency, WhiteMaskPixelsTakeTheBackground) {
    std::mt19937 rng(9);
    for (int round = 0; round < 50; ++round) {
        UInt32 const pixels = rng() % 40;
        kelMemoryBuffer mask(pixels * 4), image(pixels * 4);
        for (UInt32 i = 0; i < pixels * 4; ++i) {
            mask[i] = (rng() % 3 == 0) ? 255 : static_cast<UInt8>(rng() % 2 ? 255 : rng());
            image[i] = static_cast<UInt8>(rng());
        }
        kelMemoryBuffer const original(image);
        ASSERT_TRUE(kelIconTransparency::apply(mask, image, 10, 20, 30));
        UInt8 const background[4] = {10, 20, 30, 0};
        for (UInt32 p = 0; p < pixels * 4; p += 4) {
            bool const clear = mask[p] == 255 && mask[p + 1] == 255 && mask[p + 2] == 255;
            for (int k = 0; k < 4; ++k) {
                EXPECT_EQ(image[p + k], clear ? background[k] : k == 3 ? 255 : original[p + k]);
            }
        }
    }
    kelMemoryBuffer three(3), six(6), eight(8);
    EXPECT_FALSE(kelIconTransparency::apply(three, three, 0, 0, 0));
    EXPECT_FALSE(kelIconTransparency::apply(six, eight, 0, 0, 0));
}
