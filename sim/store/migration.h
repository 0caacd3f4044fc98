// This file has the versions of the tables, and turns a state file of an earlier version into one of this version.
#pragma once

#include <cstdint>
#include <span>

struct sqlite3;

namespace ponsim
{

// A Migration turns the tables of the previous version into those of `version`.
struct Migration {
    int64_t version;
    const char *sql;
};

// first_version is the oldest version whose files are read, and needs no migration. The migrations follow it in order,
// without gaps.
inline constexpr int64_t first_version = 7;
std::span<const Migration> migrations();

// Returns the version of the tables that the families describe.
int64_t current_version();

// Brings a file of `version` to the version of the last migration. Each step is done completely, with the number of its
// version, or not at all. Throws StoreError. The file then has the version that it has reached.
void migrate(sqlite3 *db, int64_t version, std::span<const Migration> migrations);

} // namespace ponsim
