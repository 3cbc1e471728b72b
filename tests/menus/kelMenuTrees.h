#ifndef KELCORE_TESTS_KELMENUTREES_H
#define KELCORE_TESTS_KELMENUTREES_H

#include <kelcore/menus/kelMenu.h>
#include <kelcore/menus/kelMenuNumbering.h>
#include <kelcore/menus/kelMenuSeparator.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

// Generated menu trees and the test's own recursive statement of the numbering rule, shared
// by the portable and the native menu tests.
namespace menutest {

using namespace KELKIT;

// Random entries under random earlier ones: some hidden, disabled, checked, or separators.
inline std::vector<kelMenu*> grow(kelMenu& root, int count, std::mt19937& rng) {
    std::vector<kelMenu*> all(1, &root);
    for (int i = 0; i < count; ++i) {
        kelMenu* parent = all[rng() % all.size()];
        parent = parent->isSeparator() ? &root : parent;
        kelMenu* item = rng() % 8 == 0 ? new kelMenuSeparator(parent)
                                       : new kelMenu(parent, ("item " + std::to_string(i)).c_str());
        item->setVisible(rng() % 6 != 0);
        item->setEnabled(rng() % 3 != 0);
        item->setChecked(rng() % 3 == 0);
        all.push_back(item);
    }
    return all;
}

inline std::string tag(char kind, kelMenu const& item, UInt32 depth) {
    return kind + std::string(item.getText()) + "@" + std::to_string(depth);
}

// The rule: an entry takes the counters, then its visible children do, in order. events are
// the visitor calls the walk should make: L leaf, E and X entering and leaving a parent.
struct Oracle {
    long long command;
    int sequence;
    std::map<kelMenu const*, std::pair<int, int>> given;
    std::vector<std::string> events;

    void run(kelMenu const& item, UInt32 depth = 0) {
        given[&item] = std::make_pair(static_cast<int>(command++), sequence++);
        bool const parent = item.getChildrenCount() > 0;
        events.push_back(tag(parent ? 'E' : 'L', item, depth));
        for (UInt32 i = 0; i < item.getChildrenCount(); ++i) {
            kelMenu const* child = static_cast<kelMenu const*>(item.getChildren(i));
            if (child->isVisible()) {
                run(*child, depth + 1);
            }
        }
        if (parent) {
            events.push_back(tag('X', item, depth));
        }
    }
    // The identifiers an entry should hold: given ones, or still none for a new entry.
    std::pair<int, int> expect(kelMenu const* item) const {
        auto const it = given.find(item);
        return it == given.end() ? std::make_pair(-1, -1) : it->second;
    }
};

struct EventLog : kelMenuNumbering::Visitor {
    std::vector<std::string> events;
    void leaf(kelMenu& m, UInt32 depth) override { events.push_back(tag('L', m, depth)); }
    void enterParent(kelMenu& m, UInt32 d) override { events.push_back(tag('E', m, d)); }
    void leaveParent(kelMenu& m, UInt32 d) override { events.push_back(tag('X', m, d)); }
};

inline std::pair<int, int> ids(kelMenu const* item) {
    return std::make_pair(item->getCommandId(), item->getSequentialId());
}

} // namespace menutest

#endif
