#include "engine/analysis/csv.h"
#include "engine/analysis/table_data.h"
#include "engine/base/checks.h"

#include <pedflux/tables.h>

#include <cmath>
#include <limits>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::Cell;
using engine::TableData;

Cell const& cell_at(TableData const& data, int row, int column) {
    auto const checked_row = engine::require_index("row", row, data.row_labels.size());
    auto const checked_column = engine::require_index("column", column, data.column_labels.size());
    return data.cells[checked_row * data.column_labels.size() + checked_column];
}

struct AsText {
    std::string operator()(int value) const { return std::to_string(value); }
    std::string operator()(double value) const { return engine::text_of(value); }
    std::string operator()(std::string const& text) const { return text; }
};

struct AsDouble {
    double operator()(int value) const { return value; }
    double operator()(double value) const { return value; }
    double operator()(std::string const& text) const {
        engine::refuse(fmt::format("The cell holds the text '{}', which is no number", text));
    }
};

}  // namespace

Table::Table(std::shared_ptr<TableData const> data) : data_(std::move(data)) {}
bool Table::IsValid() { return data_->valid; }
int Table::GetRowCount() { return static_cast<int>(data_->row_labels.size()); }
int Table::GetColumnCount() { return static_cast<int>(data_->column_labels.size()); }
std::string Table::GetRowLabel(int row) {
    return data_->row_labels[engine::require_index("row", row, data_->row_labels.size())];
}
std::string Table::GetColumnLabel(int column) {
    return data_->column_labels[engine::require_index("column", column, data_->column_labels.size())];
}

int Table::GetIntValue(int row, int column) {
    double const rounded = std::round(GetDoubleValue(row, column));
    if (!(std::abs(rounded) <= std::numeric_limits<int>::max())) {
        engine::refuse(
            fmt::format("The number {} is too large for a whole number of 32 bits", engine::text_of(rounded)));
    }
    return static_cast<int>(rounded);
}
double Table::GetDoubleValue(int row, int column) { return std::visit(AsDouble{}, cell_at(*data_, row, column)); }
std::string Table::GetStringValue(int row, int column) { return std::visit(AsText{}, cell_at(*data_, row, column)); }

void Table::ExportCsv(std::string const& path) {
    engine::Csv csv;
    std::vector<std::string> line{""};
    line.insert(line.end(), data_->column_labels.begin(), data_->column_labels.end());
    csv.add_line(line);
    for (int row = 0; row < GetRowCount(); ++row) {
        line = {GetRowLabel(row)};
        for (int column = 0; column < GetColumnCount(); ++column) line.push_back(GetStringValue(row, column));
        csv.add_line(line);
    }
    csv.write(path);
}

}  // namespace pedflux
