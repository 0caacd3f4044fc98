// The versions of the tables, and how a state file of an earlier version becomes one of this version.
#pragma once

#include <cstdint>
#include <span>

struct sqlite3;

namespace ponsim
{

// What makes the tables of the version before those of this one.
struct Migration {
    int64_t version;
    const char *sql;
};

// From the first version whose files are read on: that one needs none. In order, without gaps.
inline constexpr int64_t first_version = 7;
std::span<const Migration> migrations();

// That of the tables which the families describe.
int64_t current_version();

// Makes a file of `version` one of the last migration's version, in steps each of which is done as a whole, with the
// number of its version, or not at all. Throws StoreError: the file is of the version that it has reached.
void migrate(sqlite3 *db, int64_t version, std::span<const Migration> migrations);

} // namespace ponsim
