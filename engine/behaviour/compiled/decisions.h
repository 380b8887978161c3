#pragma once

#include <cstdint>
#include <iterator>
#include <limits>
#include <vector>

/// Questions joined by "and", "or" and "not", flattened: only the questions are left, and each says where to go on for
/// either answer. Answering asks no more questions than needed, without recursion.
namespace pedflux::engine {

/// A question by its place in the list, or one of the final answers.
using DecisionIndex = std::uint32_t;
inline constexpr DecisionIndex YES = std::numeric_limits<DecisionIndex>::max();
inline constexpr DecisionIndex NO = YES - 1;

/// Both ways lead to questions further up in the list, so every walk ends.
template <class Question>
struct Decision {
    Question question;
    DecisionIndex if_yes;
    DecisionIndex if_no;
};

template <class Question>
using Decisions = std::vector<Decision<Question>>;

/// The answer that is reached from a question. `ask` answers one question.
template <class Question, class Ask>
bool decide(Decisions<Question> const& decisions, DecisionIndex from, Ask const& ask) {
    while (from != YES && from != NO) {
        auto const& decision = decisions[from];
        from = ask(decision.question) ? decision.if_yes : decision.if_no;
    }
    return from == YES;
}

// How lists of children are joined. `append(child, if_yes, if_no)` puts a child's questions on the list and returns the
// first one to ask. Children are appended from the last to the first, because each needs to know what comes after it.

template <class Children, class Append>
DecisionIndex append_all_of(Children const& children, DecisionIndex if_yes, DecisionIndex if_no, Append const& append) {
    for (auto child = std::rbegin(children); child != std::rend(children); ++child) {
        if_yes = append(*child, if_yes, if_no);
    }
    return if_yes;
}

template <class Children, class Append>
DecisionIndex append_any_of(Children const& children, DecisionIndex if_yes, DecisionIndex if_no, Append const& append) {
    for (auto child = std::rbegin(children); child != std::rend(children); ++child) {
        if_no = append(*child, if_yes, if_no);
    }
    return if_no;
}

template <class Children, class Append>
DecisionIndex append_none_of(Children const& children, DecisionIndex if_yes, DecisionIndex if_no,
                             Append const& append) {
    return append_any_of(children, if_no, if_yes, append);
}

}  // namespace pedflux::engine
