#include "model/process.h"

#include "model/optics.h"
#include "model/upgrade.h"

namespace ponsim
{

std::span<const Process> processes()
{
    static const Process all[] = {measurement_process, ageing_process, upgrade_process};
    return all;
}

} // namespace ponsim
