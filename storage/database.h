// What programs of ours do with every database of SQLite.
#pragma once

#include <string>
#include <vector>

struct sqlite3;

namespace storage
{

// Returns the names of the file and of those that SQLite keeps beside it. There are none in memory.
std::vector<std::string> files_of(const std::string &file);

// A file may come from a stranger. It is not to make this program do more than read and write tables. Throws an Error.
void trust_nothing(sqlite3 *db);

} // namespace storage
