// The plant of an OLT: which fibres and splitters there are between its PON ports and the ONUs. No operation tells it,
// so the operator does, in a TOML file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace front
{

// A PlantNode is a splitter with the fibre that leads to it, or the feeder that leaves the OLT.
struct PlantNode {
    std::string name; // no two nodes of a port have the same
    std::string place = {};
    std::optional<uint32_t> ratio = {};  // ways that light is split; none of a feeder
    std::optional<uint32_t> length = {}; // metres of the fibre
    std::optional<size_t> from = {};     // index of the node that it hangs from; none of the feeder
    std::vector<size_t> splitters = {};  // those that hang from it
    std::vector<std::string> onus = {};  // those at it: MAC addresses, or texts that ONUs were bound with
};

// The feeder comes first, and each node comes behind the one that it hangs from.
using PortPlant = std::vector<PlantNode>;

struct Plant {
    std::map<uint32_t, PortPlant> ports;
    std::string version; // another one where the plant is another
};

// Reads a text, which has this name, or a file. Throws a toml_file::Error with file, line and reason.
std::shared_ptr<const Plant> read_plant(std::string_view text, const std::string &name);
std::shared_ptr<const Plant> read_plant_file(const std::string &file);

} // namespace front
