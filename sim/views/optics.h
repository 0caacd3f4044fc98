// This is the table of an optical module. It also says how the readings compare with their thresholds.
#pragma once

#include <string>

#include "model/plant/module.h"

namespace ponsim
{

enum class Standing : uint32_t { normal, low_warning, low_alarm, high_warning, high_alarm };

Standing standing(int32_t reading, const Thresholds &thresholds);

std::string module_table(const Module &module, ModelTime now);

} // namespace ponsim
