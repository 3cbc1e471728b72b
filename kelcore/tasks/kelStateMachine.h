#ifndef KELCORE_TASKS_KELSTATEMACHINE_H
#define KELCORE_TASKS_KELSTATEMACHINE_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

#include <memory>

namespace KELKIT {

// A finite state machine built at run time. States are numbers the caller picks, optionally
// named; transitions are directed pairs of states (a state may lead to itself); the machine
// moves from its current state only along a transition, and a subclass may veto each move in
// onTransition. Every failure is a false result, a null name or 0; nothing throws of its own.
//
// A new machine has no current state: changeState answers false until setInitState has
// succeeded. getState gives 0 both for no current state and for a state whose id is 0.
//
// Copying makes a new, empty machine. Assignment makes this machine share the source's states,
// transitions and current state: a change through either shows in both, and everything goes
// with the last machine that shares it. No locks: one thread at a time.
class KELCORE_API kelStateMachine {
public:
    kelStateMachine();
    kelStateMachine(kelStateMachine const& other);
    kelStateMachine& operator=(kelStateMachine const& other);
    virtual ~kelStateMachine();

    // Called before each move with allow set to true; clearing it refuses the move. getState
    // still gives `from` here. The machine may be changed from here: the move then happens only
    // if allow stays true and the state `to` still exists.
    virtual void onTransition(UInt32 from, UInt32 to, bool& allow);

    bool addState(UInt32 id);
    // False if the id exists. A null name is the empty name. The current state stays.
    bool addState(UInt32 id, char const* name);
    // Removes the state and every transition to it; if it was the current state there is then
    // none. The other states keep their order.
    bool removeState(UInt32 id);
    void clear();
    UInt32 getNumStates() const;
    // Always true: the list is cleared, then the ids in order of addition.
    bool getStates(kelListUInt32& states) const;
    // Null for an unknown id; valid until the name or the state changes.
    char const* getStateName(UInt32 id) const;
    void setStateName(UInt32 id, char const* name);
    // Jumps to the state, with no transition and no onTransition.
    bool setInitState(UInt32 id);
    UInt32 getState() const;
    // Moves along the transition from the current state to id, if onTransition allows it.
    bool changeState(UInt32 id);
    bool addTransition(UInt32 from, UInt32 to);
    bool removeTransition(UInt32 from, UInt32 to);
    bool removeTransitionsFrom(UInt32 id);
    // Always true, whether or not id is a state.
    bool removeTransitionsTo(UInt32 id);
    UInt64 getNumTransitions(UInt32 id) const;
    // False, with the list untouched, for an unknown id; else the targets in order of addition.
    bool getTransitions(UInt32 id, kelListUInt32& targets) const;
    // The same for the current state; false when there is none.
    bool getTransitions(kelListUInt32& targets) const;

private:
    static UInt64 const INVALID_STATE_INDEX;
    static UInt64 const INVALID_TRANSITION_INDEX;

    UInt64 findStateIndex(UInt32 id) const;
    UInt64 findTransitionIndex(UInt32 from, UInt32 to) const;

    class Impl;
    std::shared_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
