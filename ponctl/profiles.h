// The commands for profiles and LOIDs, beside those of commands.h, whose rules hold here too.
//
// The kinds of profiles are those that the catalogue has commands for: BSP_CMD_PROFILE_<KIND>_<ACTION>.
#pragma once

#include "commands.h"

namespace ponctl
{

// A command line calls a kind by its name in lower case, with hyphens between words.
struct ProfileOptions {
    std::string kind;
    std::string name;
    std::vector<std::string> fields; // field=value
};

// The kinds that the catalogue has commands for.
std::vector<std::string> profile_kinds();

// Lists the kinds with what can be done with them; of one, the fields of a profile.
ExitCode run_profile_kinds(const Output &output, const std::string &kind);
ExitCode run_profile_list(const Output &output, const std::string &kind);
ExitCode run_profile_show(const Output &output, const ProfileOptions &options);
ExitCode run_profile_store(const Output &output, const ProfileOptions &options);
ExitCode run_profile_delete(const Output &output, const ProfileOptions &options);
ExitCode run_profile_text(const Output &output, const std::string &kind);

struct LoidOptions {
    std::string port, loid, password;
};

ExitCode run_loid_list(const Output &output, const std::string &port);
ExitCode run_loid_add(const Output &output, const LoidOptions &options);
ExitCode run_loid_delete(const Output &output, const LoidOptions &options);

} // namespace ponctl
