// ponctl profile and ponctl loid.
#include "profiles.h"
#include "cli/cli.h"

namespace ponctl
{
namespace
{

constexpr const char *kind_help = "kind of profile; 'ponctl profile kinds' lists them";

using RunOfKind = ExitCode (*)(const Output &, const std::string &);
using RunOfProfile = ExitCode (*)(const Output &, const ProfileOptions &);

void add_of_kind(CLI::App &profile, Command &command, const char *name, const char *brief, RunOfKind run)
{
    CLI::App *one = profile.add_subcommand(name, brief);
    auto kind = std::make_shared<std::string>();
    one->add_option("KIND", *kind, kind_help)->required();
    runs(one, command, kind, run);
}

std::shared_ptr<ProfileOptions> add_of_profile(CLI::App *one, Command &command, RunOfProfile run)
{
    auto options = std::make_shared<ProfileOptions>();
    one->add_option("KIND", options->kind, kind_help)->required();
    runs(one, command, options, run);
    return options;
}

void add_loid_change(CLI::App &loid, Command &command, bool adds)
{
    CLI::App *one = adds ? loid.add_subcommand("add", "Adds a LOID to a PON port")
                         : loid.add_subcommand("delete", "Deletes a LOID of a PON port");
    auto options = std::make_shared<LoidOptions>();
    one->add_option("PORT", options->port, "PON port number")->required();
    one->add_option("LOID", options->loid, "the LOID")->required();
    if (adds)
        one->add_option("--password", options->password, "password that goes with it; none when left out")
            ->type_name("PASSWORD");
    runs(one, command, options, adds ? run_loid_add : run_loid_delete);
}

} // namespace

void add_profile(CLI::App &app, Command &command)
{
    CLI::App *profile = app.add_subcommand("profile", "Lists, shows, stores and deletes profiles");
    profile->require_subcommand(1);
    CLI::App *kinds = profile->add_subcommand("kinds", "Lists the kinds of profiles, or the fields of one kind");
    auto kind = std::make_shared<std::string>();
    kinds->add_option("KIND", *kind, "kind of profile; all kinds when left out");
    runs(kinds, command, kind, run_profile_kinds);

    add_of_kind(*profile, command, "list", "Lists the profiles of a kind", run_profile_list);
    add_of_kind(*profile, command, "text", "Shows the profiles of a kind as the configuration has them",
                run_profile_text);

    CLI::App *show = profile->add_subcommand("show", "Shows a profile");
    const auto shown = add_of_profile(show, command, run_profile_show);
    show->add_option("NAME", shown->name, "its name")->required();

    CLI::App *store =
        profile->add_subcommand("store", "Stores a profile, or puts it in place of the one that is there");
    const auto stored = add_of_profile(store, command, run_profile_store);
    store->add_option("FIELD=VALUE", stored->fields, "its fields, as 'ponctl profile kinds KIND' lists them; zero else")
        ->required();

    CLI::App *remove = profile->add_subcommand("delete", "Deletes a profile");
    const auto removed = add_of_profile(remove, command, run_profile_delete);
    remove->add_option("NAME", removed->name, "its name")->required();
}

void add_loid(CLI::App &app, Command &command)
{
    CLI::App *loid = app.add_subcommand("loid", "Lists, adds and deletes the LOIDs of a PON port");
    loid->require_subcommand(1);
    CLI::App *list = loid->add_subcommand("list", "Lists the LOIDs of a PON port");
    auto port = std::make_shared<std::string>();
    list->add_option("PORT", *port, "PON port number")->required();
    runs(list, command, port, run_loid_list);
    add_loid_change(*loid, command, true);
    add_loid_change(*loid, command, false);
}

} // namespace ponctl
