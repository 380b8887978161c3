#pragma once

#include "engine/model/rules.h"
#include "engine/model/state.h"

#include <pedflux/identifiers.h>
#include <pedflux/issue.h>
#include <pedflux/vectors.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pedflux {
class Project;
}

namespace pedflux::engine {

/// The settings of the simulation.
struct Settings {
    int start_time = 0;   ///< seconds after midnight
    int duration = 3600;  ///< seconds
    int frame_rate = 5;   ///< frames per second
    int random_seed = 1;
    double population_multiplier = 1;
    std::optional<Vec3d> origin;  ///< the position of the project's origin in the world, metres
    std::optional<GlobalId> default_bookmark;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("startTimeInSeconds", self.start_time, not_negative);
        field("durationInSeconds", self.duration, at_least_one);
        field("frameRate", self.frame_rate, Range{1, 1000, "frames per second"});
        field("randomSeed", self.random_seed);
        field("populationMultiplier", self.population_multiplier, not_negative);
        field("projectOrigin", self.origin);
        field("defaultBookmark", self.default_bookmark, refers_to_kind<ObjectType::BOOKMARK>("a bookmark"));
    }
};

struct IdentifierHash {
    std::size_t operator()(GlobalId const& id) const { return static_cast<std::size_t>(id.InternalHashCode()); }
};
struct IdentifierEqual {
    bool operator()(GlobalId const& a, GlobalId const& b) const { return a.InternalEquals(b); }
};

/// The project's data: its settings and its objects in the order of their creation. Objects keep their address for as
/// long as they are in the document.
class Document {
  public:
    Document();
    Document(Document const&) = delete;
    Document& operator=(Document const&) = delete;
    ~Document();

    Settings settings;
    std::string working_directory;  ///< absolute; empty until set: that of the process
    std::vector<Issue> open_warnings;
    std::shared_ptr<Json const> unknown;  ///< members of the file that this version does not know; written back

    /// A new object of a kind. The name must be valid and free.
    template <class State>
    State& add(std::string const& name) {
        return static_cast<State&>(add(kind_of<State>().make(), GlobalId::Generate(), name));
    }
    ObjectState& add(std::shared_ptr<ObjectState> object, GlobalId const& id, std::string const& name);
    /// Keeps an object of the file whose kind this version does not know. It is written back, and its name and
    /// identifier stay reserved.
    void keep_unknown(std::shared_ptr<Json const> object, GlobalId const& id, std::string const& name);
    std::vector<std::shared_ptr<Json const>> const& unknown_objects() const { return unknown_objects_; }
    bool keeps_unknown(GlobalId const& id) const;

    std::vector<std::shared_ptr<ObjectState>> const& objects() const { return objects_; }

    /// The objects of a kind, or of a base of kinds, in the order of creation.
    template <class State>
    std::vector<State*> objects() {
        return objects_of<State>();
    }
    template <class State>
    std::vector<State const*> objects() const {
        return objects_of<State const>();
    }

    /// The object with an identifier or name; null if there is none.
    ObjectState* find(GlobalId const& id) const;
    ObjectState* find(std::string const& name) const;
    /// The same for an object of a kind; null for any other.
    template <class State, class Key>
    State* find(Key const& key) const {
        return dynamic_cast<State*>(find(key));
    }

    void rename(ObjectState& object, std::string const& name);
    /// The base name itself if it is free, or else the name followed by the lowest free number from 2 on.
    std::string next_unique_name(std::string const& base) const;

    /// Removes an object. Throws Exception, which names the objects that refer to it, while there are any.
    void remove(ObjectState& object);
    /// All references to an object, from other objects and from the settings.
    std::vector<Reference> references_to(GlobalId const& id) const;

    /// The selected objects in the order of selection.
    std::vector<GlobalId> const& selection() const { return selection_; }
    void select(std::vector<GlobalId> ids) { selection_ = std::move(ids); }

    /// The handle of an object: always the same one while the object is in the document.
    std::shared_ptr<SimObject> handle_of(ObjectState& object);

    /// Detaches all objects; nothing can be done with the document afterwards.
    void close();
    bool is_closed() const { return closed_; }

    /// An equal document that shares no mutable state with this one.
    std::unique_ptr<Document> copy() const;

  private:
    template <class State>
    std::vector<State*> objects_of() const {
        std::vector<State*> found;
        for (auto const& object : objects_) {
            if (auto* const state = dynamic_cast<State*>(object.get())) found.push_back(state);
        }
        return found;
    }
    void require_free(std::string const& name) const;

    std::vector<std::shared_ptr<ObjectState>> objects_;
    std::vector<std::shared_ptr<Json const>> unknown_objects_;
    // An unknown object has an entry without a state.
    std::unordered_map<GlobalId, ObjectState*, IdentifierHash, IdentifierEqual> by_id_;
    std::unordered_map<std::string, ObjectState*> by_name_;
    std::unordered_map<ObjectState const*, std::shared_ptr<SimObject>> handles_;
    std::vector<GlobalId> selection_;
    bool closed_ = false;
};

/// The data of an open project. Throws Exception when it is closed.
Document& document_of(Project const& project);

}  // namespace pedflux::engine
