#include "engine/behaviour/actions/action_program.h"

#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/behaviour/actions/task_order.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace pedflux::engine {
namespace {

template <class T>
int append(std::vector<T>& list, T entry) {
    list.push_back(std::move(entry));
    return static_cast<int>(list.size()) - 1;
}
template <class T>
Entries append_all(std::vector<T>& list, std::vector<T> const& entries) {
    Entries const added{list.size(), entries.size()};
    list.insert(list.end(), entries.begin(), entries.end());
    return added;
}

int compile_named(ActionProgram& program, Document const& document, GlobalId const& id) {
    auto const [entry, is_new] = program.named.emplace(id, NONE);
    if (is_new) {
        auto const* const object = document.find<AgentActionObjectState>(id);
        if (object != nullptr) program.named[id] = compile(program, document, *object->action);
    }
    return program.named[id];
}

/// What a field means to its node follows from the field's type, of which no kind of action has two that differ in
/// meaning.
struct Compiler {
    ActionProgram& program;
    Document const& document;
    ActionNode& node;
    std::vector<int>& children;

    void take(std::shared_ptr<AgentAction> const& action) { children.push_back(compile(program, document, *action)); }
    void take(std::vector<std::shared_ptr<AgentAction>> const& actions) {
        for (auto const& action : actions) take(action);
    }
    void take(std::shared_ptr<AgentTest> const& test) { node.test = append(program.tests, copy_of(test)); }
    void take(std::shared_ptr<WaitStyle> const& style) {
        if (style) node.style = append(program.styles, copy_of(style));
    }
    void take(std::shared_ptr<Distribution> const& spec) { node.spec = append(program.distributions, spec_of(*spec)); }
    void take(std::shared_ptr<TimeReference> const& time) {
        node.time = append(program.times, TimeReferenceAccess::time(*time));
    }
    void take(std::vector<GlobalId> const& objects) { node.objects = append_all(program.objects, objects); }
    void take(GlobalId const& object) { take(std::vector{object}); }
    void take(std::optional<GlobalId> const& object) {
        if (object) take(*object);
    }
    void take(std::vector<double> const& weights) { node.weights = append_all(program.weights, weights); }
    void take(DestinationAssignment assignment) { node.assignment = assignment; }
    void take(ListActionAssignment order) { node.order = order; }
    void take(bool erase_route_history) { node.erase_route_history = erase_route_history; }
    void take(double value) { node.value = value; }
    void take(Color const& color) { node.color = color; }
};

void take_fields(Compiler compiler, NodeState const& state) {
    auto const take = [&](auto const&, auto const& field, auto const&...) { compiler.take(field); };
    switch (static_cast<AgentActionTypeId>(state.kind->type)) {
#define ACTION(Class, type, ...)  \
    case AgentActionTypeId::type: \
        return Class##State::fields(static_cast<Class##State const&>(state), take);
#include "engine/behaviour/actions/agent_action_table.def"
    }
}

}  // namespace

int compile(ActionProgram& program, Document const& document, AgentAction const& action) {
    NodeState const& state = node_of(action);
    ActionNode node;
    node.type = static_cast<AgentActionTypeId>(state.kind->type);
    std::vector<int> children;
    take_fields({program, document, node, children}, state);
    if (node.type == AgentActionTypeId::NAMED) {
        // A copy, as the list of objects grows with what the named action refers to.
        GlobalId const name = program.objects_of(node).front();
        auto const root = compile_named(program, document, name);
        if (root != NONE) children.push_back(root);
    }
    node.children = append_all(program.children, children);
    return append(program.nodes, node);
}

int compile(ActionProgram& program, TaskOrder const& order) {
    ActionNode node;
    node.objects = append_all(program.objects, order.goals);
    node.assignment = DestinationAssignment::BY_LOWEST_COST;
    node.erase_route_history = order.erase_route_history;
    if (order.style) node.style = append(program.styles, copy_of(order.style));
    switch (order.kind) {
        case TaskKind::EXIT:
            node.type = AgentActionTypeId::EXIT_SIMULATION;
            break;
        case TaskKind::FOLLOW_SIGN:
            node.type = AgentActionTypeId::FOLLOW_SIGN;
            node.assignment = DestinationAssignment::IN_SEQUENCE;
            break;
        case TaskKind::SEEK_AREA:
            node.type = AgentActionTypeId::SEEK_AREA;
            break;
        case TaskKind::SEEK_PORTAL:
            node.type = AgentActionTypeId::SEEK_PORTAL;
            break;
        case TaskKind::SEEK_PROCESS_START:
            node.type = AgentActionTypeId::SEEK_PROCESS_START;
            break;
        case TaskKind::WAIT_FOR_DURATION:
            node.type = AgentActionTypeId::WAIT_FOR_DURATION;
            node.spec = append(program.distributions, spec_of(*Distribution::CreateConstant(order.seconds)));
            break;
        case TaskKind::WAIT_FOREVER:
            node.type = AgentActionTypeId::WAIT_FOREVER;
            break;
        case TaskKind::WAIT_UNTIL_TIME:
            node.type = AgentActionTypeId::WAIT_UNTIL_TIME;
            node.time = append(program.times, TimeInFrame{TimeReferenceFrame::ABSOLUTE, order.seconds, {}});
            break;
    }
    return append(program.nodes, node);
}

}  // namespace pedflux::engine
