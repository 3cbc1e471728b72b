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

std::vector<std::string> childTexts(kelNode const* node) {
    std::vector<std::string> texts;
    for (UInt32 i = 0; i < node->getChildrenCount(); ++i) {
        texts.push_back(text(node->getChildren(i)));
    }
    return texts;
}

// No two neighbours among the children compare as `wrong`.
bool ordered(kelNode const* node, kelNodeComparator const& comparator, int wrong) {
    for (UInt32 k = 1; k < node->getChildrenCount(); ++k) {
        if (comparator.compare(node->getChildren(k - 1), node->getChildren(k)) == wrong) {
            return false;
        }
    }
    return true;
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
    EXPECT_TRUE(a->getSiblingCount() == 2 && a->getSibling(0) == b && b->getSibling(1) == c);
    EXPECT_EQ(a->getSibling(2), nullptr);
    root.setMaxChildren(1);
    EXPECT_EQ(root.getMaxChildren(), 3u);
    kelNode* extra = new kelNode(&root); // refused by the full parent: stands alone
    EXPECT_EQ(extra->getParentNode(), nullptr);
    EXPECT_TRUE(grand->addNode(extra));
    EXPECT_TRUE(root.removeNode(1u));
    EXPECT_TRUE(root.getChildren(0) == a && root.getChildren(1) == c && !root.getChildren(2));
    // The parent link alone: a listed node stays listed and keeps being refused elsewhere.
    c->setParentNode(nullptr);
    EXPECT_FALSE(a->addNode(c));
    EXPECT_EQ(root.getChildrenCount(), 2u);
    kelNode lonely;
    {
        kelNode stray;
        lonely.setParentNode(&stray);
        EXPECT_TRUE(lonely.getParentNode() == &stray && !root.addNode(&lonely));
    }
    EXPECT_EQ(lonely.getParentNode(), nullptr); // the link does not keep its parent alive
    EXPECT_FALSE(kelNode(nullptr, 0).addNode(&lonely));
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
        int expectedCalls = 0; // the receiver always, then the rest while there is room
        for (std::size_t i = 0; i == 0 || (recursive && i < order.size() && expected.size() < room);
             ++i) {
            ++expectedCalls;
            if (filter.kelNodeTextFilter::matches(order[i]) && expected.size() < room) {
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
            before.push_back(childTexts(node));
        }
        root.sort(kelNodeTextComparator(), deep);
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (i == 0 || deep) {
                std::sort(before[i].begin(), before[i].end());
            }
            EXPECT_EQ(childTexts(order[i]), before[i]);
        }
        root.sort(kelNodeDefaultComparator(), false);
        EXPECT_TRUE(ordered(&root, kelNodeDefaultComparator(), 1));
    }
    EXPECT_EQ(gLive, 0);
}

TEST(kelNode, CopiesShareStateAndReleaseItOnce) {
    {
        Counted root(nullptr, "r");
        Counted* child = new Counted(&root, "c");
        new Counted(child, "g");
        Counted copy(root); // a second handle: same children, own text
        copy.setText("x");
        EXPECT_TRUE(copy.getChildren(0) == child && std::string(root.getText()) == "r");
        EXPECT_FALSE(copy.removeNode(child->getChildren(0)));
        {
            Counted other(nullptr, "o");
            new Counted(&other, "oc");
            other = root; // its former child goes with its former state
            EXPECT_TRUE(gLive == 5 && other.getChildren(0) == child);
            EXPECT_FALSE(root.addNode(&other) || child->addNode(&other)); // copies are the node
        }
        EXPECT_EQ(gLive, 4);
        Counted childView(*child); // outlives the child's place in the tree
        EXPECT_EQ(childView.getParentNode(), &root);
        EXPECT_TRUE(root.removeNode(&childView)); // a copy names the child
        EXPECT_TRUE(childView.getParentNode() == nullptr && childView.getChildrenCount() == 1);
        EXPECT_TRUE(root.addNode(new Counted(nullptr, "n")));
        // A listed node keeps its place on assignment and only takes the text.
        Counted* listed = static_cast<Counted*>(root.getChildren(0));
        *listed = childView;
        EXPECT_TRUE(std::string(listed->getText()) == "c" && listed->getParentNode() == &root &&
                    listed->getChildrenCount() == 0);
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
        auto const want =
            std::count_if(all.begin(), all.end(), [](kelNode* n) { return text(n) == "tb"; });
        std::vector<kelNode*> found(all.size());
        EXPECT_EQ(root.findNodes(kelNodeTextFilter("b"), found.data(), 100000, true),
                  static_cast<UInt32>(want));
        root.sort(kelNodeTextComparator(), true);
        EXPECT_TRUE(ordered(all[rng() % all.size()], kelNodeTextComparator(), 1));
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
