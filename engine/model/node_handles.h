#pragma once

#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"
#include "engine/model/node_table.h"

/// Makes the handle classes of a family of nodes out of its table: see engine/model/node_table.h. Included where
/// the classes are implemented.

#define PEDFLUX_PARAMETER(context, property) PEDFLUX_PARAMETER_OF property
#define PEDFLUX_PARAMETER_OF(access, Type, Name, member, ...) engine::Parameter<Type> member
#define PEDFLUX_ASSIGNMENT(context, property) PEDFLUX_ASSIGNMENT_OF property
#define PEDFLUX_ASSIGNMENT_OF(access, Type, Name, member, ...) state.member = member;

/// The constructor that takes all properties in their order.
#define PEDFLUX_CONSTRUCTOR(Base, Class, ...)                      \
    Class::Class(PEDFLUX_COMMAS(PEDFLUX_PARAMETER, , __VA_ARGS__)) \
        : Base(engine::make_node<Base, engine::Class##State>(      \
              __VA_OPT__([&](auto& state) { PEDFLUX_FOR_EACH(PEDFLUX_ASSIGNMENT, , __VA_ARGS__) }))) {}

#define PEDFLUX_ACCESS(Class, property) PEDFLUX_ACCESS_BY(Class, PEDFLUX_UNWRAP property)
#define PEDFLUX_ACCESS_BY(...) PEDFLUX_ACCESS_IN(__VA_ARGS__)
#define PEDFLUX_ACCESS_IN(Class, access, Type, Name, member, ...) PEDFLUX_ACCESS_##access(Class, Type, Name, member)

/// The accessors of all properties.
#define PEDFLUX_ACCESSORS(Class, ...) PEDFLUX_FOR_EACH(PEDFLUX_ACCESS, Class, __VA_ARGS__)

// The words for accessors. A source can define more of its own; `Parameter` is how a setter takes a value.

/// Get and Set.
#define PEDFLUX_ACCESS_VALUE(Class, Type, Name, member) \
    PROPERTY_WITH(Class, Class##State, Type, engine::Parameter<Type>, Name, member)
/// Get and Set of a small value, where the SDK's Get is const.
#define PEDFLUX_ACCESS_CONST_VALUE(Class, Type, Name, member) CONST_VALUE_PROPERTY(Class, Type, Name, member)
/// Is and Set.
#define PEDFLUX_ACCESS_FLAG(Class, Type, Name, member) FLAG_PROPERTY(Class, Is##Name, Set##Name, member)
/// Set alone.
#define PEDFLUX_ACCESS_SETTER(Class, Type, Name, member) \
    void Class::Set##Name(engine::Parameter<Type> value) { engine::set(*this, &engine::Class##State::member, value); }
/// Get and Set, where the new value has to fit the other properties too.
#define PEDFLUX_ACCESS_CHECKED(Class, Type, Name, member)                                        \
    Type Class::Get##Name() { return engine::get(*this, &engine::Class##State::member); }        \
    void Class::Set##Name(engine::Parameter<Type> value) {                                       \
        engine::change<engine::Class##State>(*this, [&](auto& state) { state.member = value; }); \
    }
/// Written where the classes are implemented, because the SDK's operations do more than to get and to set.
#define PEDFLUX_ACCESS_WRITTEN(Class, Type, Name, member)
