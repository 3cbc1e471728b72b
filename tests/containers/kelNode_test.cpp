#include <kelcore/containers/kelNode.h>
#include <kelcore/containers/kelNodeDefaultComparator.h>
#include <kelcore/containers/kelNodeTextComparator.h>
#include <kelcore/containers/kelNodeTextFilter.h>
#include <kelcore/containers/kelTextNode.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

// Counts live nodes, so a test sees every node go exactly once.
int gLive = 0;
struct Counted : kelTextNode {
    Counted(kelNode* parent, char const* text) : kelTextNode(parent, text) { ++gLive; }
    Counted(Counted const& other) : kelTextNode(other) { ++gLive; }
    Counted& operator=(Counted const& other) = default;
    ~Counted() override { --gLive; }
};

// A random tree below root: every new node goes under a random earlier one; some have no text.
std::vector<kelNode*> grow(kelNode& root, int count, std::mt19937& rng) {
    std::vector<kelNode*> all(1, &root);
    for (int i = 0; i < count; ++i) {
        kelNode* parent = all[rng() % all.size()];
        std::string const text(1, static_cast<char>('a' + rng() % 5));
        all.push_back(rng() % 4 == 0 ? new kelNode(parent) : new Counted(parent, text.c_str()));
    }
    return all;
}

// The oracle walk: depth first, parents first, through the public child access only.
void preorder(kelNode* node, std::vector<kelNode*>& out) {
    out.push_back(node);
    for (UInt32 i = 0; i < node->getChildrenCount(); ++i) {
        preorder(node->getChildren(i), out);
    }
}

struct CallCounter : kelNodeTextFilter {
    mutable int calls = 0;
    explicit CallCounter(char const* text) : kelNodeTextFilter(text) {}
    bool matches(kelNode const* node) const override {
        ++calls;
        return kelNodeTextFilter::matches(node);
    }
};

std::string text(kelNode const* node) {
    kelTextNode const* t = dynamic_cast<kelTextNode const*>(node);
    return t ? std::string("t") + t->getText() : std::string("~");
}

} // namespace

TEST(kelNode, StructureRulesAndRefusals) {
    kelNode root;
    EXPECT_EQ(root.getMaxChildren(), 0xFFFFFFFFu);
    kelNode* a = new kelNode(&root);
    kelNode* b = new kelNode(&root);
    kelNode* c = new kelNode(&root);
    kelNode* grand = new kelNode(a);
    EXPECT_EQ(root.getChildrenCount(true), 4u);
    EXPECT_FALSE(root.addNode(nullptr) || root.addNode(&root) || root.addNode(a)); // a has one
    EXPECT_FALSE(grand->addNode(&root));                                           // cycle
    EXPECT_FALSE(root.removeNode(grand));
    EXPECT_FALSE(grand->removeNode(0u));
    EXPECT_TRUE(root.findNode(grand, true) && !root.findNode(grand, false));
    EXPECT_FALSE(root.findNode(&root, true));
    EXPECT_EQ(a->getSiblingCount(), 2u);
    EXPECT_EQ(a->getSibling(0), b);
    EXPECT_EQ(b->getSibling(1), c);
    EXPECT_EQ(a->getSibling(2), nullptr);
    root.setMaxChildren(1);
    EXPECT_EQ(root.getMaxChildren(), 3u);
    kelNode* extra = new kelNode(&root); // refused by the full parent: stands alone
    EXPECT_EQ(extra->getParentNode(), nullptr);
    EXPECT_TRUE(grand->addNode(extra));
    EXPECT_TRUE(root.removeNode(1u));
    EXPECT_EQ(root.getChildren(0), a);
    EXPECT_EQ(root.getChildren(1), c);
    EXPECT_EQ(root.getChildren(2), nullptr);
    // The parent link alone: a listed node stays listed and keeps being refused elsewhere.
    c->setParentNode(nullptr);
    EXPECT_FALSE(a->addNode(c));
    EXPECT_EQ(root.getChildrenCount(), 2u);
    {
        kelNode stray;
        kelNode lonely;
        lonely.setParentNode(&stray);
        EXPECT_EQ(lonely.getParentNode(), &stray);
        EXPECT_EQ(lonely.getSiblingCount(), 0u);
        EXPECT_FALSE(root.addNode(&lonely));
        stray.setParentNode(nullptr);
        lonely.setParentNode(nullptr);
    }
    kelNode closed(nullptr, 0);
    kelNode loose;
    EXPECT_FALSE(closed.addNode(&loose));
}

