// ponctl whitelist, blacklist, auth and alarm.
#include "cli/cli.h"
#include "words.h"

namespace ponctl
{
namespace
{

constexpr const char *port_help = "PON port number";
constexpr const char *port_or_all_help = "PON port number; all ports when left out";

template <class Run>
void add_ids(CLI::App &list, Command &command, const char *about, Run run)
{
    CLI::App *ids = list.add_subcommand("ids", about);
    auto port = std::make_shared<std::string>();
    ids->add_option("PORT", *port, port_help)->required();
    runs(ids, command, port, run);
}

} // namespace

void add_whitelist(CLI::App &app, Command &command)
{
    CLI::App *whitelist = app.add_subcommand("whitelist", "Shows the white list: the bound ONUs");
    whitelist->require_subcommand(1);
    add_ids(*whitelist, command, "Shows which ONU ids of a port are in use", run_whitelist_ids);
}

void add_blacklist(CLI::App &app, Command &command)
{
    CLI::App *blacklist = app.add_subcommand(
        "blacklist", "Lists the black list; 'onu reject' and 'onu allow' put ONUs on it and take them off");
    auto port = std::make_shared<std::string>();
    blacklist->add_option("PORT", *port, port_or_all_help);
    runs(blacklist, command, port, run_blacklist);
    add_ids(*blacklist, command, "Shows which ids of a port's black list are in use", run_blacklist_ids);
}

void add_auth(CLI::App &app, Command &command)
{
    CLI::App *auth = app.add_subcommand("auth", "Shows and sets how the ONUs of a port prove who they are");
    auth->require_subcommand(1);

    CLI::App *show = auth->add_subcommand("show", "Shows the mode of every port, or the LOIDs of one");
    auto port = std::make_shared<std::string>();
    show->add_option("PORT", *port, "PON port number; a summary of all ports when left out");
    runs(show, command, port, run_auth_show);

    CLI::App *set = auth->add_subcommand("set", "Sets the mode of a port, and adds a LOID or changes its password");
    auto wanted = std::make_shared<AuthOptions>();
    set->add_option("PORT", wanted->port, port_help)->required();
    set->add_option("MODE", wanted->mode, "one of " + join(auth_modes))->required()->type_name(join(auth_modes, "|"));
    set->add_option("--loid", wanted->loid, "LOID that is accepted, at most 24 characters")->type_name("LOID");
    set->add_option("--password", wanted->password, "its password, at most 12 characters; none when left out")
        ->type_name("PASSWORD");
    runs(set, command, wanted, run_auth_set);

    CLI::App *remove = auth->add_subcommand("remove", "Removes a LOID from a port; the mode stays");
    auto unwanted = std::make_shared<AuthOptions>();
    remove->add_option("PORT", unwanted->port, port_help)->required();
    remove->add_option("LOID", unwanted->loid, "the LOID")->required();
    runs(remove, command, unwanted, run_auth_remove);
}

void add_alarm(CLI::App &app, Command &command)
{
    CLI::App *alarm = app.add_subcommand("alarm", "Lists and clears alarms of ONUs");
    alarm->require_subcommand(1);
    const auto select = [](CLI::App &one, AlarmOptions &options) {
        one.add_option("PORT", options.port,
                       "PON port number, or with the ids of its ONUs, as 1/3-17,20 or 1/all; all ports when left out");
        one.add_option("ONU", options.onu,
                       "ONU id on the port, or MAC address; id 0 cannot be given, for there it means all");
    };

    CLI::App *list = alarm->add_subcommand("list", "Lists the alarms of all ports, of one, or of some ONUs");
    auto listed = std::make_shared<AlarmOptions>();
    select(*list, *listed);
    runs(list, command, listed, run_alarm_list);

    CLI::App *clear = alarm->add_subcommand("clear", "Clears the alarms of all ports, of one, or of some ONUs");
    auto cleared = std::make_shared<AlarmOptions>();
    select(*clear, *cleared);
    clear->add_option("--alarm", cleared->alarm, "code of the alarms to clear; all when left out")->type_name("CODE");
    runs(clear, command, cleared, run_alarm_clear);
}

} // namespace ponctl
