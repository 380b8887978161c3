#include "engine/model/check.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/model/node.h"

#include <pedflux/exception.h>

#include <cmath>
#include <unordered_set>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

std::string with_unit(std::string text, Range const& range) {
    if (!range.unit.empty()) text.append(" ").append(range.unit);
    return text;
}

std::string title_of(Owner const& owner) {
    if (owner.node != nullptr) return std::string(owner.node->kind->name);
    return owner.object == nullptr ? "the project" : title_of(*owner.object);
}

}  // namespace

bool contains(Range const& range, double value) {
    return std::isfinite(value) && value <= range.most && value >= range.least &&
           !(range.without_least && value == range.least);
}

std::string described(Range const& range) {
    std::string text;
    if (std::isfinite(range.least)) {
        text = fmt::format("{} {}", range.without_least ? "greater than" : "at least", text_of(range.least));
    }
    if (std::isfinite(range.most)) {
        text += fmt::format("{}at most {}", text.empty() ? "" : " and ", text_of(range.most));
    }
    return with_unit(text.empty() ? "finite" : text, range);
}

void Subject::refuse(std::string const& allowed, std::string const& found) const {
    throw Exception(fmt::format("{}: {} must be {}, not {}", title_of(owner), property, allowed, found));
}

void refuse_empty(Subject const& subject) { subject.refuse("given", "empty"); }

void check_reference(Subject const& subject, GlobalId const& id, RefersTo const& rule) {
    auto const expected = fmt::format("the identifier of {}", rule.what);
    if (!id.IsValid()) subject.refuse(expected, "the invalid identifier");
    if (subject.owner.node != nullptr) return;
    Document const* const document = subject.owner.document;
    if (document == nullptr) throw Exception(fmt::format("{} is no longer part of a project", title_of(subject.owner)));
    ObjectState const* const object = document->find(id);
    if (object == nullptr) {
        if (document->keeps_unknown(id)) return;
        subject.refuse(expected, fmt::format("{}, which no object of the project has", GlobalId(id).GetString()));
    }
    if (!rule.allows(*object)) subject.refuse(expected, "that of " + title_of(*object));
}

void check_different(Subject const& subject, std::vector<GlobalId> const& ids) {
    std::unordered_set<GlobalId, IdentifierHash, IdentifierEqual> seen;
    for (GlobalId id : ids) {
        if (!seen.insert(id).second)
            subject.refuse("a list of different objects", fmt::format("one with {} twice", id.GetString()));
    }
}

void refuse_unset(Owner const& owner, std::string_view property) {
    throw Exception(fmt::format("{} has no {}", title_of(owner), property));
}

Document& document_of(ObjectState& object) {
    if (object.document == nullptr) throw Exception(fmt::format("{} is no longer part of a project", title_of(object)));
    return *object.document;
}

}  // namespace pedflux::engine
