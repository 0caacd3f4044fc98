#include "olt.h"

#include "model/alarm/history.h"
#include "model/lifecycle/admission.h"
#include "target.h"

namespace fuzz
{
namespace
{

using namespace ponsim;

constexpr uint32_t most_happenings = 256;

Olt make_registered_olt()
{
    Olt olt(settings);
    for (const Arrival &arrival : olt.port(1)->arrivals)
        make(olt, bind(olt, arrival));
    constexpr uint32_t minutes = 2;
    for (uint32_t minute = 0; minute < minutes; ++minute)
        pass(olt, 60 * ms_per_second);
    require(olt.online(*olt.port(1), olt.port(1)->arrivals.front().mac), "the ONUs register");
    return olt;
}

} // namespace

const Olt &registered_olt()
{
    static const Olt olt = make_registered_olt();
    return olt;
}

Change bind(const Olt &olt, const Arrival &arrival)
{
    const Binding binding{.mac = arrival.mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}};
    return bind_onu(olt, 1, {}, binding).change;
}

void make(Olt &olt, Change change)
{
    add_events(olt, change);
    olt.add_traffic(change);
    olt.apply(change);
}

void catch_up(Olt &olt)
{
    for (uint32_t count = 0; count < most_happenings; ++count) {
        const std::optional<Happening> due = first_due(processes(), olt, olt.now());
        if (!due) return;
        make(olt, due->process->happen(olt));
    }
}

void pass(Olt &olt, ModelTime length)
{
    const ModelTime to = olt.now() + length;
    for (uint32_t count = 0; count < most_happenings; ++count) {
        const std::optional<Happening> due = first_due(processes(), olt, to);
        if (!due) return olt.advance(to);
        require(due->at >= olt.now(), "nothing is due in the past");
        olt.advance(due->at);
        make(olt, due->process->happen(olt));
    }
}

} // namespace fuzz
