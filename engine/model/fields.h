#pragma once

#include "engine/model/field_type.h"
#include "engine/model/rules.h"
#include "engine/model/state.h"

#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

/// Tables of fields, made from the lists that states give in their `fields`.
namespace pedflux::engine {

struct Field {
    std::string_view name;
    std::ptrdiff_t offset;  ///< from the origin of the object, see `Fields`
    FieldType const* type;
    FieldRule rule;

    void const* in(void const* origin) const { return static_cast<std::byte const*>(origin) + offset; }
    void* in(void* origin) const { return static_cast<std::byte*>(origin) + offset; }
};

/// The fields of a certain object. Offsets count from `origin`: the ObjectState or NodeState that the object derives
/// from, and of other structs the struct itself.
struct Fields {
    FieldTable table;
    void const* origin;
};

inline Fields fields_in(ObjectState const& state) { return {state.kind->fields(), &state}; }
Fields fields_in(NodeState const& state);
template <class T>
requires(!std::derived_from<T, ObjectState> && !std::derived_from<T, NodeState>) Fields fields_in(T const& value) {
    return {fields_of<T>(), &value};
}

/// The field at an address within the object. Throws std::logic_error when the table lists none of that type there.
Field const& field_at(Fields const& fields, void const* place, std::type_info const& type);

/// Collects a table.
class FieldList {
  public:
    explicit FieldList(void* origin) : origin_(origin) {}
    void add(std::string_view name, void const* member, FieldType const& type, FieldRule const& rule);
    std::vector<Field> take() { return std::move(fields_); }

  private:
    void const* origin_;
    std::vector<Field> fields_;
};

template <class T>
constexpr bool mentions_objects = std::is_same_v<T, GlobalId>;
template <class T>
constexpr bool mentions_objects<std::optional<T>> = mentions_objects<T>;
template <class T>
constexpr bool mentions_objects<std::vector<T>> = mentions_objects<T>;

/// The rules of a table are those of a value as it is by default: they depend on the type alone.
template <class T>
FieldTable fields_of() {
    static std::vector<Field> const table = [] {
        T example{};
        void* origin = &example;
        if constexpr (std::derived_from<T, ObjectState>) origin = static_cast<ObjectState*>(&example);
        if constexpr (std::derived_from<T, NodeState>) origin = static_cast<NodeState*>(&example);
        FieldList list(origin);
        T::fields(example,
                  [&]<class Member, class... Given>(std::string_view name, Member const& member, Given const&... rule) {
                      static_assert(!mentions_objects<Member> || (std::is_same_v<Given, RefersTo> || ...),
                                    "a field of identifiers says what they refer to");
                      list.add(name, &member, field_type<Member>(), FieldRule(rule...));
                  });
        return list.take();
    }();
    return table;
}

}  // namespace pedflux::engine
