#include <pedflux/exception.h>
#include <pedflux/issue.h>

namespace pedflux {

Issue::Issue() = default;
Issue::Issue(IssueCategory category, std::string const& title, std::string const& summary)
    : category_(category), title_(title), summary_(summary) {}
Issue::Issue(IssueCategory category, std::string const& title, std::string const& summary,
             std::string const& description)
    : category_(category), title_(title), summary_(summary), description_(description) {}
Issue::Issue(Issue const&) = default;
Issue::Issue(Issue&&) noexcept = default;
Issue& Issue::operator=(Issue const&) = default;
Issue& Issue::operator=(Issue&&) noexcept = default;
Issue::~Issue() = default;

IssueCategory Issue::GetIssueCategory() { return category_; }
std::string Issue::GetTitle() { return title_; }
std::string Issue::GetSummary() { return summary_; }
bool Issue::HasDescription() { return description_.has_value(); }
std::string Issue::GetDescription() {
    if (!description_) throw Exception("the issue '" + title_ + "' has no description");
    return *description_;
}

}  // namespace pedflux
