#include "engine/model/enumerations.h"

#include <algorithm>

namespace pedflux::engine {

std::string_view name_of_number(NamedNumbers numbers, int number) {
    auto const found = std::ranges::find(numbers, number, &NamedNumber::number);
    return found == numbers.end() ? std::string_view{} : found->name;
}

std::optional<int> number_of_name(NamedNumbers numbers, std::string_view name) {
    auto const found = std::ranges::find(numbers, name, &NamedNumber::name);
    return found == numbers.end() ? std::nullopt : std::optional(found->number);
}

std::string names_of(NamedNumbers numbers) {
    std::string names;
    for (auto const& [number, name] : numbers) {
        names.append(names.empty() ? "" : ", ").append(name).append(" (" + std::to_string(number) + ")");
    }
    return names;
}

}  // namespace pedflux::engine
