#include "model/light.h"

#include "model/module.h"
#include "model/plant.h"

namespace ponsim
{

int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at)
{
    return power_of(onu_launch_power(olt.seed(), arrival.mac, at) - path_loss(port, arrival));
}

} // namespace ponsim
