#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>

#include <memory>
#include <vector>

namespace pedflux {

namespace engine {
class Document;
}

class SimObject;

/// The selected objects of a project, each of them once. An identifier that names no object of the project is refused
/// with an Exception; an object that leaves the project leaves the selection. The selection is not saved.
class PEDFLUX_API Selection {
  public:
    /// Used by the library; a selection comes from a project.
    explicit Selection(std::shared_ptr<engine::Document> document);
    ~Selection();

    void Add(GlobalId& id);
    void Remove(GlobalId& id);
    /// Adds the object, or removes it if it is selected.
    void Toggle(GlobalId& id);
    /// Selects this object alone.
    void SetObject(GlobalId& id);
    /// Selects these objects alone.
    void SetObjects(std::vector<GlobalId> const& ids);
    bool IsSelected(GlobalId& id);
    /// In the order in which they were selected.
    std::vector<std::shared_ptr<SimObject>> GetSelectedObjects();
    void Clear();
    int GetCount();
    bool IsEmpty();

  private:
    std::shared_ptr<engine::Document> document_;
};

}  // namespace pedflux
