// What is different from ONU to ONU can be drawn by the seed: a number, a name, or whether something is so.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/base/random.h"
#include "toml_file/section.h"

namespace ponsim
{

// A Draw is a thing that is drawn for an ONU. Each has random numbers of its own, so that none depends on whether
// another one is drawn.
enum class Draw : uint64_t { kind = 1, service, drop, load_up, load_down, silent, in_use };

// Each read() throws ScenarioError.

class NumberDistribution
{
public:
    // Reads a number, { uniform = [LEAST, GREATEST] } or { normal = [MEAN, DEVIATION] }. A number that stands there
    // itself is only checked against `greatest_alone`. Returns nothing when the key is missing.
    static std::optional<NumberDistribution> read(const toml_file::Section &section, const std::string &key,
                                                  uint32_t least, uint32_t greatest, uint32_t greatest_alone);

    uint32_t draw(Random random) const;

private:
    uint32_t least, greatest; // of what is drawn
    uint32_t mean = 0;
    uint32_t deviation = 0; // 0: all numbers come as often
};

class NameDistribution
{
public:
    // Reads a name, or { choice = { NAME = WEIGHT, ... } }.
    NameDistribution(const toml_file::Section &section, const std::string &key);

    const std::string &draw(Random random) const;
    // Returns all names that can be drawn, with where they stand.
    const std::vector<std::pair<std::string, const toml_file::Value *>> &names() const { return choices; }

private:
    std::vector<std::pair<std::string, const toml_file::Value *>> choices;
    std::vector<uint32_t> weights;
};

// Reads true, false or { chance = PERCENT }, and draws. Returns `otherwise` when the key is missing.
bool draw_flag(const toml_file::Section &section, const std::string &key, bool otherwise, Random random);

} // namespace ponsim
