// The file that upgrade types are loaded from.
#pragma once

#include <string>

#include "model/lifecycle/upgrade.h"

namespace ponsim
{

// What was read: the types where `status` is BSP_OK, else what is wrong.
struct UpgradeFile {
    uint32_t status;
    UpgradeTypes types = {};
    std::string problem = {};
};

// A line is a type: name, vendor, model, version and size, separated by blanks. What follows a # does not count.
UpgradeFile read_upgrade_file(const std::string &file);

} // namespace ponsim
