#include "model/process.h"

#include "model/optics.h"

namespace ponsim
{

std::span<const Process> processes()
{
    static const Process all[] = {measurement_process, ageing_process};
    return all;
}

} // namespace ponsim
