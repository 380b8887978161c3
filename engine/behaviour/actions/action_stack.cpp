#include "engine/behaviour/actions/action_stack.h"

#include "engine/base/hashing.h"
#include "engine/base/random.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace pedflux::engine {
namespace {

/// Clocks add up fractions of seconds, so that they can be a little behind the time that they show.
constexpr double CLOCK_TOLERANCE = 1e-6;

/// What became of the innermost action.
enum class Progress {
    DONE,        ///< it is to be taken off the stack
    GOES_ON,     ///< the stack has changed
    TAKES_TIME,  ///< it is the agent's task
};

class Interpreter {
  public:
    Interpreter(ActionProgram const& program, ActionStack& stack, ActionDraws draws, ActionScene& scene)
        : program_(program), stack_(stack), draws_(draws), scene_(scene) {}

    std::optional<ActionTask> run() {
        ++stack_.advances;
        break_off();
        for (int at_once = 0; !stack_.frames.empty(); ++at_once) {
            auto const progress = at_once < MOST_AT_ONCE ? step() : Progress::TAKES_TIME;
            if (progress == Progress::TAKES_TIME) return task_of(top());
            if (progress == Progress::DONE) stack_.frames.pop_back();
        }
        return std::nullopt;
    }

  private:
    ActionFrame& top() { return stack_.frames.back(); }
    static ActionTask task_of(ActionFrame const& frame) { return {frame.node, frame.goal, frame.order}; }
    ActionProgram const& program_of(ActionFrame const& frame) const {
        return frame.order ? scene_.actions_of(*frame.order) : program_;
    }
    ActionNode const& node_of(ActionFrame const& frame) const {
        return program_of(frame).nodes[static_cast<std::size_t>(frame.node)];
    }

    Random random(std::uint64_t draw) const { return {mixed(mixed(draws_.seed) + draws_.agent), mixed(draw)}; }
    Random random() { return random(stack_.draws++); }
    /// Of the node of the innermost action.
    double sampled(ActionNode const& node) {
        auto numbers = random();
        return sample(program_of(top()).distributions[static_cast<std::size_t>(node.spec)], numbers);
    }

    bool is_over(double time) const { return scene_.now() + CLOCK_TOLERANCE >= time; }
    bool is_past(ActionFrame const& frame, int time) const {
        auto const known = scene_.time_of(program_of(frame).times[static_cast<std::size_t>(time)]);
        return known && is_over(*known);
    }

    /// Ends what is done only until a time or the failing of a test, with all that it led to.
    void break_off() {
        auto& frames = stack_.frames;
        for (auto frame = frames.begin(); frame != frames.end();) {
            if (play_of(node_of(*frame).type) == ActionPlay::DO_UNTIL && frame->begun && has_ended(*frame)) {
                auto const end = std::find_if(frame + 1, frames.end(), [](auto const& above) { return above.apart; });
                frame = frames.erase(frame, end);
            } else {
                ++frame;
            }
        }
    }

    Progress begin(int child) {
        stack_.frames.push_back({.node = child, .order = top().order});
        return Progress::GOES_ON;
    }

    Progress step() {
        auto& frame = top();
        auto const& node = node_of(frame);
        bool const is_new = !frame.begun;
        frame.begun = true;
        if (is_new) frame.began_in = stack_.advances;
        switch (play_of(node.type)) {
            case ActionPlay::NOTHING:
                return Progress::DONE;
            case ActionPlay::SEQUENCE:
                return step_list(frame, node, is_new);
            case ActionPlay::CHOICE:
                return is_new ? choose(node) : Progress::DONE;
            case ActionPlay::BRANCH:
                return is_new ? decide(node) : Progress::DONE;
            case ActionPlay::DO_UNTIL:
                return step_do_until(frame, node, is_new);
            case ActionPlay::REPEAT:
            case ActionPlay::REPEAT_COUNTED:
                return step_repeat(frame, node, is_new);
            case ActionPlay::SEEK_ONE_OF:
                if (node.objects.count == 0) return Progress::DONE;
                [[fallthrough]];
            case ActionPlay::SEEK:
                return step_seek(frame, node, is_new);
            case ActionPlay::WAIT:
                if (is_new && node.spec != NONE) frame.until = scene_.now() + sampled(node);
                return has_ended(frame) ? Progress::DONE : Progress::TAKES_TIME;
            case ActionPlay::EFFECT:
                scene_.happen(static_cast<ActionEffect>(node.type), node);
                return Progress::DONE;
            case ActionPlay::END: {
                auto const happens = node;  // an order goes with its frames
                stack_.frames.clear();
                scene_.happen(static_cast<ActionEffect>(happens.type), happens);
                return Progress::GOES_ON;
            }
        }
        return Progress::DONE;
    }

