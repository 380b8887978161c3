#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace pedflux::engine {

/// Lists stored one after the other in one array.
template <class Item>
struct Lists {
    /// Where each list begins, and the end of the last one.
    std::vector<std::uint32_t> begin{0};
    std::vector<Item> items;

    std::size_t count() const { return begin.size() - 1; }
    std::span<Item const> operator[](std::size_t list) const {
        return std::span(items).subspan(begin[list], begin[list + 1] - begin[list]);
    }
};

/// Groups items, each given with the number of its list, into `count` lists; the order within a list stays.
template <class Item>
Lists<Item> grouped(std::size_t count, std::vector<std::pair<std::uint32_t, Item>> const& given) {
    Lists<Item> lists;
    lists.begin.assign(count + 1, 0);
    for (auto const& [list, item] : given) ++lists.begin[list + 1];
    for (std::size_t i = 1; i <= count; ++i) lists.begin[i] += lists.begin[i - 1];
    lists.items.resize(given.size());
    std::vector<std::uint32_t> next(lists.begin.begin(), lists.begin.end() - 1);
    for (auto const& [list, item] : given) lists.items[next[list]++] = item;
    return lists;
}

}  // namespace pedflux::engine
