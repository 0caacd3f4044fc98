// ponctl whitelist, blacklist, auth and alarm.
#include "cli/cli.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

constexpr const char *port_help = "PON port number";
constexpr const char *port_or_all_help = "PON port number; all ports when left out";

template <class Run>
void add_ids(Command &list, const char *about, Run run)
{
    Command &ids = list.add("ids", about);
    std::string &port = ids.runs(run);
    ids.argument("PORT", &port, port_help).is_required();
}

} // namespace

void add_whitelist(Command &app)
{
    Command &whitelist = app.add("whitelist", "Shows the white list: the bound ONUs");
    add_ids(whitelist, "Shows which ONU ids of a port are in use", run_whitelist_ids);
}

void add_blacklist(Command &app)
{
    Command &blacklist =
        app.add("blacklist", "Lists the black list; 'onu reject' and 'onu allow' put ONUs on it and take them off");
    std::string &port = blacklist.runs(run_blacklist);
    blacklist.argument("PORT", &port, port_or_all_help);
    add_ids(blacklist, "Shows which ids of a port's black list are in use", run_blacklist_ids);
}

void add_auth(Command &app)
{
    Command &auth = app.add("auth", "Shows and sets how the ONUs of a port prove who they are");

    Command &show = auth.add("show", "Shows the mode of every port, or the LOIDs of one");
    std::string &port = show.runs(run_auth_show);
    show.argument("PORT", &port, "PON port number; a summary of all ports when left out");

    Command &set = auth.add("set", "Sets the mode of a port, and adds a LOID or changes its password");
    AuthOptions &wanted = set.runs(run_auth_set);
    set.argument("PORT", &wanted.port, port_help).is_required();
    set.argument("MODE", &wanted.mode, "one of " + text::join(auth_modes), text::join(auth_modes, "|")).is_required();
    set.option("--loid", &wanted.loid, "LOID that is accepted, at most 24 characters", "LOID");
    set.option("--password", &wanted.password, "its password, at most 12 characters; none when left out", "PASSWORD");

    Command &remove = auth.add("remove", "Removes a LOID from a port; the mode stays");
    AuthOptions &unwanted = remove.runs(run_auth_remove);
    remove.argument("PORT", &unwanted.port, port_help).is_required();
    remove.argument("LOID", &unwanted.loid, "the LOID").is_required();
}

void add_alarm(Command &app)
{
    Command &alarm = app.add("alarm", "Lists and clears alarms of ONUs");
    const auto select = [](Command &one, AlarmOptions &options) {
        one.argument("PORT", &options.port,
                     "PON port number, or with the ids of its ONUs, as 1/3-17,20 or 1/all; all ports when left out");
        one.argument("ONU", &options.onu,
                     "ONU id on the port, or MAC address; id 0 cannot be given, for there it means all");
    };

    Command &list = alarm.add("list", "Lists the alarms of all ports, of one, or of some ONUs");
    AlarmOptions &listed = list.runs(run_alarm_list);
    select(list, listed);

    Command &clear = alarm.add("clear", "Clears the alarms of all ports, of one, or of some ONUs");
    AlarmOptions &cleared = clear.runs(run_alarm_clear);
    select(clear, cleared);
    clear.option("--alarm", &cleared.alarm, "code of the alarms to clear; all when left out", "CODE");
}

} // namespace ponctl
