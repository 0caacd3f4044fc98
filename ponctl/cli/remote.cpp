// ponctl onu, for remote ONUs.
#include "remote.h"
#include "cli/cli.h"
#include "words.h"

namespace ponctl
{
namespace
{

constexpr const char *set_help = "PON port and ids of its ONUs, as 1/5, 1/3-17,20 or 1/all (those that are bound)";

using Run = ExitCode (*)(const Output &, const RemoteOptions &);

struct Query {
    CLI::App *app;
    std::shared_ptr<RemoteOptions> options;
};

Query add_query(CLI::App &onu, Command &command, const char *name, const char *brief, Run run)
{
    Query query{onu.add_subcommand(name, brief), std::make_shared<RemoteOptions>()};
    query.app->add_option("SET", query.options->set, set_help)->required();
    runs(query.app, command, query.options, run);
    return query;
}

// Has a command that has commands of its own do without SET, which stands behind those then. Reading it finds it
// missing.
void let_set_be_missing(const Query &query)
{
    query.app->get_option("SET")->required(false);
}

void add_uni(const Query &query, const std::string &help)
{
    query.app->add_option("--uni", query.options->uni, help)->type_name("N");
}

void add_perf(CLI::App &onu, Command &command)
{
    const Query perf =
        add_query(onu, command, "perf", "Shows the counters of a UNI port; on and off switch monitoring", run_onu_perf);
    let_set_be_missing(perf);
    add_uni(perf, "UNI port number; required where counters are shown");
    perf.app->add_flag("--history", perf.options->history, "those of the period before, in place of the current one");
    add_chart(*perf.app, perf.options->chart);
    const auto add_switch = [&](const char *name, const char *brief, auto run) {
        CLI::App *one = perf.app->add_subcommand(name, brief);
        auto set = std::make_shared<std::string>();
        one->add_option("SET", *set, set_help)->required();
        runs(one, command, set, run);
    };
    add_switch("on", "Switches performance monitoring on", run_onu_perf_on);
    add_switch("off", "Switches performance monitoring off", run_onu_perf_off);
}

void add_services(CLI::App &onu, Command &command)
{
    CLI::App *services = onu.add_subcommand("services", "Shows what ONUs do for their users, and how they are managed");
    auto options = std::make_shared<ServicesOptions>();
    services->add_option("SET", options->set, set_help)->required();
    services
        ->add_option("SERVICE", options->services, "of " + join(onu_services) + "; all that the ONU has when left out")
        ->type_name(join(onu_services, "|"));
    services->add_option("--wan", options->wan, "number of the WAN connection; 0, when left out, for all")
        ->type_name("N");
    runs(services, command, options, run_onu_services);
}

void add_image(CLI::App &onu, Command &command)
{
    const Query query =
        add_query(onu, command, "image", "Shows the image banks and how an update stands; sends images", run_onu_image);
    let_set_be_missing(query);
    CLI::App *image = query.app;

    CLI::App *push = image->add_subcommand("push", "Sends an image, in parts");
    auto pushed = std::make_shared<ImagePushOptions>();
    push->add_option("SET", pushed->set, set_help)->required();
    push->add_option("FILE", pushed->file, "the image")->required();
    push->add_option("--version", pushed->version, "version of the image, at most 16 characters")
        ->type_name("VERSION")
        ->required();
    runs(push, command, pushed, run_onu_image_push);

    CLI::App *commit = image->add_subcommand("commit", "Has ONUs start their new image from now on");
    auto committed = std::make_shared<std::string>();
    commit->add_option("SET", *committed, set_help)->required();
    runs(commit, command, committed, run_onu_image_commit);
}

void add_settings(CLI::App &onu, Command &command)
{
    CLI::App *multillid = onu.add_subcommand("multillid", "Sets the number of LLIDs of ONUs");
    auto llids = std::make_shared<MultiLlidOptions>();
    multillid->add_option("SET", llids->set, set_help)->required();
    multillid->add_option("COUNT", llids->count, "number of LLIDs of each")->required();
    runs(multillid, command, llids, run_onu_multillid);

    CLI::App *set = onu.add_subcommand("set", "Sends any setting to ONUs");
    auto setting = std::make_shared<SettingOptions>();
    set->add_option("SET", setting->set, set_help)->required();
    set->add_option("COMMAND FIELD=VALUE", setting->words,
                    "the setting by its name or the words of it, as vlan or mc-vlan, and its fields; uni=N is the UNI "
                    "port; fields left out are zero; 'ponctl onu settings' lists both")
        ->required();
    runs(set, command, setting, run_onu_set);

    CLI::App *settings = onu.add_subcommand("settings", "Lists the settings of 'ponctl onu set', or the fields of one");
    auto words = std::make_shared<std::vector<std::string>>();
    settings->add_option("COMMAND", *words, "a setting by its name or the words of it; all settings when left out");
    runs(settings, command, words, run_onu_settings);
}

} // namespace

void add_remote(CLI::App &onu, Command &command)
{
    add_query(onu, command, "info", "Asks remote ONUs who they are and what they can do", run_onu_info);
    add_uni(add_query(onu, command, "ports", "Asks for the links of the UNI ports", run_onu_ports),
            "in place of the links: state, auto-negotiation, flow control and rate limits of this UNI port");
    add_uni(add_query(onu, command, "vlan", "Asks for the VLANs of the UNI ports", run_onu_vlan),
            "the VLANs of this UNI port alone, with all their fields");
    const Query multicast =
        add_query(onu, command, "multicast", "Asks for multicast and its groups", run_onu_multicast);
    add_uni(multicast, "in place of the whole ONU: group limit, VLANs and their tags at this UNI port");
    multicast.app->add_flag("--local", multicast.options->local,
                            "as the OLT has it, in place of the ONU; only what both have");
    add_perf(onu, command);
    add_query(onu, command, "optics", "Asks for the optical transceivers", run_onu_optics);
    add_query(onu, command, "configure", "Asks the service for the configure words of ONUs", run_onu_configure);
    add_services(onu, command);
    add_image(onu, command);
    add_settings(onu, command);
}

} // namespace ponctl
