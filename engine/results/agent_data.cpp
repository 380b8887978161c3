#include "engine/results/agent_data.h"

#include "engine/results/level_of_service.h"

#include <cmath>

namespace pedflux {

AgentData::AgentData() = default;
AgentData::AgentData(AgentData const&) = default;
AgentData::AgentData(AgentData&&) noexcept = default;
AgentData& AgentData::operator=(AgentData const&) = default;
AgentData& AgentData::operator=(AgentData&&) noexcept = default;
AgentData::~AgentData() = default;

int AgentData::GetAgentId() { return agentId_; }
AgentMovement AgentData::GetAgentMovement() { return movement_; }
std::string AgentData::GetAvatarName() { return {}; }
Color AgentData::GetColor() { return color_; }
LevelOfService AgentData::GetLevelOfService() { return levelOfService_; }
Vec3d AgentData::GetPosition() { return position_; }

#define VALUE(Type, name, format)
#define MEASURE(name, Name, member, format) \
    double AgentData::Get##Name() { return member; }
PEDFLUX_FRAME_VALUES(VALUE, MEASURE)
#undef MEASURE

}  // namespace pedflux

namespace pedflux::engine {

struct AgentDataAccess {
    static AgentData make(AgentFrame const& state, SurfaceKind surface) {
        AgentData data;
        data.agentId_ = static_cast<int>(state.agent);
        data.movement_ = static_cast<AgentMovement>(state.movement);
#define MEASURE(name, Name, member, format) data.member = static_cast<double>(state.name);
        PEDFLUX_FRAME_VALUES(VALUE, MEASURE)
#undef MEASURE
#undef VALUE
        data.color_ = color_of(state.color);
        data.levelOfService_ = level_of_service(data.density_, standard_of(surface));
        data.position_ =
            Vec3d(static_cast<double>(state.x), static_cast<double>(state.y), static_cast<double>(state.z));
        return data;
    }
};

AgentData agent_data(AgentFrame const& state, SurfaceKind surface) { return AgentDataAccess::make(state, surface); }

ColorBytes color_bytes(Color color) {
    auto const byte = [](double component) { return static_cast<std::uint8_t>(std::lround(component * 255)); };
    return {byte(color.GetRed()), byte(color.GetGreen()), byte(color.GetBlue()), byte(color.GetAlpha())};
}

Color color_of(ColorBytes const& bytes) {
    return {bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0, bytes[3] / 255.0};
}

LevelOfServiceStandard standard_of(SurfaceKind surface) {
    return surface == SurfaceKind::STAIR ? LevelOfServiceStandard::FRUIN_STAIRWAY
                                         : LevelOfServiceStandard::FRUIN_WALKWAY;
}

}  // namespace pedflux::engine
