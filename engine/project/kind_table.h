#pragma once

#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/properties.h"
#include "engine/scene/scene_states.h"

#include <pedflux/geometry.h>
#include <pedflux/project.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The words of the tables of kinds, one line for each kind of object: the kind of its state, its factory, its lookups
/// and its list. A table stands in namespace pedflux, and each of its kinds also in kind_list.h.
///
///     KIND(Transform, Transforms)                       a factory that takes a name
///     KIND_WITH_MESH(Floor, Floors)                     a name and the mesh that becomes its geometry
///     KIND_WITH_GEOMETRY(Path, Paths, PolylineGeometry) the same with another shape
///     KIND_WITH(Zone, Zones, std::vector<GlobalId>, base_members)
///                                                       a name and the value of one field of its state
///     KIND_OF_RUN(AgentCountMapQuery, AgentCountMapQueries)
///                                                       a name and the run that it asks about
namespace pedflux::engine {

/// The face of an object, if it is of the class or of one derived from it.
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

/// A new object of a kind with some fields set. A refused value leaves nothing behind.
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

/// All of a kind except its factory.
#define KIND_MADE_ELSEWHERE(Class, Names)         \
    namespace engine {                            \
    template Kind const& kind_of<Class##State>(); \
    }                                             \
    LOOKUPS(Class, Class, Names)

#define KIND(Class, Names)                                                   \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name) { \
        return engine::create<engine::Class##State>(*this, name);            \
    }                                                                        \
    KIND_MADE_ELSEWHERE(Class, Names)

#define KIND_WITH(Class, Names, Type, field)                                                                      \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, Type const& value) {                   \
        return engine::create<engine::Class##State>(*this, name, std::pair(&engine::Class##State::field, value)); \
    }                                                                                                             \
    KIND_MADE_ELSEWHERE(Class, Names)

#define KIND_WITH_GEOMETRY(Class, Names, Shape)                                                                   \
    std::shared_ptr<Class> Project::Create##Class(std::string const& name, std::shared_ptr<Shape> const& shape) { \
        return engine::create<engine::Class##State>(                                                              \
            *this, name, std::pair(&engine::SceneState::geometry, std::shared_ptr<Geometry>(shape)));             \
    }                                                                                                             \
    KIND_MADE_ELSEWHERE(Class, Names)

#define KIND_WITH_MESH(Class, Names) KIND_WITH_GEOMETRY(Class, Names, MeshGeometry)

#define KIND_OF_RUN(Class, Names) KIND_WITH(Class, Names, GlobalId, run)
