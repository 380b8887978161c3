#pragma once

#include <pedflux/color.h>
#include <pedflux/graphs.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

struct SeriesData {
    struct Entry {
        double second = 0;
        double value = 0;
    };

    std::string name;
    Color color;
    std::vector<Entry> entries;  ///< in the order of time
};

struct GraphData {
    std::string title;
    std::string x_label;
    std::string y_label;
    int start = 0;  ///< seconds
    int end = 0;    ///< seconds
    std::vector<std::shared_ptr<SeriesData const>> series;
};

}  // namespace pedflux::engine
