#include "model/port/fibre.h"

#include <algorithm>

#include "bsp_pon.h"
#include "model/plant/fibre.h"

namespace ponsim
{

Plan set_damage(const PonPort &port, uint32_t branch, int32_t loss)
{
    return {BSP_OK, {.fibre = {{port.number, branch, std::min(loss, cut_loss)}}}};
}

} // namespace ponsim
