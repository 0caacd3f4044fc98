// Upgrade types are loaded from this kind of file.
#pragma once

#include <string>

#include "model/lifecycle/upgrade.h"

namespace ponsim
{

// An UpgradeFile is what was read: the types when `status` is BSP_OK, and otherwise what is wrong.
struct UpgradeFile {
    uint32_t status;
    UpgradeTypes types = {};
    std::string problem = {};
};

// A line is a type: name, vendor, model, version and size, separated by blanks. What follows a # is ignored.
//
// The file's name comes from a client, who may not be allowed to read what the service can, so that only regular files
// below one folder are read, and no link is followed. Of all others the status is the same. The folder is an absolute
// path; without one no file is read.
UpgradeFile read_upgrade_file(const std::string &folder, const std::string &file);

} // namespace ponsim
