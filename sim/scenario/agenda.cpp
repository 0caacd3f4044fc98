#include "scenario/agenda.h"

#include <algorithm>

#include "model/base/chance.h"

namespace ponsim
{
namespace
{

// Draws how long something lasts that ends at any time with the same chance. The result is in whole seconds.
ModelTime draw_time(Random &random, ModelTime mean)
{
    const uint64_t seconds = mean / ms_per_second;
    const uint64_t times = exponential(random);
    const uint64_t drawn = seconds * (times >> 32) + (seconds * (times & UINT32_MAX) >> 32);
    return std::max<uint64_t>(drawn, 1) * ms_per_second;
}

} // namespace

Agenda::Agenda(std::shared_ptr<const OltScenario> of) : scenario(std::move(of))
{
    restart();
}

void Agenda::restart()
{
    position = 0;
    events = 0;
    chances.clear();
    due = {};
    if (!scenario) return;
    const uint64_t seed = random_for(scenario->settings.seed, Purpose::failures, {}).next();
    for (size_t part = 0; part < scenario->failing.size(); ++part) {
        Random &random = chances.emplace_back(seed, part);
        due.push({draw_time(random, scenario->failing[part].mtbf), part, false});
    }
    go_on();
}

// Makes the next entry the current one.
void Agenda::go_on()
{
    const std::vector<Event> &planned = scenario->events;
    if (events < planned.size() && (due.empty() || planned[events].at <= due.top().at)) {
        current = planned[events++];
    } else if (!due.empty()) {
        const Due next = due.top();
        due.pop();
        const FailingPart &part = scenario->failing[next.part];
        current = next.is_repair ? Event{next.at, part.repair, "repair"} : Event{next.at, part.failure, "failure"};
        const ModelTime mean = next.is_repair ? part.mtbf : part.mttr;
        due.push({next.at + draw_time(chances[next.part], mean), next.part, !next.is_repair});
    } else {
        current.reset();
    }
}

const Event *Agenda::entry(size_t number)
{
    if (!scenario) return nullptr;
    if (number < position) restart();
    for (; position < number && current; ++position)
        go_on();
    return current ? &*current : nullptr;
}

std::span<const Event> Agenda::upcoming() const
{
    if (!scenario) return {};
    const bool is_planned = current && current->kind == Event{}.kind;
    return std::span(scenario->events).subspan(is_planned ? events - 1 : events);
}

} // namespace ponsim
