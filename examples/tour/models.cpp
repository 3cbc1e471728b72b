// Models of data: node trees and the menu model, tasks and the state machine.

#include "tour.h"

#include <cstdio>
#include <string>

namespace tour {

namespace {

char const* textOf(kelNode const* node) {
    auto const* textNode = dynamic_cast<kelTextNode const*>(node);
    return textNode != nullptr ? textNode->getText() : "?";
}

std::string childTexts(kelNode const& node) {
    std::string texts;
    for (UInt32 i = 0; i < node.getChildrenCount(); ++i) {
        texts += std::string(i ? ", " : "") + textOf(node.getChildren(i));
    }
    return texts;
}

// Prints each menu entry as the numbering reaches it.
class MenuPrinter : public kelMenuNumbering::Visitor {
public:
    void leaf(kelMenu& item, UInt32 depth) override { print(item, depth, ""); }
    void enterParent(kelMenu& item, UInt32 depth) override { print(item, depth, " >"); }

private:
    static void print(kelMenu const& item, UInt32 depth, char const* mark) {
        std::string const caption = item.isSeparator() ? "--------" : item.getText();
        std::printf("  %*s%-*s cid %3d  sid %2d\n", static_cast<int>(depth * 2), "",
                    static_cast<int>(16 - depth * 2), (caption + mark).c_str(),
                    static_cast<int>(item.getCommandId()),
                    static_cast<int>(item.getSequentialId()));
    }
};

// A menu described as data, numbered as the native menu would number it.
void menuModel() {
    kelNode* found[4] = {};
    kelMenu bar(nullptr, "Menu bar");
    kelMenu* file = new kelMenu(&bar, "File");
    new kelMenu(file, "Open...");
    new kelMenuSeparator(file);
    new kelMenu(new kelMenu(file, "Recent"), "notes.txt");
    (new kelMenu(file, "Exit"))->setUniqueId(42);
    kelMenu* edit = new kelMenu(&bar, "Edit");
    kelMenu* undo = new kelMenu(edit, "Undo");
    undo->setVisible(false);
    new kelMenu(edit, "Copy");
    UInt32 commandId = 100;
    SInt32 sequentialId = 0;
    MenuPrinter printer;
    std::printf("numbered from command id 100 (Undo is hidden):\n");
    kelMenuNumbering::walk(bar, commandId, sequentialId, printer);
    std::printf("next free command id: %u\n", static_cast<unsigned>(commandId));
    require(bar.findNodes(kelMenuUniqueIdFilter(42), found, 4, true) == 1, "no entry of uid 42");
    std::printf("the entry of unique id 42: %s\n", found[0]->toString().c_str());
    UInt32 const unnumbered = bar.findNodes(kelMenuCommandIdFilter(-1), found, 4, true);
    std::printf("entries without a command id: %u (%s)\n", static_cast<unsigned>(unnumbered),
                unnumbered ? textOf(found[0]) : "none");
}

} // namespace

void nodes() {
    // A parent owns the children that join it (made with new); a root may live on the stack.
    kelTextNode shelf(nullptr, "shelf");
    for (char const* fruit : {"pear", "apple", "fig"}) {
        new kelTextNode(&shelf, fruit);
    }
    new kelTextNode(shelf.getChildren(1), "green");
    new kelTextNode(shelf.getChildren(1), "red");
    std::printf("shelf holds %s (%u nodes below it)\n", childTexts(shelf).c_str(),
                static_cast<unsigned>(shelf.getChildrenCount(true)));
    shelf.sort(kelNodeTextComparator(), true);
    std::printf("sorted by text: %s\n", childTexts(shelf).c_str());
    kelNode* found[4] = {};
    UInt32 const hits = shelf.findNodes(kelNodeTextFilter("red"), found, 4, true);
    require(hits == 1, "findNodes did not find the one node \"red\"");
    std::printf("\"red\" found below \"%s\"\n", textOf(found[0]->getParentNode()));

    menuModel();
}

namespace {

void progressRecords() {
    kelTask copy;
    copy.setDescription("copy the photos");
    copy.setState(kelTaskState::Play);
    copy.setProgress(70);
    int ids[2] = {};
    for (int i = 0; i < 2; ++i) {
        ids[i] = copy.createSubTask();
        require(ids[i] >= 0, "createSubTask returned -1");
        kelTask* photo = copy.getSubTask(ids[i]);
        photo->setDescription(i == 0 ? "IMG_0001.jpeg" : "IMG_0002.jpeg");
        photo->setProgress(i == 0 ? 100 : 40);
        photo->setState(i == 0 ? kelTaskState::Stop : kelTaskState::Play);
    }
    std::printf("task \"%s\": %s, progress %g, %d subtasks\n", copy.getDescription().c_str(),
                copy.getState().toString(), copy.getProgress(), copy.getNumSubTasks());
    for (int id : ids) {
        kelTask* photo = copy.getSubTask(id);
        std::printf("  subtask %d \"%s\": %s, progress %g\n", id, photo->getDescription().c_str(),
                    photo->getState().toString(), photo->getProgress());
    }
    copy.removeSubTask(ids[0]);
    std::printf("subtask %d removed; the next subtask gets id %d\n", ids[0], copy.createSubTask());
}

void taskTree() {
    kelTaskTree tree;
    int const build = tree.createTask(kelTaskTree::NO_PARENT_INDEX, kelTaskState::Play, "build");
    tree.createTask(build, kelTaskState::Stop, "compile");
    tree.createTask(build, kelTaskState::Play, "link");
    tree.createTask(kelTaskTree::NO_PARENT_INDEX, kelTaskState::Pause, "publish");
    kelListInt const top = tree.getTopLevelTasks();
    for (UInt32 i = 0; i < top.size(); ++i) {
        kelListInt const below = tree.getSubTasks(top[i]);
        std::printf("tree task %d \"%s\" (%s), %u subtasks:", top[i],
                    tree.getTask(top[i]).getDescription().c_str(),
                    tree.getTask(top[i]).getState().toString(),
                    static_cast<unsigned>(below.size()));
        for (UInt32 j = 0; j < below.size(); ++j) {
            std::printf(" %d \"%s\"", below[j], tree.getTask(below[j]).getDescription().c_str());
        }
        std::printf("\n");
    }
}

enum : UInt32 { Stopped = 1, Playing = 2, Paused = 3 };

// Refuses to play without a disc.
class Player : public kelStateMachine {
public:
    bool hasDisc = false;
    void onTransition(UInt32, UInt32 to, bool& allow) override { allow = to != Playing || hasDisc; }

