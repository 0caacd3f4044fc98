#include "scenario/agenda.h"

#include <algorithm>

#include "model/base/chance.h"

namespace ponsim
{
namespace
{

constexpr ModelTime day = 24 * 3600 * ms_per_second;

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
        due.push({draw_time(random, scenario->failing[part].mtbf), part, 0});
    }
    for (size_t curve = 0; curve < scenario->curves.size(); ++curve)
        due.push({0, scenario->failing.size() + curve, 0});
    go_on();
}

Event Agenda::failure_or_repair(const Due &next)
{
    const FailingPart &part = scenario->failing[next.source];
    const bool fails = next.number % 2 == 0;
    due.push({next.at + draw_time(chances[next.source], fails ? part.mttr : part.mtbf), next.source, next.number + 1});
    return fails ? Event{next.at, part.failure, "failure"} : Event{next.at, part.repair, "repair"};
}

// A curve has a step at the very beginning, which is the last one of the day before, unless one is at midnight.
Event Agenda::step(const Due &next)
{
    const std::vector<LoadCurve::Step> &steps = scenario->curves[next.source - scenario->failing.size()].steps;
    const size_t before = steps[0].at == 0 ? 0 : 1; // steps of the day before
    const uint64_t count = next.number + steps.size() - before;
    const uint64_t following = count + 1;
    due.push({(following / steps.size() - 1) * day + steps[following % steps.size()].at, next.source, next.number + 1});
    const LoadCurve::Step &now = steps[count % steps.size()];
    return {next.at, now.words, "load", now.commands};
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
        current = next.source < scenario->failing.size() ? failure_or_repair(next) : step(next);
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
