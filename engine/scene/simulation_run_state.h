#pragma once

#include "engine/model/state.h"

#include <pedflux/simulation_run.h>

#include <memory>
#include <string>
#include <string_view>

namespace pedflux {
class Database;
}

namespace pedflux::engine {

struct SimulationRunState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::SIMULATION_RUN;
    static constexpr std::string_view NAME = "SimulationRun";
    using Handle = SimulationRun;

    std::string database_file_name;      ///< as given; relative to the working directory
    std::shared_ptr<Database> database;  ///< while connected; neither saved nor compared

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("databaseFileName", self.database_file_name);
    }
};

}  // namespace pedflux::engine
