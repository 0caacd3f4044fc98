// The keys that the tables of a scenario may have.
#pragma once

#include <string>
#include <vector>

namespace ponsim
{

struct Key;
using Keys = std::vector<Key>;

// A Key with tables stands before an array of tables, each of which may have those keys. When the tables are named, it
// stands before a table of them.
struct Key {
    std::string name;
    Keys tables = {};
    bool named = false;
};

// Returns the keys of the scenario itself.
const Keys &scenario_keys();

// Throws std::logic_error when there is no such key.
const Key &key_of(const Keys &keys, const std::string &name);

} // namespace ponsim
