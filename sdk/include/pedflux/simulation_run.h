#pragma once

#include <pedflux/api.h>
#include <pedflux/objects.h>

#include <string>

namespace pedflux {

/// A stored run of a simulation, by which queries find its results. The project's file keeps the name of the database,
/// not the results.
class PEDFLUX_API SimulationRun : public SimObject {
  public:
    using SimObject::SimObject;

    /// Opens a results database. A relative name starts at the project's working directory. Throws Exception when the
    /// file cannot be read; the run then keeps what it was connected with.
    /// @return true
    bool Connect(std::string const& databaseFileName);
    /// Closes the database; the run keeps its name.
    void Disconnect();
    /// Whether the database is open. A project that was just opened is connected with none.
    bool IsConnected() const;
    /// The name given when the run was last connected; empty before that.
    std::string GetDatabaseFileName();
};

}  // namespace pedflux
