// This file says what a command line is about to do to ONUs: which they are, and what becomes different of them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "hits/hit.h"
#include "output/table.h"
#include "results/onu_set.h"

namespace ponctl
{

// Returns a table as it is printed where there is no terminal.
std::string table_text(const Table &table);

// An Effect says what the customers behind ONUs notice.
enum class Effect : uint8_t {
    setting, // their service may be interrupted for a moment
    offline  // ONUs that are online go offline
};

// A Planned is what becomes of one ONU.
struct Planned {
    Onu onu;
    std::string about = {}; // what becomes different of it, for people; empty where the action says it
    std::vector<Change> changes = {};
};

// Asks before an operation or a command does something to ONUs, if it affects service. The question stands below a list
// of the ONUs, and in a dry run this list is shown alone. `action` is the question.
void ask_about(std::string_view name, const std::string &action, Effect effect, const std::vector<Planned> &planned);
// As above, for all ONUs of a set. `changes` says what becomes different of each, if it is given.
void ask_about(std::string_view name, const std::string &action, Effect effect, const OnuSet &set,
               const std::function<std::vector<Change>(const Hit &)> &changes = {});
// As above, for those ONUs of a port that are hit, whether they are bound or wait.
void ask_about(std::string_view name, const std::string &action, Effect effect, uint32_t port,
               const std::function<bool(const Hit &)> &is_hit);

} // namespace ponctl
