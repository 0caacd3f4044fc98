// The timeline of a scenario is what happens at which time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scenario/scenario.h"
#include "toml_file/section.h"

namespace ponsim
{

inline constexpr size_t max_events = 100000; // for each OLT; also of checks

// Reads the times of a table with `at`, `every` and `times`.
std::vector<ModelTime> read_times(const toml_file::Section &section);

// Reads to which OLT a table belongs. Returns none when it belongs to all of them.
std::optional<std::string> read_olt_name(const toml_file::Section &section, const Scenario &scenario);

// Reads the events, and gives each OLT its own.
void read_events(const toml_file::Section &root, Scenario &scenario);

} // namespace ponsim
