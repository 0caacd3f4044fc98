#include "engine/processes.h"

#include "model/inventory/departure.h"
#include "model/lifecycle/alarm_process.h"
#include "model/lifecycle/light_process.h"
#include "model/lifecycle/registration.h"
#include "model/lifecycle/time_outs.h"
#include "model/lifecycle/upgrade.h"
#include "model/port/loops.h"
#include "model/port/optics.h"
#include "model/port/uni_settings.h"

namespace ponsim
{

std::span<const Process> processes()
{
    static const Process all[] = {settings_process,  measurement_process, ageing_process,   upgrade_process,
                                  loop_process,      light_process,       time_out_process, registration_process,
                                  departure_process, alarm_process};
    return all;
}

std::optional<Happening> first_due(std::span<const Process> processes, const Olt &olt, ModelTime to)
{
    std::optional<Happening> first;
    for (const Process &process : processes) {
        const std::optional<ModelTime> next = process.next(olt);
        if (next && *next <= to && (!first || *next < first->at)) first = {&process, *next};
    }
    return first;
}

} // namespace ponsim
