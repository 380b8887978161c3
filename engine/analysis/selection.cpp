#include "engine/analysis/selection.h"

#include "engine/analysis/run_filter.h"

namespace pedflux::engine {

Selection::Selection(std::shared_ptr<AgentFilter> const& filter, Document const& document, RunReader& reader)
    : reader_(reader) {
    if (!filter) return;
    RunTimes times(document, reader);
    filter_ = std::make_shared<RunFilter const>(compile(*filter, document), times);
}

std::vector<bool> Selection::among(int frame, std::vector<AgentFrame> const& persons) const {
    std::vector<bool> selected(persons.size(), true);
    if (!filter_) return selected;
    RunSituation situation(*filter_, frame, persons);
    for (std::size_t i = 0; i < persons.size(); ++i) selected[i] = situation.is_selected(i);
    return selected;
}

std::vector<AgentFrame> Selection::frame(int number) const {
    auto persons = reader_.frame(number);
    if (!filter_) return persons;
    auto const selected = among(number, persons);
    std::vector<AgentFrame> found;
    for (std::size_t i = 0; i < persons.size(); ++i) {
        if (selected[i]) found.push_back(persons[i]);
    }
    return found;
}

std::vector<bool> ever_selected(Selection const& selection, RunReader const& reader, int first, int last) {
    std::vector<bool> found(reader.agents().size());
    for (int frame = first; frame <= last; ++frame) {
        for (auto const& person : selection.frame(frame)) found[person.agent] = true;
    }
    return found;
}

}  // namespace pedflux::engine
