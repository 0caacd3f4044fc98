// This file compares configurations, and puts one configuration in the place of another one.
#pragma once

#include <string>
#include <vector>

#include "configuration/abilities.h"
#include "configuration/configuration.h"

namespace config
{

// A ConfigDifference is a setting that is not the same in two configurations. A value is empty where nothing is set.
struct ConfigDifference {
    ConfigSetting setting;
    std::string before, after;
};

// Returns what is different, in a stable order.
std::vector<ConfigDifference> differences(const Configuration &before, const Configuration &after);

// A Fitted is what an OLT is to have when it gets the configuration of a file: what is configured in the file, and the
// OLT's own state.
struct Fitted {
    std::vector<ConfigRow> rows;
    std::vector<std::string> left_out; // what the OLT cannot have, with the reason
};

// What an OLT cannot have stays as it is there. `onus` are the ONUs of the OLT, as far as they are known.
Fitted fitted(const Configuration &own, const Configuration &wanted, const AbilitiesOfOnus &onus);

} // namespace config
