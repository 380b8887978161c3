#include "engine/model/document.h"

#include "engine/model/check.h"
#include "engine/model/field_values.h"
#include "engine/model/names.h"

#include <pedflux/exception.h>
#include <pedflux/project.h>

#include <algorithm>
#include <charconv>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pedflux::engine {

std::string title_of(ObjectState const& state) { return fmt::format("{} '{}'", state.kind->name, state.name); }

Document::Document() = default;

Document::~Document() { close(); }

ObjectState& Document::add(std::shared_ptr<ObjectState> object, GlobalId const& id, std::string const& name) {
    require_free(name);
    if (by_id_.contains(id)) {
        throw Exception(fmt::format("there is already an object with the identifier {}", GlobalId(id).GetString()));
    }
    object->document = this;
    object->id = id;
    object->name = name;
    by_id_.emplace(id, object.get());
    by_name_.emplace(name, object.get());
    return *objects_.emplace_back(std::move(object));
}

void Document::keep_unknown(std::shared_ptr<Json const> object, GlobalId const& id, std::string const& name) {
    require_free(name);
    if (!by_id_.emplace(id, nullptr).second) {
        throw Exception(fmt::format("there is already an object with the identifier {}", GlobalId(id).GetString()));
    }
    by_name_.emplace(name, nullptr);
    unknown_objects_.push_back(std::move(object));
}

ObjectState* Document::find(GlobalId const& id) const {
    auto const found = by_id_.find(id);
    return found == by_id_.end() ? nullptr : found->second;
}

ObjectState* Document::find(std::string const& name) const {
    auto const found = by_name_.find(name);
    return found == by_name_.end() ? nullptr : found->second;
}

bool Document::keeps_unknown(GlobalId const& id) const {
    auto const found = by_id_.find(id);
    return found != by_id_.end() && found->second == nullptr;
}

void Document::require_free(std::string const& name) const {
    require_valid_name(name);
    auto const found = by_name_.find(name);
    if (found == by_name_.end()) return;
    auto const owner = found->second == nullptr ? "an object of a kind that is not known" : title_of(*found->second);
    throw Exception(fmt::format("the name '{}' is taken by {}: each object needs a name of its own", name, owner));
}

void Document::rename(ObjectState& object, std::string const& name) {
    if (name == object.name) return;
    require_free(name);
    by_name_.erase(object.name);
    by_name_.emplace(name, &object);
    object.name = name;
}

std::string Document::next_unique_name(std::string const& base) const {
    std::string name = base.empty() ? "Object" : base;
    require_valid_name(name);
    if (!by_name_.contains(name)) return name;

    // "Floor 2" counts on as "Floor 3", not as "Floor 2 2".
    std::string stem = name;
    auto const space = stem.rfind(' ');
    unsigned number = 0;
    if (space != std::string::npos && space > 0) {
        auto const* const end = stem.data() + stem.size();
        auto const [stop, error] = std::from_chars(stem.data() + space + 1, end, number);
        bool const counts = error == std::errc{} && stop == end && number < 1'000'000'000;
        if (counts) stem.resize(space);
        if (!counts) number = 0;
    }
    for (unsigned next = std::max(number + 1, 2U);; ++next) {
        std::string candidate = stem + ' ' + std::to_string(next);
        if (!by_name_.contains(candidate)) {
            require_valid_name(candidate);
            return candidate;
        }
    }
}

std::vector<Reference> Document::references_to(GlobalId const& id) const {
    std::vector<Reference> found;
    collect_references(nullptr, settings, found);
    for (auto const& object : objects_) collect_references(object.get(), fields_in(*object), found);
    std::erase_if(found, [&](Reference const& reference) { return !reference.to.InternalEquals(id); });
    return found;
}

void Document::remove(ObjectState& object) {
    std::vector<std::string> referrers;
    for (auto const& reference : references_to(object.id)) {
        auto title = reference.from == nullptr ? "the project's settings" : title_of(*reference.from);
        if (reference.from != &object && (referrers.empty() || referrers.back() != title)) {
            referrers.push_back(std::move(title));
        }
    }
    auto const id_text = object.id.GetString();
    for (auto const& stranger : unknown_objects_) {
        if (stranger->dump().find(id_text) != std::string::npos) {
            referrers.push_back(fmt::format("{} '{}'", stranger->at("kind").get<std::string>(),
                                            stranger->at("name").get<std::string>()));
        }
    }
    if (!referrers.empty()) {
        throw Exception(fmt::format("{} cannot be removed while others refer to it: {}", title_of(object),
                                    fmt::join(referrers, ", ")));
    }

    std::erase_if(selection_, [&](GlobalId const& id) { return id.InternalEquals(object.id); });
    by_id_.erase(object.id);
    by_name_.erase(object.name);
    handles_.erase(&object);
    object.document = nullptr;
    std::erase_if(objects_, [&](auto const& held) { return held.get() == &object; });
}

std::shared_ptr<SimObject> Document::handle_of(ObjectState& object) {
    auto& handle = handles_[&object];
    if (!handle) handle = object.kind->handle(object.shared_from_this());
    return handle;
}

void Document::close() {
    for (auto const& object : objects_) object->document = nullptr;
    handles_.clear();
    by_id_.clear();
    by_name_.clear();
    selection_.clear();
    objects_.clear();
    closed_ = true;
}

std::unique_ptr<Document> Document::copy() const {
    auto twin = std::make_unique<Document>();
    twin->settings = settings;
    twin->working_directory = working_directory;
    twin->open_warnings = open_warnings;
    twin->unknown = unknown;
    for (auto const& object : objects_) twin->add(object->kind->copy(*object), object->id, object->name);
    for (auto const& object : unknown_objects_) {
        twin->keep_unknown(object, GlobalId(object->at("id").get<std::string>()),
                           object->at("name").get<std::string>());
    }
    twin->selection_ = selection_;
    return twin;
}

Document& document_of(Project const& project) {
    Document& document = *project.document_;
    if (document.is_closed()) throw Exception("the project is closed");
    return document;
}

}  // namespace pedflux::engine
