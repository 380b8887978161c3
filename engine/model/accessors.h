#pragma once

#include "engine/model/properties.h"

/// The getters and setters of handles, one line for each property. `member` is a field of the state `<Class>State`:
///
///     PROPERTY(NamedTrigger, GlobalId, TriggerObject, trigger_object)
///
/// defines NamedTrigger::GetTriggerObject and SetTriggerObject over NamedTriggerState::trigger_object. The words ending
/// in _OF name the state, for classes whose state is called otherwise. Included by sources only.

#define PROPERTY_WITH(Class, State, Type, Argument, Name, member)                  \
    Type Class::Get##Name() { return engine::get(*this, &engine::State::member); } \
    void Class::Set##Name(Argument value) { engine::set(*this, &engine::State::member, value); }
#define PROPERTY(Class, Type, Name, member) PROPERTY_WITH(Class, Class##State, Type, Type const&, Name, member)

/// The setter takes its argument by value.
#define VALUE_PROPERTY(Class, Type, Name, member) PROPERTY_WITH(Class, Class##State, Type, Type, Name, member)
#define VALUE_PROPERTY_OF(Class, State, Type, Name, member) PROPERTY_WITH(Class, State, Type, Type, Name, member)
/// The same with a getter that is const.
#define CONST_VALUE_PROPERTY(Class, Type, Name, member)                                         \
    Type Class::Get##Name() const { return engine::get(*this, &engine::Class##State::member); } \
    void Class::Set##Name(Type value) { engine::set(*this, &engine::Class##State::member, value); }

/// A switch whose getter has a name of its own.
#define FLAG_PROPERTY(Class, Getter, Setter, member) FLAG_PROPERTY_OF(Class, Class##State, Getter, Setter, member)
#define FLAG_PROPERTY_OF(Class, State, Getter, Setter, member)                  \
    bool Class::Getter() { return engine::get(*this, &engine::State::member); } \
    void Class::Setter(bool value) { engine::set(*this, &engine::State::member, value); }

/// A shared object, of which the state keeps a copy and hands out copies.
#define COPIED_PROPERTY(Class, Type, Name, member) COPIED_PROPERTY_OF(Class, Class##State, Type, Name, member)
#define COPIED_PROPERTY_OF(Class, State, Type, Name, member)                                             \
    std::shared_ptr<Type> Class::Get##Name() { return engine::get_copy(*this, &engine::State::member); } \
    void Class::Set##Name(std::shared_ptr<Type> const& value) {                                          \
        engine::set_copy(*this, &engine::State::member, value);                                          \
    }

/// What a property that need not be set has in addition.
#define OPTIONAL_PROPERTY(Class, Name, member) OPTIONAL_PROPERTY_OF(Class, Class##State, Name, member)
#define OPTIONAL_PROPERTY_OF(Class, State, Name, member)                           \
    bool Class::Has##Name() { return engine::has(*this, &engine::State::member); } \
    void Class::Clear##Name() { engine::clear(*this, &engine::State::member); }

/// The action of an object. Without one the copy is empty; setting an empty one takes it away.
#define ACTION_PROPERTY(Class, Name, member) ACTION_PROPERTY_OF(Class, Class##State, Name, member)
#define ACTION_PROPERTY_OF(Class, State, Name, member)                             \
    bool Class::Has##Name() { return engine::has(*this, &engine::State::member); } \
    std::shared_ptr<AgentAction> Class::Get##Name##Copy() {                        \
        return engine::copy_of(engine::get(*this, &engine::State::member));        \
    }                                                                              \
    void Class::Set##Name(std::shared_ptr<AgentAction> const& action) {            \
        engine::set(*this, &engine::State::member, engine::copy_of(action));       \
    }