TEST(kelNode, FindNodesAndSortAgainstOracles) {
    std::mt19937 rng(7);
    for (int round = 0; round < 60; ++round) {
        kelTextNode root(nullptr, "a");
        grow(root, 1 + static_cast<int>(rng() % 40), rng);
        std::vector<kelNode*> order;
        preorder(&root, order);
        char const* wanted[] = {"a", "b", "c"};
        CallCounter filter(wanted[rng() % 3]);
        bool const recursive = rng() % 4 != 0;
        UInt32 const room = rng() % 12;
        std::vector<kelNode*> expected;
        int expectedCalls = 1;
        if (filter.kelNodeTextFilter::matches(&root) && room > 0) {
            expected.push_back(&root);
        }
        for (std::size_t i = 1; recursive && i < order.size() && expected.size() < room; ++i) {
            ++expectedCalls;
            if (filter.kelNodeTextFilter::matches(order[i])) {
                expected.push_back(order[i]);
            }
        }
        std::vector<kelNode*> found(room + 1, nullptr);
        UInt32 const n = root.findNodes(filter, found.data(), room, recursive);
        found.resize(n);
        EXPECT_EQ(found, expected) << "round " << round;
        EXPECT_EQ(filter.calls, expectedCalls);

        // Sorting by text: each child list becomes the sorted texts, plain nodes last; without
        // recursive, lists below the root stay as they were.
        bool const deep = rng() % 2 == 0;
        std::vector<std::vector<std::string>> before;
        for (kelNode* node : order) {
            std::vector<std::string> texts;
            for (UInt32 i = 0; i < node->getChildrenCount(); ++i) {
                texts.push_back(text(node->getChildren(i)));
            }
            before.push_back(texts);
        }
        root.sort(kelNodeTextComparator(), deep);
        for (std::size_t i = 0; i < order.size(); ++i) {
            std::vector<std::string> want = before[i];
            if (i == 0 || deep) {
                std::sort(want.begin(), want.end());
            }
            std::vector<std::string> got;
            for (UInt32 k = 0; k < order[i]->getChildrenCount(); ++k) {
                got.push_back(text(order[i]->getChildren(k)));
            }
            EXPECT_EQ(got, want);
        }
        root.sort(kelNodeDefaultComparator(), false);
        for (UInt32 k = 1; k < root.getChildrenCount(); ++k) {
            EXPECT_EQ(
                kelNodeDefaultComparator().compare(root.getChildren(k - 1), root.getChildren(k)),
                -1);
        }
    }
    EXPECT_EQ(gLive, 0);
}

TEST(kelNode, CopiesShareStateAndReleaseItOnce) {
    {
        Counted root(nullptr, "r");
        Counted* child = new Counted(&root, "c");
        new Counted(child, "g");
        Counted copy(root); // a second handle: same children, own text
        EXPECT_EQ(copy.getChildren(0), child);
        copy.setText("x");
        EXPECT_STREQ(root.getText(), "r");
        EXPECT_FALSE(copy.removeNode(child->getChildren(0)));
        {
            Counted other(nullptr, "o");
            new Counted(&other, "oc");
            other = root; // its former child goes with its former state
            EXPECT_EQ(gLive, 5);
            EXPECT_EQ(other.getChildren(0), child);
            EXPECT_FALSE(root.addNode(&other) || child->addNode(&other)); // copies are the node
        }
        EXPECT_EQ(gLive, 4);
        Counted childView(*child); // outlives the child's place in the tree
        EXPECT_EQ(childView.getParentNode(), &root);
        EXPECT_TRUE(root.removeNode(&childView)); // a copy names the child
        EXPECT_EQ(childView.getParentNode(), nullptr);
        EXPECT_EQ(childView.getChildrenCount(), 1u);
        EXPECT_TRUE(root.addNode(new Counted(nullptr, "n")));
        // A listed node keeps its place on assignment and only takes the text.
        Counted* listed = static_cast<Counted*>(root.getChildren(0));
        *listed = childView;
        EXPECT_STREQ(listed->getText(), "c");
        EXPECT_EQ(listed->getParentNode(), &root);
        EXPECT_EQ(listed->getChildrenCount(), 0u);
        delete listed; // deleted directly: leaves its parent, which must not delete it again
        EXPECT_EQ(root.getChildrenCount(), 0u);
        copy = copy;
        EXPECT_EQ(gLive, 4);
    }
    EXPECT_EQ(gLive, 0);
}

TEST(kelNode, LargeTreesAndDeepChainsWithoutRecursion) {
    std::mt19937 rng(11);
    {
        kelTextNode root(nullptr, "a");
        std::vector<kelNode*> all = grow(root, 99999, rng);
        EXPECT_EQ(root.getChildrenCount(true), 99999u);
        long want = 0;
        for (kelNode* node : all) {
            want += text(node) == "tb";
        }
        std::vector<kelNode*> found(all.size());
        EXPECT_EQ(root.findNodes(kelNodeTextFilter("b"), found.data(), 100000, true),
                  static_cast<UInt32>(want));
        root.sort(kelNodeTextComparator(), true);
        kelNode* node = all[rng() % all.size()];
        for (UInt32 k = 1; k < node->getChildrenCount(); ++k) {
            EXPECT_NE(
                kelNodeTextComparator().compare(node->getChildren(k - 1), node->getChildren(k)), 1);
        }
        EXPECT_TRUE(root.findNode(all.back(), true));
        root.removeNodes();
        EXPECT_EQ(gLive, 0);
    }
    kelNode* chain = new kelNode;
    kelNode* tip = chain;
    for (int i = 0; i < 100000; ++i) {
        tip = new Counted(tip, "d");
    }
    EXPECT_TRUE(chain->findNode(tip, true));
    EXPECT_EQ(chain->getChildrenCount(true), 100000u);
    EXPECT_FALSE(tip->addNode(chain->getChildren(0)) || tip->addNode(chain));
    delete chain;
    EXPECT_EQ(gLive, 0);
}
