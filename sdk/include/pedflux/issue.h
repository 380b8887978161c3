#pragma once

#include <pedflux/api.h>

#include <optional>
#include <string>

namespace pedflux {

/// How much an issue matters.
enum class IssueCategory : int {
    INFORMATION = 0,
    WARNING = 1,  ///< the result may not be what was meant
    ERROR = 2,    ///< something was left out or cannot go on
};

/// Something that was found while a project was opened or simulated.
class PEDFLUX_API Issue {
  public:
    /// An information without text.
    Issue();
    Issue(IssueCategory category, std::string const& title, std::string const& summary);
    Issue(IssueCategory category, std::string const& title, std::string const& summary, std::string const& description);
    Issue(Issue const&);
    Issue(Issue&&) noexcept;
    Issue& operator=(Issue const&);
    Issue& operator=(Issue&&) noexcept;
    ~Issue();

    IssueCategory GetIssueCategory();
    /// A few words.
    std::string GetTitle();
    /// One sentence: what was found and where.
    std::string GetSummary();
    bool HasDescription();
    /// More about it. Throws Exception when there is no more.
    std::string GetDescription();

  private:
    IssueCategory category_ = IssueCategory::INFORMATION;
    std::string title_;
    std::string summary_;
    std::optional<std::string> description_;
};

}  // namespace pedflux
