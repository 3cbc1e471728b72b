#include <kelcore/tasks/kelStateMachine.h>

#include <kelcore/strings/kelString.h>

#include <vector>

namespace KELKIT {

namespace {

struct State {
    UInt32 id;
    kelString name;
    std::vector<State*> transitions; // targets in order of addition, each at most once
};

} // namespace

class kelStateMachine::Impl {
public:
    State* current = nullptr;
    std::vector<std::unique_ptr<State>> states; // in order of addition

    State* find(UInt32 id) const {
        for (auto const& state : states) {
            if (state->id == id) {
                return state.get();
            }
        }
        return nullptr;
    }
};

UInt64 const kelStateMachine::INVALID_STATE_INDEX = ~UInt64(0);
UInt64 const kelStateMachine::INVALID_TRANSITION_INDEX = ~UInt64(0);

kelStateMachine::kelStateMachine() : mImpl(std::make_shared<Impl>()) {}

kelStateMachine::kelStateMachine(kelStateMachine const&) : mImpl(std::make_shared<Impl>()) {}

kelStateMachine& kelStateMachine::operator=(kelStateMachine const& other) {
    // The former states go with the last machine that shared them.
    mImpl = other.mImpl;
    return *this;
}

kelStateMachine::~kelStateMachine() = default;

void kelStateMachine::onTransition(UInt32, UInt32, bool&) {}

bool kelStateMachine::addState(UInt32 id) {
    return addState(id, nullptr);
}

bool kelStateMachine::addState(UInt32 id, char const* name) {
    if (findStateIndex(id) != INVALID_STATE_INDEX) {
        return false;
    }
    std::unique_ptr<State> state(new State{id, kelString(name), {}});
    mImpl->states.push_back(std::move(state));
    return true;
}

bool kelStateMachine::removeState(UInt32 id) {
    UInt64 const index = findStateIndex(id);
    if (index == INVALID_STATE_INDEX) {
        return false;
    }
    removeTransitionsTo(id);
    Impl& impl = *mImpl;
    if (impl.current == impl.states[index].get()) {
        impl.current = nullptr;
    }
    impl.states.erase(impl.states.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

void kelStateMachine::clear() {
    mImpl->current = nullptr;
    mImpl->states.clear();
}

UInt32 kelStateMachine::getNumStates() const {
    return static_cast<UInt32>(mImpl->states.size());
}

bool kelStateMachine::getStates(kelListUInt32& states) const {
    states.clear();
    for (auto const& state : mImpl->states) {
        states.add(state->id);
    }
    return true;
}

char const* kelStateMachine::getStateName(UInt32 id) const {
    State const* state = mImpl->find(id);
    return state != nullptr ? state->name.c_str() : nullptr;
}

void kelStateMachine::setStateName(UInt32 id, char const* name) {
    State* state = mImpl->find(id);
    if (state != nullptr) {
        state->name = name;
    }
}

bool kelStateMachine::setInitState(UInt32 id) {
    State* state = mImpl->find(id);
    if (state == nullptr) {
        return false;
    }
    mImpl->current = state;
    return true;
}

UInt32 kelStateMachine::getState() const {
    return mImpl->current != nullptr ? mImpl->current->id : 0;
}

bool kelStateMachine::changeState(UInt32 id) {
    // onTransition may change or reassign this machine; the states it started from stay
    // alive until the move is settled.
    std::shared_ptr<Impl> const impl = mImpl;
    State const* from = impl->current;
    if (from == nullptr || impl->find(id) == nullptr) {
        return false;
    }
    // Targets are unique per state, so the walk meets the target once at most.
    if (findTransitionIndex(from->id, id) == INVALID_TRANSITION_INDEX) {
        return false;
    }
    bool allow = true;
    onTransition(from->id, id, allow);
    if (!allow) {
        return false;
    }
    State* target = impl->find(id);
    if (target == nullptr) {
        return false;
    }
    impl->current = target;
    return true;
}

bool kelStateMachine::addTransition(UInt32 from, UInt32 to) {
    State* source = mImpl->find(from);
    State* target = mImpl->find(to);
    if (source == nullptr || target == nullptr ||
        findTransitionIndex(from, to) != INVALID_TRANSITION_INDEX) {
        return false;
    }
    source->transitions.push_back(target);
    return true;
}

bool kelStateMachine::removeTransition(UInt32 from, UInt32 to) {
    UInt64 const index = findTransitionIndex(from, to);
    if (index == INVALID_TRANSITION_INDEX) {
        return false;
    }
    std::vector<State*>& transitions = mImpl->find(from)->transitions;
    transitions.erase(transitions.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

bool kelStateMachine::removeTransitionsFrom(UInt32 id) {
    State* state = mImpl->find(id);
    if (state == nullptr) {
        return false;
    }
    state->transitions.clear();
    return true;
}

bool kelStateMachine::removeTransitionsTo(UInt32 id) {
    for (auto const& state : mImpl->states) {
        std::vector<State*>& transitions = state->transitions;
        for (std::size_t i = transitions.size(); i-- > 0;) {
            if (transitions[i]->id == id) {
                transitions.erase(transitions.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
    }
    return true;
}

UInt64 kelStateMachine::getNumTransitions(UInt32 id) const {
    State const* state = mImpl->find(id);
    return state != nullptr ? state->transitions.size() : 0;
}

bool kelStateMachine::getTransitions(UInt32 id, kelListUInt32& targets) const {
    State const* state = mImpl->find(id);
    if (state == nullptr) {
        return false;
    }
    targets.clear();
    for (State const* target : state->transitions) {
        targets.add(target->id);
    }
    return true;
}

bool kelStateMachine::getTransitions(kelListUInt32& targets) const {
    if (mImpl->current == nullptr) {
        return false;
    }
    return getTransitions(mImpl->current->id, targets);
}

UInt64 kelStateMachine::findStateIndex(UInt32 id) const {
    std::vector<std::unique_ptr<State>> const& states = mImpl->states;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i]->id == id) {
            return i;
        }
    }
    return INVALID_STATE_INDEX;
}

UInt64 kelStateMachine::findTransitionIndex(UInt32 from, UInt32 to) const {
    State const* source = mImpl->find(from);
    if (source == nullptr) {
        return INVALID_TRANSITION_INDEX;
    }
    for (std::size_t i = 0; i < source->transitions.size(); ++i) {
        if (source->transitions[i]->id == to) {
            return i;
        }
    }
    return INVALID_TRANSITION_INDEX;
}

} // namespace KELKIT
