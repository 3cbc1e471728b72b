#include <kelcore/tasks/kelStateMachine.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace KELKIT;

namespace {

class Watched : public kelStateMachine {
public:
    void onTransition(UInt32 from, UInt32 to, bool& allow) override {
        moves.push_back({from, to, getState()});
        if (hook) {
            hook(allow);
        }
    }
    std::vector<std::vector<UInt32>> moves; // from, to, and the state seen during the call
    std::function<void(bool&)> hook;
};

std::vector<UInt32> idsOf(kelListUInt32 const& list) {
    return std::vector<UInt32>(&list[0], &list[0] + list.size());
}

} // namespace

TEST(kelStateMachine, MovesOnlyAlongAllowedTransitions) {
    Watched m;
    kelListUInt32 list;
    list.add(5);
    EXPECT_TRUE(m.getStates(list) && list.empty());
    EXPECT_TRUE(m.addState(1, "one"));
    EXPECT_FALSE(m.addState(1, "again"));
    EXPECT_STREQ("one", m.getStateName(1));
    EXPECT_TRUE(m.addState(2) && m.addState(3, nullptr));
    EXPECT_STREQ("", m.getStateName(3));
    EXPECT_EQ(nullptr, m.getStateName(4));
    EXPECT_FALSE(m.addTransition(1, 4));
    EXPECT_TRUE(m.addTransition(1, 2) && m.addTransition(1, 3) && m.addTransition(3, 1));
    EXPECT_FALSE(m.addTransition(1, 2));
    EXPECT_FALSE(m.changeState(2)); // no current state yet
    EXPECT_FALSE(m.setInitState(9));
    EXPECT_TRUE(m.setInitState(1));
    EXPECT_FALSE(m.changeState(1)); // no self-transition
    EXPECT_TRUE(m.addTransition(1, 1));
    EXPECT_TRUE(m.changeState(1));
    m.hook = [](bool& allow) { allow = false; };
    EXPECT_FALSE(m.changeState(2));
    m.hook = nullptr;
    EXPECT_TRUE(m.changeState(3));
    EXPECT_EQ((std::vector<std::vector<UInt32>>{{1, 1, 1}, {1, 2, 1}, {1, 3, 1}}), m.moves);

    EXPECT_TRUE(m.getTransitions(1, list));
    EXPECT_EQ((std::vector<UInt32>{2, 3, 1}), idsOf(list));
    EXPECT_FALSE(m.removeTransition(1, 7));
    EXPECT_TRUE(m.removeState(1)); // also every transition to it
    EXPECT_EQ(0u, m.getNumTransitions(3));
    EXPECT_TRUE(m.removeState(3)); // the current state
    EXPECT_EQ(0u, m.getState());
    EXPECT_FALSE(m.getTransitions(list));
    EXPECT_FALSE(m.changeState(2));
    EXPECT_TRUE(m.removeTransitionsTo(42));
}

// Copies start empty; assignment shares; everything is freed once (ASan), also when the machine
// is changed or replaced from inside onTransition.
TEST(kelStateMachine, SharedStatesAreReleasedOnce) {
    Watched source;
    source.addState(1);
    source.addState(2);
    source.addTransition(1, 2);
    source.setInitState(1);
    EXPECT_EQ(0u, Watched(source).getNumStates());
    {
        kelStateMachine sharer;
        sharer.addState(7); // released when sharer takes the source's states
        sharer = source;
        sharer = sharer;
        EXPECT_TRUE(sharer.changeState(2));
        EXPECT_EQ(2u, source.getState());
    }
    source.addTransition(2, 1);
    source.hook = [&source](bool&) { source.removeState(1); };
    EXPECT_FALSE(source.changeState(1)); // the target went during the call
    source.addState(1);
    source.addTransition(2, 1);
    source.hook = [&source](bool&) { static_cast<kelStateMachine&>(source) = kelStateMachine(); };
    EXPECT_TRUE(source.changeState(1)); // moved in the states it started from
    EXPECT_EQ(0u, source.getNumStates());
}
