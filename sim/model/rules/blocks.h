// These rules say which blocks there can be: those that set commands leave with the OLT, and those that ONUs have
// received. A block is bytes, which mean something to one command only, so the families cannot say it by themselves.
#pragma once

#include <cstdint>
#include <string>

#include "model/kept/block.h"
#include "model/kept/onu_setting.h"

namespace ponsim
{

// These return what is wrong with a block of an OLT with so many PON ports. They return an empty text when nothing is.
std::string problem_of(uint32_t ports, const BlockKey &key, const Block &block);
std::string problem_of(const SettingKey &key, const OnuSetting &setting);

} // namespace ponsim
