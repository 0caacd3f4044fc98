// ponctl onu, for remote ONUs.
#include "remote.h"
#include "cli/cli.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

constexpr const char *set_help = "PON port and ids of its ONUs, as 1/5, 1/3-17,20 or 1/all (those that are bound)";

using Run = ExitCode (*)(const Output &, const RemoteOptions &);

// A command that shows something of each ONU of SET.
struct Query {
    Command &command;
    RemoteOptions &options;
};

Query add_query(Command &onu, const char *name, const char *brief, Run run)
{
    Command &command = onu.add(name, brief);
    RemoteOptions &options = command.runs(run);
    command.argument("SET", &options.set, set_help).is_required();
    return {command, options};
}

// Has a command that has commands of its own do without SET, which stands behind those then. Reading it finds it
// missing.
void let_set_be_missing(const Query &query)
{
    query.command.arguments.front().required = false;
}

void add_uni(const Query &query, const std::string &help)
{
    query.command.option("--uni", &query.options.uni, help, "N");
}

void add_perf(Command &onu)
{
    const Query perf =
        add_query(onu, "perf", "Shows the counters of a UNI port; on and off switch monitoring", run_onu_perf);
    let_set_be_missing(perf);
    add_uni(perf, "UNI port number; required where counters are shown");
    perf.command.option("--history", &perf.options.history, "those of the period before, in place of the current one");
    add_chart(perf.command, perf.options.chart);
    const auto add_switch = [&](const char *name, const char *brief, auto run) {
        Command &one = perf.command.add(name, brief);
        std::string &set = one.runs(run);
        one.argument("SET", &set, set_help).is_required();
    };
    add_switch("on", "Switches performance monitoring on", run_onu_perf_on);
    add_switch("off", "Switches performance monitoring off", run_onu_perf_off);
}

void add_services(Command &onu)
{
    Command &services = onu.add("services", "Shows what ONUs do for their users, and how they are managed");
    ServicesOptions &options = services.runs(run_onu_services);
    services.argument("SET", &options.set, set_help).is_required();
    services.argument("SERVICE", &options.services,
                      "of " + text::join(onu_services) + "; all that the ONU has when left out",
                      text::join(onu_services, "|"));
    services.option("--wan", &options.wan, "number of the WAN connection; 0, when left out, for all", "N");
}

void add_image(Command &onu)
{
    const Query query =
        add_query(onu, "image", "Shows the image banks and how an update stands; sends images", run_onu_image);
    let_set_be_missing(query);
    Command &image = query.command;

    Command &push = image.add("push", "Sends an image, in parts");
    ImagePushOptions &pushed = push.runs(run_onu_image_push);
    push.argument("SET", &pushed.set, set_help).is_required();
    push.argument("FILE", &pushed.file, "the image").is_required();
    push.option("--version", &pushed.version, "version of the image, at most 16 characters", "VERSION").is_required();

    Command &commit = image.add("commit", "Has ONUs start their new image from now on");
    std::string &committed = commit.runs(run_onu_image_commit);
    commit.argument("SET", &committed, set_help).is_required();
}

void add_settings(Command &onu)
{
    Command &multillid = onu.add("multillid", "Sets the number of LLIDs of ONUs");
    MultiLlidOptions &llids = multillid.runs(run_onu_multillid);
    multillid.argument("SET", &llids.set, set_help).is_required();
    multillid.argument("COUNT", &llids.count, "number of LLIDs of each").is_required();

    Command &set = onu.add("set", "Sends any setting to ONUs");
    SettingOptions &setting = set.runs(run_onu_set);
    set.argument("SET", &setting.set, set_help).is_required();
    set.argument("COMMAND FIELD=VALUE", &setting.words,
                 "the setting by its name or the words of it, as vlan or mc-vlan, and its fields; uni=N is the UNI "
                 "port; fields left out are zero; 'ponctl onu settings' lists both")
        .is_required();

    Command &settings = onu.add("settings", "Lists the settings of 'ponctl onu set', or the fields of one");
    std::vector<std::string> &words = settings.runs(run_onu_settings);
    settings.argument("COMMAND", &words, "a setting by its name or the words of it; all settings when left out");
}

} // namespace

void add_remote(Command &onu)
{
    add_query(onu, "info", "Asks remote ONUs who they are and what they can do", run_onu_info);
    add_uni(add_query(onu, "ports", "Asks for the links of the UNI ports", run_onu_ports),
            "in place of the links: state, auto-negotiation, flow control and rate limits of this UNI port");
    add_uni(add_query(onu, "vlan", "Asks for the VLANs of the UNI ports", run_onu_vlan),
            "the VLANs of this UNI port alone, with all their fields");
    const Query multicast = add_query(onu, "multicast", "Asks for multicast and its groups", run_onu_multicast);
    add_uni(multicast, "in place of the whole ONU: group limit, VLANs and their tags at this UNI port");
    multicast.command.option("--local", &multicast.options.local,
                             "as the OLT has it, in place of the ONU; only what both have");
    add_perf(onu);
    add_query(onu, "optics", "Asks for the optical transceivers", run_onu_optics);
    add_query(onu, "configure", "Asks the service for the configure words of ONUs", run_onu_configure);
    add_services(onu);
    add_image(onu);
    add_settings(onu);
}

} // namespace ponctl
