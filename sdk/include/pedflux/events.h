#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

class Distribution;
class PopulationSource;

/// How the agents of an event are coloured.
enum class EventColorSchemeType : int {
    EVENT_COLOR = 0,  ///< as the event itself
    SPECIFIED = 1,    ///< in a colour of their own
    LIGHTER = 2,      ///< as the event, half way to white
    DARKER = 3,       ///< as the event, half way to black
};

/// An event that brings a population into the simulation. It starts when the simulation starts.
///
/// A new event has a `CountPopulationSource` without origins and persons, no profile, and the colour scheme
/// `EVENT_COLOR`.
class PEDFLUX_API SinglePopulationEvent : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy of the population source: a change becomes part of the event when the source is set again.
    std::shared_ptr<PopulationSource> GetPopulationSource();
    /// Replaces the population source by a copy of the given one. Its origins and destinations are portals, floors,
    /// connections or zones of the project.
    void SetPopulationSource(std::shared_ptr<PopulationSource> const& source);

    /// The profile of the people; invalid when none is set and a profile of default values is used.
    GlobalId GetProfile();
    /// Sets the profile; an invalid identifier takes it away.
    void SetProfile(GlobalId const& profile);

    EventColorSchemeType GetColorSchemeType();
    /// The colour that the scheme gives to the agents.
    Color GetColorSchemeColor();
    void SetColorSchemeEventColor();
    void SetColorSchemeSpecified(Color color);
    void SetColorSchemeLighter();
    void SetColorSchemeDarker();
};

/// People who walk from origins to destinations.
class PEDFLUX_API Journey : public SinglePopulationEvent {
  public:
    using SinglePopulationEvent::SinglePopulationEvent;
};

/// People who leave a building. They are where the population source's origins are, and leave by its destinations. The
/// people of an area stand spread over it from their arrival on, those of a portal come in by it. Each waits where it
/// is for the pre-movement time and then walks to its destination.
class PEDFLUX_API Evacuation : public SinglePopulationEvent {
  public:
    using SinglePopulationEvent::SinglePopulationEvent;

    /// The places that are to be cleared; none unless set: all of the building.
    std::vector<GlobalId> GetZones();
    /// Replaces the places to be cleared: zones, floors, connections or portals, each of them once.
    void SetZones(std::vector<GlobalId> const& zones);
    void ClearZones();

    /// How long each person waits before it walks, in seconds; 0 unless set. A copy.
    std::shared_ptr<Distribution> GetPreMovementWaitDistribution();
    /// @param wait a valid distribution of 0 or more seconds; the event keeps a copy
    void SetPreMovementWaitDistribution(std::shared_ptr<Distribution> const& wait);
};

}  // namespace pedflux
