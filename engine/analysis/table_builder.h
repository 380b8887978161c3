#pragma once

#include "engine/analysis/table_data.h"

#include <pedflux/aggregation.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pedflux::engine {

/// Builds a table row by row.
class TableBuilder {
  public:
    explicit TableBuilder(std::vector<std::string> columns) : data_(std::make_shared<TableData>()) {
        data_->valid = true;
        data_->column_labels = std::move(columns);
    }
    /// One cell for each column.
    template <class... Cells>
    void add(std::string label, Cells... cells) {
        data_->row_labels.push_back(std::move(label));
        (data_->cells.emplace_back(std::move(cells)), ...);
    }
    void add(std::string label, std::vector<Cell> const& cells) {
        data_->row_labels.push_back(std::move(label));
        data_->cells.insert(data_->cells.end(), cells.begin(), cells.end());
    }
    std::shared_ptr<TableData const> table() const { return data_; }

  private:
    std::shared_ptr<TableData> data_;
};

/// The aggregate of one or more values.
double aggregated(std::vector<double> values, AggregationType type);

}  // namespace pedflux::engine
