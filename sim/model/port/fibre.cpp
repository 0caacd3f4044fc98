#include "model/port/fibre.h"

#include <algorithm>

#include "bsp_pon.h"
#include "model/plant/fibre.h"

namespace ponsim
{

Plan set_damage(const PonPort &port, uint32_t branch, int32_t loss)
{
    const BranchKey key{port.number, branch};
    return {BSP_OK, loss == 0 ? removal_of<Damage>(key) : change_of<Damage>(key, {std::min(loss, cut_loss)})};
}

} // namespace ponsim
