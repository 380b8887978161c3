#include "engine/model/document.h"
#include "engine/model/files.h"
#include "engine/model/properties.h"
#include "engine/model/saving.h"
#include "engine/project/export_geometry.h"
#include "engine/project/kind_table.h"
#include "engine/project/kinds.h"
#include "engine/project/paths.h"

#include <pedflux/exception.h>
#include <pedflux/issue.h>
#include <pedflux/objects.h>
#include <pedflux/project.h>
#include <pedflux/selection.h>

#include <mutex>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

using engine::Document;
using engine::document_of;
using engine::Settings;

namespace {

/// The current project of the process.
struct Current {
    std::mutex mutex;
    std::shared_ptr<Project> project;
};

Current& current() {
    static Current instance;
    return instance;
}

std::shared_ptr<Project> made_current(std::shared_ptr<Project> project) {
    // The previous project may be destroyed here, which must not happen under the lock.
    auto before = project;
    {
        std::scoped_lock const lock(current().mutex);
        std::swap(current().project, before);
    }
    return project;
}

}  // namespace

Project::Project(std::shared_ptr<Document> document) : document_(std::move(document)) {}
Project::~Project() = default;

std::shared_ptr<Project> Project::Create() {
    return made_current(std::make_shared<Project>(std::make_shared<Document>()));
}

std::shared_ptr<Project> Project::Open(std::string const& path) {
    try {
        std::shared_ptr<Document> document = engine::from_text(engine::read_file(path), engine::object_kinds());
        document->working_directory = engine::directory_of(path);
        return made_current(std::make_shared<Project>(std::move(document)));
    } catch (Exception const& failure) {
        throw Exception(fmt::format("cannot open the project '{}': {}", path, failure.GetMessage()));
    }
}

bool Project::HasCurrentProject() { return GetCurrentProject() != nullptr; }

std::shared_ptr<Project> Project::GetCurrentProject() {
    std::scoped_lock const lock(current().mutex);
    return current().project;
}

void Project::Save(std::string const& path) { engine::replace_file(path, engine::to_text(document_of(*this))); }

void Project::Close() {
    document_->close();
    std::shared_ptr<Project> released;
    std::scoped_lock const lock(current().mutex);
    if (current().project.get() == this) std::swap(released, current().project);
}

std::vector<Issue> Project::GetWarningsFromOpen() const { return document_of(*this).open_warnings; }

std::string Project::GetWorkingDirectory() { return engine::working_directory_of(document_of(*this)); }
void Project::SetWorkingDirectory(std::string const& path) {
    document_of(*this).working_directory = engine::require_directory(path);
}

void Project::ExportGeometry(std::string const& path, std::vector<std::shared_ptr<SimObject>> const& objects) {
    engine::replace_file(path, engine::exported(document_of(*this), path, objects));
}

std::string Project::FindNextUniqueName(std::string const& base) { return document_of(*this).next_unique_name(base); }

std::shared_ptr<Selection> Project::GetSelection() {
    document_of(*this);
    return std::make_shared<Selection>(document_);
}

namespace {

template <class Member, class Value>
void set_setting(Project const& project, Member Settings::*member, Value&& value) {
    Document& document = document_of(project);
    engine::set_field({nullptr, &document}, document.settings, member, std::forward<Value>(value));
}

template <class Member>
Member const& get_setting(Project const& project, Member Settings::*member) {
    return document_of(project).settings.*member;
}
template <class Value>
Value const& get_setting(Project const& project, std::optional<Value> Settings::*member) {
    Document const& document = document_of(project);
    return engine::get_field({nullptr, &document}, document.settings, member);
}

}  // namespace

#define SETTING(Type, Name, field)                                             \
    Type Project::Get##Name() { return get_setting(*this, &Settings::field); } \
    void Project::Set##Name(Type value) { set_setting(*this, &Settings::field, value); }
#define OPTIONAL_SETTING(Type, Name, field)                                                     \
    bool Project::Has##Name() const { return document_of(*this).settings.field.has_value(); }   \
    Type Project::Get##Name() { return get_setting(*this, &Settings::field); }                  \
    void Project::Set##Name(Type const& value) { set_setting(*this, &Settings::field, value); } \
    void Project::Clear##Name() { document_of(*this).settings.field.reset(); }

SETTING(int, StartTimeInSeconds, start_time)
SETTING(int, DurationInSeconds, duration)
SETTING(int, FrameRate, frame_rate)
SETTING(int, RandomSeed, random_seed)
double Project::GetPopulationMultiplier() const { return get_setting(*this, &Settings::population_multiplier); }
void Project::SetPopulationMultiplier(double multiplier) {
    set_setting(*this, &Settings::population_multiplier, multiplier);
}
OPTIONAL_SETTING(Vec3d, ProjectOrigin, origin)
OPTIONAL_SETTING(GlobalId, DefaultBookmark, default_bookmark)

double Project::GetFrameLength() { return 1.0 / GetFrameRate(); }

namespace {

template <class Key>
engine::ObjectState& required(Document const& document, Key const& key, std::string const& shown) {
    if (auto* const object = document.find(key)) return *object;
    throw Exception(fmt::format("no object of the project has the {}", shown));
}

}  // namespace

bool Project::HasObject(std::string const& name) { return document_of(*this).find(name) != nullptr; }
bool Project::HasObject(GlobalId const& id) { return document_of(*this).find(id) != nullptr; }

void Project::RemoveAndDeleteObject(GlobalId const& id) {
    auto& document = document_of(*this);
    document.remove(required(document, id, "identifier '" + GlobalId(id).GetString() + "'"));
}
void Project::RemoveAndDeleteObject(std::string const& name) {
    auto& document = document_of(*this);
    document.remove(required(document, name, "name '" + name + "'"));
}
void Project::RemoveAndDeleteObject(std::shared_ptr<SimObject> const& object) {
    if (!object) throw Exception("there is no object to remove: the pointer is empty");
    auto& document = document_of(*this);
    auto& state = engine::state_of<engine::ObjectState>(*object);
    if (state.document != &document) {
        throw Exception(fmt::format("{} is not an object of this project", title_of(state)));
    }
    document.remove(state);
}

LOOKUPS(SimObject, Object, Objects)
LOOKUPS(SceneObject, SceneObject, SceneObjects)
LOOKUPS(NetworkObject, NetworkObject, NetworkObjects)
LOOKUPS(WalkableObject, WalkableObject, WalkableObjects)
LOOKUPS(ConnectionObject, ConnectionObject, ConnectionObjects)

}  // namespace pedflux
