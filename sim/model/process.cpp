#include "model/process.h"

#include "model/light_watch.h"
#include "model/loops.h"
#include "model/optics.h"
#include "model/registration.h"
#include "model/upgrade.h"

namespace ponsim
{

std::span<const Process> processes()
{
    static const Process all[] = {measurement_process, ageing_process, upgrade_process,
                                  loop_process,        light_process,  registration_process};
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