    Progress step_list(ActionFrame& frame, ActionNode const& node, bool is_new) {
        auto const children = program_of(frame).children_of(node);
        if (is_new && node.order == ListActionAssignment::IN_RANDOM_ORDER) frame.draw = stack_.draws++;
        auto const done = static_cast<std::size_t>(frame.step++);
        if (done >= children.size()) return Progress::DONE;
        if (node.order == ListActionAssignment::IN_ORDER) return begin(children[done]);
        std::vector<int> order(children.begin(), children.end());
        auto numbers = random(frame.draw);
        shuffle(order, numbers);
        return begin(order[done]);
    }

    Progress choose(ActionNode const& node) {
        auto const weights = program_of(top()).weights_of(node);
        if (std::ranges::none_of(weights, [](double weight) { return weight > 0; })) return Progress::DONE;
        return begin(program_of(top()).children_of(node)[drawn(weights)]);
    }
    std::size_t drawn(std::span<double const> weights) {
        auto numbers = random();
        return draw_weighted({weights.begin(), weights.end()}, numbers);
    }

    Progress decide(ActionNode const& node) {
        auto const children = program_of(top()).children_of(node);
        std::size_t const branch = scene_.put_test(node.test) ? 0 : 1;
        return branch < children.size() ? begin(children[branch]) : Progress::DONE;
    }

    bool has_ended(ActionFrame const& frame) {
        auto const& node = node_of(frame);
        if (node.test != NONE) return !scene_.put_test(node.test);
        if (node.time != NONE) return is_past(frame, node.time);
        return is_over(frame.until);
    }

    Progress step_do_until(ActionFrame& frame, ActionNode const& node, bool is_new) {
        if (is_new && node.spec != NONE) frame.until = scene_.now() + sampled(node);
        if (has_ended(frame)) return Progress::DONE;
        if (is_new) return begin(program_of(frame).children_of(node).front());
        return node.style == NONE ? Progress::DONE : Progress::TAKES_TIME;
    }

    bool is_to_go_on(ActionFrame const& frame, ActionNode const& node) {
        return play_of(node.type) == ActionPlay::REPEAT_COUNTED ? frame.step < frame.turns : !has_ended(frame);
    }

    Progress step_repeat(ActionFrame& frame, ActionNode const& node, bool is_new) {
        bool const is_counted = play_of(node.type) == ActionPlay::REPEAT_COUNTED;
        if (is_new) {
            if (is_counted) frame.turns = static_cast<int>(std::lround(sampled(node)));
            if (!is_counted && node.spec != NONE) frame.until = scene_.now() + sampled(node);
        } else if (!is_counted && frame.turn_began == stack_.advances) {
            return Progress::TAKES_TIME;
        }
        if (!is_to_go_on(frame, node)) return Progress::DONE;
        ++frame.step;
        frame.turn_began = stack_.advances;
        return begin(program_of(frame).children_of(node).front());
    }

    int chosen_goal(ActionNode const& node) {
        switch (node.assignment) {
            case DestinationAssignment::WEIGHTED_BY_CHANCE:
                return static_cast<int>(drawn(program_of(top()).weights_of(node)));
            case DestinationAssignment::IN_SEQUENCE:
                return 0;
            case DestinationAssignment::BY_CHANCE:
                return static_cast<int>(random().below(static_cast<std::uint32_t>(node.objects.count)));
            case DestinationAssignment::BY_LOWEST_COST:
            case DestinationAssignment::BY_COUNT:
                break;
        }
        return ANY_GOAL;
    }

    Progress step_seek(ActionFrame& frame, ActionNode const& node, bool is_new) {
        if (is_new && node.objects.count > 0) frame.goal = chosen_goal(node);
        if (!scene_.pursue(task_of(frame))) return Progress::TAKES_TIME;
        bool const is_sequence = node.assignment == DestinationAssignment::IN_SEQUENCE;
        if (!is_sequence || static_cast<std::size_t>(++frame.goal) == node.objects.count) return Progress::DONE;
        return Progress::GOES_ON;
    }

    ActionProgram const& program_;
    ActionStack& stack_;
    ActionDraws draws_;
    ActionScene& scene_;
};

}  // namespace

void start(ActionStack& stack, int node, std::shared_ptr<OrderProgram const> order) {
    stack.frames.push_back({.node = node, .order = std::move(order), .apart = true});
}
void start_last(ActionStack& stack, int node, std::shared_ptr<OrderProgram const> order) {
    stack.frames.insert(stack.frames.begin(), {.node = node, .order = std::move(order), .apart = true});
}

std::optional<ActionTask> advance(ActionProgram const& program, ActionStack& stack, ActionDraws draws,
                                  ActionScene& scene) {
    return Interpreter(program, stack, draws, scene).run();
}

}  // namespace pedflux::engine
