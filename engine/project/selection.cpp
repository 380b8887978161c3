#include "engine/model/document.h"
#include "engine/model/lists.h"

#include <pedflux/exception.h>
#include <pedflux/selection.h>

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

using engine::Document;
using engine::lists;

namespace {

void require_known(Document const& document, GlobalId const& id) {
    if (document.is_closed()) throw Exception("the project is closed");
    if (document.find(id) == nullptr) {
        throw Exception(
            fmt::format("the selection cannot have {}, which no object of the project has", GlobalId(id).GetString()));
    }
}

std::vector<GlobalId> without(std::vector<GlobalId> list, GlobalId const& id) {
    std::erase_if(list, [&](GlobalId const& other) { return other.InternalEquals(id); });
    return list;
}

}  // namespace

Selection::Selection(std::shared_ptr<Document> document) : document_(std::move(document)) {}
Selection::~Selection() = default;

void Selection::Add(GlobalId& id) {
    auto selected = document_->selection();
    require_known(*document_, id);
    if (!lists(selected, id)) selected.push_back(id);
    document_->select(std::move(selected));
}

void Selection::Remove(GlobalId& id) {
    require_known(*document_, id);
    document_->select(without(document_->selection(), id));
}

void Selection::Toggle(GlobalId& id) { IsSelected(id) ? Remove(id) : Add(id); }

void Selection::SetObject(GlobalId& id) { SetObjects({id}); }

void Selection::SetObjects(std::vector<GlobalId> const& ids) {
    std::vector<GlobalId> selected;
    for (auto const& id : ids) {
        require_known(*document_, id);
        if (!lists(selected, id)) selected.push_back(id);
    }
    document_->select(std::move(selected));
}

bool Selection::IsSelected(GlobalId& id) { return lists(document_->selection(), id); }

std::vector<std::shared_ptr<SimObject>> Selection::GetSelectedObjects() {
    std::vector<std::shared_ptr<SimObject>> objects;
    for (auto const& id : document_->selection()) objects.push_back(document_->handle_of(*document_->find(id)));
    return objects;
}

void Selection::Clear() { document_->select({}); }
int Selection::GetCount() { return static_cast<int>(document_->selection().size()); }
bool Selection::IsEmpty() { return document_->selection().empty(); }

}  // namespace pedflux
