#include "engine/base/checks.h"
#include "engine/model/check.h"

#include <pedflux/distributions.h>

namespace pedflux::engine {

void require(Subject const& subject, std::shared_ptr<Distribution> const& distribution, Range const& range) {
    if (!distribution) return;
    if (!distribution->IsValid()) subject.refuse("a valid distribution", "one whose parameters do not fit together");
    for (double const bound : {distribution->GetMin(), distribution->GetMax()}) {
        if (!contains(range, bound)) {
            subject.refuse("a distribution of values " + described(range), "one that reaches " + text_of(bound));
        }
    }
}

void require(Subject const& subject, std::shared_ptr<Distribution> const& distribution, RequiredRange const& range) {
    if (!distribution) refuse_empty(subject);
    require(subject, distribution, static_cast<Range const&>(range));
}

}  // namespace pedflux::engine
