#include "engine/simulation/tasks/task_orders.h"

#include "engine/behaviour/actions/task_order.h"
#include "engine/simulation/agents/task_state.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pedflux::engine {

namespace {

/// So many orders (at least) are collected before those that are done are looked for.
constexpr std::size_t fewest_orders = 1000;

/// The entries of a list behind a place, which are taken off it.
template <class T>
std::vector<T> cut(std::vector<T>& list, std::size_t from) {
    auto const begin = list.begin() + static_cast<std::ptrdiff_t>(from);
    std::vector<T> rest(std::make_move_iterator(begin), std::make_move_iterator(list.end()));
    list.erase(begin, list.end());
    return rest;
}

/// Moves an entry that an order refers to back into its list.
template <class T>
void keep(std::vector<T>& list, std::vector<T>& rest, std::size_t first, int& number) {
    if (number == NONE) return;
    list.push_back(std::move(rest[static_cast<std::size_t>(number) - first]));
    number = static_cast<int>(list.size()) - 1;
}

template <class Each>
void for_each_node(std::span<TaskState* const> all, Each const& each) {
    for (auto* const tasks : all) {
        for (auto& frame : tasks->actions.frames) each(frame.node);
        if (tasks->task) each(tasks->task->node);
        if (tasks->visit.stage != Visit::Stage::NOWHERE) each(tasks->visit.task.node);
        if (auto& wait = tasks->waiting.key; wait && wait->node >= 0) each(wait->node);
    }
}

}  // namespace

void begin_orders(BehaviourProgram& rules) {
    auto const& plan = rules.plan;
    rules.orders = {plan.nodes.size(), plan.objects.size(), plan.times.size(),
                    plan.laws.size(),  plan.styles.size(),  fewest_orders};
}

bool has_many_orders(BehaviourProgram const& rules) {
    return rules.plan.nodes.size() - rules.orders.first_node >= rules.orders.most;
}

void forget_done_orders(BehaviourProgram& rules, Places& places, std::span<TaskState* const> all) {
    auto& plan = rules.plan;
    auto const& first = rules.orders;
    auto nodes = cut(plan.nodes, first.first_node);
    auto objects = cut(plan.objects, first.first_object);
    auto times = cut(plan.times, first.first_time);
    auto laws = cut(plan.laws, first.first_law);
    auto styles = cut(plan.styles, first.first_style);
    rules.places.resize(plan.objects.size());

    std::vector<int> numbers(nodes.size(), NONE);
    auto const is_order = [&](int node) { return static_cast<std::size_t>(node) >= first.first_node; };
    auto const number_of = [&](int node) -> int& { return numbers[static_cast<std::size_t>(node) - first.first_node]; };
    for_each_node(all, [&](int node) {
        if (is_order(node)) number_of(node) = 0;
    });
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (numbers[i] == NONE) continue;
        auto& node = nodes[i];
        auto const goals = objects.begin() + static_cast<std::ptrdiff_t>(node.objects.first - first.first_object);
        node.objects.first = plan.objects.size();
        std::copy_n(goals, node.objects.count, std::back_inserter(plan.objects));
        keep(plan.times, times, first.first_time, node.time);
        keep(plan.laws, laws, first.first_law, node.spec);
        keep(plan.styles, styles, first.first_style, node.style);
        numbers[i] = static_cast<int>(plan.nodes.size());
        plan.nodes.push_back(node);
    }
    for_each_node(all, [&](int& node) {
        if (is_order(node)) node = number_of(node);
    });
    resolve_places(rules, places, first.first_node);
    rules.waits.styles.resize(first.first_style);
    resolve_waits(rules);
    rules.orders.most = std::max(fewest_orders, 2 * (plan.nodes.size() - first.first_node));
}

int add_order(BehaviourProgram& rules, Places& places, TaskOrder const& order) {
    auto const first = rules.plan.nodes.size();
    int const node = compile(rules.plan, order);
    resolve_places(rules, places, first);
    resolve_waits(rules);
    return node;
}

}  // namespace pedflux::engine
