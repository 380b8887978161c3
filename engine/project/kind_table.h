#pragma once

#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/properties.h"
#include "engine/scene/scene_states.h"

#include <pedflux/geometry.h>
#include <pedflux/project.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Defines the lines of the lists of kinds (kind_list.h, engine/analysis/map_query_list.h and its like): the kind of
/// the state, and the factory, lookups and list of the project. Used in namespace pedflux. The forms of factories:
///
///     KIND(Token, Tokens, NAMED)                             takes a name
///     KIND(Floor, Floors, FROM_MESH)                         a name and the mesh that becomes its geometry
///     KIND(Path, Paths, FROM_GEOMETRY, PolylineGeometry)     the same with another shape
///     KIND(Dispatch, Dispatches, FROM_FIELD, Vec3d, position)
///                                                            a name and the value of one field of its state
///     KIND(Avatar, Avatars, BY_HAND)                         is written beside the table
///
/// Factories of queries take, besides the name, the run that is evaluated (OF_RUN), one or several runs (OF_RUNS), the
/// object that is measured (OF_OBJECT) or nothing (NAMED).
namespace pedflux::engine {

/// The handle of an object, if it is of the class or of one derived from it.
template <class Handle>
std::shared_ptr<Handle> handle_as(Document& document, ObjectState* object) {
    return object == nullptr ? nullptr : std::dynamic_pointer_cast<Handle>(document.handle_of(*object));
}

template <class Handle, class Key>
std::shared_ptr<Handle> look_up(Project const& project, Key const& key) {
    Document& document = document_of(project);
    return handle_as<Handle>(document, document.find(key));
}

template <class Handle>
std::vector<std::shared_ptr<Handle>> list_of(Project const& project) {
    Document& document = document_of(project);
    std::vector<std::shared_ptr<Handle>> handles;
    for (auto const& object : document.objects()) {
        if (auto handle = handle_as<Handle>(document, object.get())) handles.push_back(std::move(handle));
    }
    return handles;
}

/// A new object with some fields set. If a value is refused, no object remains.
template <class State, class... Member, class... Value>
std::shared_ptr<typename State::Handle> create(Project const& project, std::string const& name,
                                               std::pair<Member, Value>... fields) {
    Document& document = document_of(project);
    auto& state = document.add<State>(name);
    try {
        (set_field(owner_of(state), state, fields.first, std::move(fields.second)), ...);
    } catch (...) {
        document.remove(state);
        throw;
    }
    return std::static_pointer_cast<typename State::Handle>(document.handle_of(state));
}

}  // namespace pedflux::engine

#define LOOKUPS(Class, Name, Names)                                                                                    \
    std::shared_ptr<Class> Project::Get##Name(GlobalId const& id) { return engine::look_up<Class>(*this, id); }        \
    std::shared_ptr<Class> Project::Get##Name(std::string const& name) { return engine::look_up<Class>(*this, name); } \
    std::vector<std::shared_ptr<Class>> Project::Get##Names() { return engine::list_of<Class>(*this); }

#define OBJECT_KIND(Class, Names, made, ...)      \
    namespace engine {                            \
    template Kind const& kind_of<Class##State>(); \
    }                                             \
    FACTORY_##made(Class __VA_OPT__(, ) __VA_ARGS__) LOOKUPS(Class, Class, Names)
#define QUERY_KIND(Class, Names, TYPE, made, ...) OBJECT_KIND(Class, Names, made)

#define FACTORY_BY_HAND(Class)
#define FACTORY_NAMED(Class)                                                 \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name) { \
        return engine::create<engine::Class##State>(*this, name);            \
    }
#define FACTORY_FROM_FIELD(Class, Type, field)                                                                    \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, Type const& value) {                   \
        return engine::create<engine::Class##State>(*this, name, std::pair(&engine::Class##State::field, value)); \
    }
#define FACTORY_FROM_GEOMETRY(Class, Shape)                                                                       \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, std::shared_ptr<Shape> const& shape) { \
        return engine::create<engine::Class##State>(                                                              \
            *this, name, std::pair(&engine::SceneState::geometry, std::shared_ptr<Geometry>(shape)));             \
    }
#define FACTORY_FROM_MESH(Class) FACTORY_FROM_GEOMETRY(Class, MeshGeometry)
#define FACTORY_OF_RUN(Class) FACTORY_FROM_FIELD(Class, GlobalId, run)
#define FACTORY_OF_OBJECT(Class) FACTORY_FROM_FIELD(Class, GlobalId, object)
#define FACTORY_OF_RUNS(Class)                                                                                   \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, std::vector<GlobalId> const& runs) {  \
        using State = engine::Class##State;                                                                      \
        auto const first = runs.empty() ? std::nullopt : std::optional(runs.front());                            \
        return engine::create<State>(*this, name, std::pair(&State::runs, runs), std::pair(&State::run, first)); \
    }                                                                                                            \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, GlobalId const& run) {                \
        return Create##Class(name, std::vector{run});                                                            \
    }
