#include "olt.h"

#include "model/alarm/history.h"
#include "model/lifecycle/admission.h"
#include "target.h"

namespace fuzz
{
namespace
{

using namespace ponsim;

Olt make_registered_olt()
{
    Olt olt(settings);
    for (const Arrival &arrival : olt.port(1)->arrivals) {
        const Binding binding{.mac = arrival.mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}};
        make(olt, bind_onu(olt, 1, {}, binding).change);
    }
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

void make(Olt &olt, Change change)
{
    add_events(olt, change);
    olt.add_traffic(change);
    olt.apply(change);
}

void pass(Olt &olt, ModelTime length)
{
    constexpr uint32_t most = 256;
    const ModelTime to = olt.now() + length;
    for (uint32_t count = 0; count < most; ++count) {
        const std::optional<Happening> due = first_due(processes(), olt, to);
        if (!due) return olt.advance(to);
        require(due->at >= olt.now(), "nothing is due in the past");
        olt.advance(due->at);
        make(olt, due->process->happen(olt));
    }
}

} // namespace fuzz
