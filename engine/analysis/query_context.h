#pragma once

#include "engine/analysis/frames.h"
#include "engine/analysis/selection.h"
#include "engine/analysis/table_query_states.h"
#include "engine/analysis/visits.h"
#include "engine/model/document.h"
#include "engine/results/run_files.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pedflux::engine {

/// A table query with the run that it evaluates.
class QueryContext {
  public:
    /// Throws Exception when the run has no results.
    QueryContext(Document const& document, TableQueryState const& query)
        : document_(document),
          query_(query),
          reader_(results_of(document, or_none(query.run))),
          places_(document, *reader_) {}

    Document const& document() const { return document_; }
    TableQueryState const& query() const { return query_; }
    RunReader& reader() { return *reader_; }

    FrameRange range() const { return frames_in(*reader_, query_.time); }
    double seconds(int frames) const { return reader_->seconds_at(frames); }
    /// The time of a frame in seconds after midnight.
    double clock(int frame) const { return reader_->info().start_time + seconds(frame); }
    bool is_in_range(int frame) const { return query_.time.start <= clock(frame) && clock(frame) <= query_.time.end; }

    Visits const& visits() {
        if (!visits_) visits_ = visits_of(*reader_);
        return *visits_;
    }
    RunPlaces const& places() const { return places_; }
    RunPlace place(GlobalId const& id) const { return places_[id]; }
    /// The name of an object of the project, its identifier if it was removed, or nothing for an invalid identifier.
    std::string name_of(GlobalId id) const {
        if (auto const* const object = document_.find(id)) return object->name;
        return id.IsValid() ? id.GetString() : std::string();
    }

    /// For each person, whether the filter selects it in any frame of the time range.
    std::vector<bool> selected_by(std::shared_ptr<AgentFilter> const& filter) {
        auto const [first, last] = range();
        return ever_selected(Selection(filter, document_, *reader_), *reader_, first, last);
    }
    /// The same with the query's own filter.
    std::vector<bool> selected() {
        auto const* const filtered = dynamic_cast<Filtered const*>(&query_);
        return selected_by(filtered ? filtered->filter : nullptr);
    }

  private:
    Document const& document_;
    TableQueryState const& query_;
    std::shared_ptr<RunReader> reader_;
    RunPlaces places_;
    std::optional<Visits> visits_;
};

}  // namespace pedflux::engine
