#pragma once

#include "engine/results/recorded_run.h"
#include "engine/results/run_writer.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/journal.h"
#include "engine/simulation/tasks/behaviour_program.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What a simulation records.
namespace pedflux::engine {

class Document;
struct SimulationRunState;

struct Recording {
    std::optional<RunWriter> writer;  ///< none once the recording is finished
    std::vector<AgentFrame> frame;    ///< of the last frame
    std::shared_ptr<SimulationRunState> run;
    std::string database_name;  ///< as the run keeps it
    std::string database_path;
};

/// What stored runs know of the project.
RecordedProject recorded_project_of(Document const& document, FloorPlan const& plan);

/// What an agent is doing at the end of a frame.
AgentActivity activity_of(BehaviourProgram const& program, Clock const& clock, Agents const& agents,
                          AgentMotion const& motion);

/// Takes speed, heading and distance of all agents over the frame that ends, and begins the next one.
void measure_motion(Clock const& clock, Agents& agents);
/// Writes the frame.
void record_frame(Recording& recording, BehaviourProgram const& program, Clock const& clock, FloorPlan const& plan,
                  Agents const& agents, crowd::Crowd const& crowd);
/// Completes the database and connects it with the run of the project.
void finish_recording(Recording& recording, Clock const& clock, Places const& places, Agents const& agents,
                      Episodes const& episodes);

}  // namespace pedflux::engine
