#pragma once

#include "engine/model/group_states.h"
#include "engine/model/scene_states.h"

/// A connection belongs to one route bank at most. Only the banks' lists of items say to which.
namespace pedflux::engine {

/// The bank that has the connection among its items; none if there is none.
RouteBankState* bank_of(ConnectionState const& connection);

/// Takes the bank's items out of all other banks.
void claim_items(RouteBankState const& bank);

}  // namespace pedflux::engine