    void press(UInt32 to) {
        std::string const from = getStateName(getState());
        kelListUInt32 targets;
        getTransitions(targets);
        bool const moved = changeState(to);
        std::printf("  %-8s -> %-8s %s\n", from.c_str(), getStateName(to),
                    moved                  ? "moved"
                    : targets.contains(to) ? "refused by onTransition"
                                           : "refused: no such transition");
    }
};

void stateMachine() {
    Player player;
    require(player.addState(Stopped, "stopped") && player.addState(Playing, "playing") &&
                player.addState(Paused, "paused"),
            "addState returned false");
    require(player.addTransition(Stopped, Playing) && player.addTransition(Playing, Paused) &&
                player.addTransition(Paused, Playing) && player.addTransition(Playing, Stopped) &&
                player.addTransition(Paused, Stopped),
            "addTransition returned false");
    require(player.setInitState(Stopped), "setInitState returned false");
    std::printf("a player with 3 states; no disc yet:\n");
    player.press(Playing);
    player.hasDisc = true;
    std::printf("disc in:\n");
    for (UInt32 to : {Playing, Paused, Paused, Stopped}) {
        player.press(to);
    }
}

} // namespace

void tasks() {
    progressRecords();
    taskTree();
    stateMachine();
}

} // namespace tour
