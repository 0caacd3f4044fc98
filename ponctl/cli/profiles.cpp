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

void add_of_kind(Command &profile, const char *name, const char *brief, RunOfKind run)
{
    Command &one = profile.add(name, brief);
    std::string &kind = one.runs(run);
    one.argument("KIND", &kind, kind_help).is_required();
}

ProfileOptions &add_of_profile(Command &one, RunOfProfile run)
{
    ProfileOptions &options = one.runs(run);
    one.argument("KIND", &options.kind, kind_help).is_required();
    return options;
}

void add_loid_change(Command &loid, bool adds)
{
    Command &one =
        adds ? loid.add("add", "Adds a LOID to a PON port") : loid.add("delete", "Deletes a LOID of a PON port");
    LoidOptions &options = one.runs(adds ? run_loid_add : run_loid_delete);
    one.argument("PORT", &options.port, "PON port number").is_required();
    one.argument("LOID", &options.loid, "the LOID").is_required();
    if (adds) one.option("--password", &options.password, "password that goes with it; none when left out", "PASSWORD");
}

} // namespace

void add_profile(Command &app)
{
    Command &profile = app.add("profile", "Lists, shows, stores and deletes profiles");
    Command &kinds = profile.add("kinds", "Lists the kinds of profiles, or the fields of one kind");
    std::string &kind = kinds.runs(run_profile_kinds);
    kinds.argument("KIND", &kind, "kind of profile; all kinds when left out");

    add_of_kind(profile, "list", "Lists the profiles of a kind", run_profile_list);
    add_of_kind(profile, "text", "Shows the profiles of a kind as the configuration has them", run_profile_text);

    Command &show = profile.add("show", "Shows a profile");
    ProfileOptions &shown = add_of_profile(show, run_profile_show);
    show.argument("NAME", &shown.name, "its name").is_required();

    Command &store = profile.add("store", "Stores a profile, or puts it in place of the one that is there");
    ProfileOptions &stored = add_of_profile(store, run_profile_store);
    store.argument("FIELD=VALUE", &stored.fields, "its fields, as 'ponctl profile kinds KIND' lists them; zero else")
        .is_required();

    Command &remove = profile.add("delete", "Deletes a profile");
    ProfileOptions &removed = add_of_profile(remove, run_profile_delete);
    remove.argument("NAME", &removed.name, "its name").is_required();
}

void add_loid(Command &app)
{
    Command &loid = app.add("loid", "Lists, adds and deletes the LOIDs of a PON port");
    Command &list = loid.add("list", "Lists the LOIDs of a PON port");
    std::string &port = list.runs(run_loid_list);
    list.argument("PORT", &port, "PON port number").is_required();
    add_loid_change(loid, true);
    add_loid_change(loid, false);
}

} // namespace ponctl
