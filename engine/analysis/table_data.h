#pragma once

#include <pedflux/tables.h>

#include <string>
#include <variant>
#include <vector>

namespace pedflux::engine {

using Cell = std::variant<int, double, std::string>;

struct TableData {
    bool valid = false;
    std::vector<std::string> row_labels;
    std::vector<std::string> column_labels;
    std::vector<Cell> cells;  ///< row by row, one for each row and column
};

}  // namespace pedflux::engine
