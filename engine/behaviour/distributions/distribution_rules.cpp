#include "engine/base/checks.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/check.h"

#include <pedflux/distributions.h>

#include <variant>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

void require_within(Subject const& subject, Distribution& distribution, Range const& range) {
    if (!distribution.IsValid()) subject.refuse("a valid distribution", "one whose parameters do not fit together");
    for (double const bound : {distribution.GetMin(), distribution.GetMax()}) {
        if (!contains(range, bound)) {
            subject.refuse(fmt::format("a distribution of values {}", described(range)),
                           fmt::format("one that reaches {}", text_of(bound)));
        }
    }
}

}  // namespace

void SharedValue<Distribution>::check(Subject const& subject, std::shared_ptr<Distribution> const& distribution,
                                      FieldRule const& rule) {
    auto const* const required = std::get_if<RequiredRange>(&rule);
    auto const* const range = required != nullptr ? required : std::get_if<Range>(&rule);
    if (distribution && range != nullptr) require_within(subject, *distribution, *range);
    if (!distribution && (required != nullptr || std::holds_alternative<Required>(rule))) refuse_empty(subject);
}

}  // namespace pedflux::engine
