#include "engine/model/field_values.h"

#include "engine/model/node.h"

#include <memory>
#include <string>
#include <variant>

namespace pedflux::engine {

namespace {

/// A visitor made of functions for the shapes.
template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

Fields fields_of_alternative(VariantType const& type, void const* value) {
    return {type.alternatives[type.index(value)].fields(), type.get(value)};
}

void check_enumeration(Subject const& subject, EnumerationType const& type, void const* value, FieldRule const& rule) {
    int const number = type.get(value);
    if (std::holds_alternative<NoRule>(rule) && name_of_number(type.names, number).empty()) {
        subject.refuse("one of " + names_of(type.names), std::to_string(number));
    }
}

/// A list of identifiers has each of them once.
void check_list(Subject const& subject, FieldType const& type, void const* value, FieldRule const& rule) {
    if (*type.id == typeid(std::vector<GlobalId>) && std::holds_alternative<RefersTo>(rule)) {
        check_different(subject, *static_cast<std::vector<GlobalId> const*>(value));
    }
}

void take_copies(FieldType const& type, void* value);

}  // namespace

void check_given(Subject const& subject, bool given, FieldRule const& rule) {
    if (!given && std::holds_alternative<Required>(rule)) refuse_empty(subject);
}

void check_value(Owner const& owner, std::string const& path, FieldType const& type, void const* value,
                 FieldRule const& rule) {
    Subject const subject{owner, path};
    std::visit(
        Overloaded{[&](PlainType const& plain) {
                       if (plain.check != nullptr) plain.check(subject, value, rule);
                   },
                   [&](EnumerationType const& names) { check_enumeration(subject, names, value, rule); },
                   [&](OptionalType const& optional) {
                       if (auto const* held = optional.get(value)) {
                           check_value(owner, path, optional.held(), held, rule);
                       }
                   },
                   [&](ListType const& list) {
                       check_list(subject, type, value, rule);
                       for (std::size_t i = 0, count = list.size(value); i < count; ++i) {
                           check_value(owner, path + "." + std::to_string(i), list.element(), list.at(value, i), rule);
                       }
                   },
                   [&](VariantType const& kinds) { check_fields(owner, path, fields_of_alternative(kinds, value)); },
                   [&](RecordType const& record) {
                       check_fields(owner, path, {record.fields(), value});
                   },
                   [&](SharedValueType const& shared) {
                       shared.check(subject, value, rule);
                       if (auto const held = shared.get(value)) {
                           check_value(owner, path, shared.held(), held.get(), NoRule{});
                       }
                   },
                   [&](NodeType const& family) {
                       // The values of a node belong to the holder of the node.
                       NodeState const* const node = family.get(value);
                       check_given(subject, node != nullptr, rule);
                       if (node != nullptr) check_node(owner, path, *node);
                   }},
        type.shape);
}

void check_fields(Owner const& owner, std::string const& path, Fields const& fields) {
    for (Field const& field : fields.table) {
        std::string const inner = path.empty() ? std::string(field.name) : path + "." + std::string(field.name);
        check_value(owner, inner, *field.type, field.in(fields.origin), field.rule);
    }
}

void check_node(Owner const& owner, std::string const& path, NodeState const& node) {
    check_fields(owner, path, fields_in(node));
    if (node.kind->check != nullptr) node.kind->check(Subject{owner, path}, node);
}

void check_object(ObjectState const& object) {
    check_fields(owner_of(object), "", fields_in(object));
    if (object.kind->check != nullptr) object.kind->check(object);
}

void collect_references(ObjectState const* owner, FieldType const& type, void const* value, FieldRule const& rule,
                        std::vector<Reference>& found) {
    std::visit(Overloaded{[&](PlainType const&) {
                              if (auto const* const mention = std::get_if<RefersTo>(&rule);
                                  mention != nullptr && *type.id == typeid(GlobalId)) {
                                  found.push_back({owner, *static_cast<GlobalId const*>(value), mention->role});
                              }
                          },
                          [](EnumerationType const&) {},
                          [&](OptionalType const& optional) {
                              if (auto const* held = optional.get(value)) {
                                  collect_references(owner, optional.held(), held, rule, found);
                              }
                          },
                          [&](ListType const& list) {
                              for (std::size_t i = 0, count = list.size(value); i < count; ++i) {
                                  collect_references(owner, list.element(), list.at(value, i), rule, found);
                              }
                          },
                          [&](VariantType const& kinds) {
                              collect_references(owner, fields_of_alternative(kinds, value), found);
                          },
                          [&](RecordType const& record) {
                              collect_references(owner, {record.fields(), value}, found);
                          },
                          [&](SharedValueType const& shared) {
                              if (auto const held = shared.get(value)) {
                                  collect_references(owner, shared.held(), held.get(), NoRule{}, found);
                              }
                          },
                          [&](NodeType const& family) {
                              if (NodeState const* const node = family.get(value)) {
                                  collect_references(owner, fields_in(*node), found);
                              }
                          }},
               type.shape);
}

void collect_references(ObjectState const* owner, Fields const& fields, std::vector<Reference>& found) {
    for (Field const& field : fields.table) {
        collect_references(owner, *field.type, field.in(fields.origin), field.rule, found);
    }
}

namespace {

void visit_nodes_in(std::string_view name, FieldType const& type, void const* value,
                    std::function<void(HeldNode const&)> const& visit) {
    std::visit(Overloaded{[](auto const&) {},
                          [&](OptionalType const& optional) {
                              if (auto const* held = optional.get(value)) {
                                  visit_nodes_in(name, optional.held(), held, visit);
                              }
                          },
                          [&](ListType const& list) {
                              for (std::size_t i = 0, count = list.size(value); i < count; ++i) {
                                  visit_nodes_in(name, list.element(), list.at(value, i), visit);
                              }
                          },
                          [&](VariantType const& kinds) { visit_nodes(fields_of_alternative(kinds, value), visit); },
                          [&](RecordType const& record) {
                              visit_nodes({record.fields(), value}, visit);
                          },
                          [&](NodeType const& family) {
                              if (NodeState* const node = family.get(value)) visit({name, type, value, *node});
                          }},
               type.shape);
}

void take_copies(FieldType const& type, void* value) {
    // What stands in a value that may be changed may be changed too.
    auto const changeable = [](void const* part) { return const_cast<void*>(part); };
    std::visit(Overloaded{[](auto const&) {},
                          [&](OptionalType const& optional) {
                              if (auto const* held = optional.get(value)) {
                                  take_copies(optional.held(), changeable(held));
                              }
                          },
                          [&](ListType const& list) {
                              for (std::size_t i = 0, count = list.size(value); i < count; ++i) {
                                  take_copies(list.element(), changeable(list.at(value, i)));
                              }
                          },
                          [&](VariantType const& kinds) {
                              take_copies(fields_of_alternative(kinds, value).table, changeable(kinds.get(value)));
                          },
                          [&](RecordType const& record) { take_copies(record.fields(), value); },
                          [&](SharedValueType const& shared) {
                              if (auto const held = shared.get(value)) shared.assign(value, held.get());
                          },
                          [&](NodeType const& family) {
                              if (NodeState const* const node = family.get(value)) {
                                  family.assign(value, copy_of(*node));
                              }
                          }},
               type.shape);
}

}  // namespace

void visit_nodes(Fields const& fields, std::function<void(HeldNode const&)> const& visit) {
    for (Field const& field : fields.table) visit_nodes_in(field.name, *field.type, field.in(fields.origin), visit);
}

void take_copies(FieldTable table, void* origin) {
    for (Field const& field : table) take_copies(*field.type, field.in(origin));
}

}  // namespace pedflux::engine
