// These commands of ponctl onu query remote ONUs, one or many.
#include <algorithm>
#include <array>
#include <deque>

#include "call/invocation.h"
#include "cli/chart_options.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "generated/service_words.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "results/history.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct RemoteOptions {
    std::string set;
    std::string uni;      // a UNI port; empty: the whole ONU
    bool local = false;   // what the OLT has of it, in place of what the ONU has
    bool history = false; // the period before the current one
    ChartOptions chart;
};

struct ServicesOptions {
    std::string set;
    std::vector<std::string> services; // empty: all services that the ONU has
    std::string wan = "0";             // number of a WAN connection; 0: all of them
};

// These are the services that `onu services` shows.
constexpr std::array<std::string_view, 9> onu_services{"wan",  "wlan", "catv", "voip", "acl",
                                                       "dhcp", "fec",  "time", "mgmt"};

// A Query is a call whose answer is a part of the result.
struct Query {
    const char *operation;
    std::string_view name;  // the name of the member in JSON
    std::string_view title; // the title for people
    std::vector<std::string> words = {};
};

Section section_of(const Query &query, const Invocation &called)
{
    Section section{query.name, query.title, &called};
    // Of an answer in the caller's record, only the part is shown that comes from the ONU.
    if (called.has(catalogue::ArgumentType::record)) {
        section.of_answer = true;
        section.start = catalogue::find_field(called.operation().record->fields, "onu_data")->offset;
    }
    return section;
}

std::vector<Section> sections_of(const std::vector<Query> &queries, const OnuCalls &asked)
{
    std::vector<Section> sections;
    for (const Invocation &called : asked.calls)
        sections.push_back(section_of(*std::ranges::find(queries, called.operation().name, &Query::operation), called));
    return sections;
}

// Sends the queries to each ONU of the set. `able_only` leaves out the services that the ONU's kind does not have.
ExitCode ask_onus(const Output &output, const std::string &set, const std::vector<Query> &queries,
                  bool able_only = false)
{
    const bool named = queries.size() > 1;
    return for_each_onu(
        parse_onu_set(set),
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            for (const Query &query : queries) {
                const catalogue::Operation &operation = *catalogue::find_operation(query.operation);
                const Invocation &called =
                    calls.emplace_back(operation, onu_words(operation, onu, query.words), consent());
                if (able_only && called.answered() && called.exchange().status == PON_ERR_NOT_ABLE) calls.pop_back();
            }
        },
        [&](const std::deque<OnuCalls> &asked, bool several) {
            std::vector<Subject> subjects;
            for (const OnuCalls &of_onu : asked)
                subjects.push_back({of_onu.onu, sections_of(queries, of_onu)});
            if (several || output.format == Format::json)
                print_each(output, subjects, named);
            else
                print_sections(output, subjects.front().sections, named);
        });
}

std::string uni_word(const std::string &name, const std::string &uni)
{
    return name + "=" + number_word("--uni", uni, UINT8_MAX);
}

ExitCode switch_perf(const Output &output, const std::string &set, const char *state)
{
    return tell_onus(output, parse_onu_set(set), "bsp_pon_onu_ctc_set_perf_monitor_status",
                     {std::string("enable=") + state});
}

ExitCode draw(const Output &output, const RemoteOptions &options, const std::string &uni)
{
    const OnuSet set = parse_onu_set(options.set);
    if (set.all || count_of(set.ids) != 1) throw UsageError("--chart: draws the counters of one ONU");
    const Onu onu{set.port, parse_number("SET", format_idset(set.ids))};
    const catalogue::Operation &operation = *catalogue::find_operation(
        options.history ? "bsp_onu_ctc_get_perf_history_data" : "bsp_onu_ctc_get_perf_current_data");
    return run_chart(output, options.chart,
                     {.operation = operation.name.data(),
                      .words = onu_words(operation, onu, {uni}),
                      .title = "ONU " + onu.name() + " UNI port " + options.uni,
                      .usual = "up_octets",
                      .counts = true});
}

std::vector<Query> queries_of_service(std::string_view service, const std::string &wan)
{
    if (service == "wan") return {{"bsp_pon_onu_ctc_get_wanc", "wan", "WAN connections", {"index=" + wan}}};
    if (service == "wlan") return {{"bsp_pon_onu_ctc_get_wlan", "wlan", "WLANs"}};
    if (service == "catv") return {{"bsp_pon_onu_ctc_get_catv", "catv", "CATV"}};
    if (service == "voip") return {{"bsp_pon_onu_ctc_get_voipinfo_json", "voip", "Voice ports"}};
    if (service == "acl") return {{"bsp_pon_onu_ctc_get_acl", "acl", "Access control list"}};
    if (service == "dhcp") return {{"bsp_pon_onu_ctc_get_dhcp", "dhcp", "DHCP server"}};
    if (service == "fec")
        return {{"bsp_pon_onu_get_fec_mode", "fec", "FEC"},
                {"bsp_pon_onuc_get_fec_ability", "fec_ability", "FEC ability"}};
    if (service == "time") return {{"bsp_pon_onu_ctc_get_time_config", "time", "Time"}};
    if (service == "mgmt") return {{"bsp_pon_onu_ctc_get_mgmt", "mgmt", "Management address"}};
    throw UsageError("SERVICE: '" + std::string(service) + "' is not one of " + text::join(onu_services));
}

ExitCode run_onu_info(const Output &output, const RemoteOptions &options)
{
    return ask_onus(output, options.set,
                    {{"bsp_pon_onu_ctc_get_sn", "identity", "Identity"},
                     {"bsp_pon_onu_ctc_get_fw", "firmware", "Firmware"},
                     {"bsp_pon_onu_ctc_get_chipid", "chipset", "Chipset"},
                     {"bsp_pon_onu_ctc_get_cap", "capabilities", "Capabilities"},
                     {"bsp_pon_onu_ctc_get_dev_info", "device", "Device"},
                     {"bsp_pon_onu_get_max_port", "uni_ports", "UNI ports"}});
}

ExitCode run_onu_ports(const Output &output, const RemoteOptions &options)
{
    if (options.uni.empty())
        return ask_onus(output, options.set, {{"bsp_pon_onu_ctc_get_linkstate", "links", "Links"}});
    const std::string uni = uni_word("uni_port", options.uni);
    return ask_onus(output, options.set,
                    {{"bsp_pon_onu_ctc_phy_adminstate_get", "admin_state", "Administrative state", {uni}},
                     {"bsp_pon_onu_ctc_autoneg_get", "autoneg", "Auto-negotiation", {uni}},
                     {"bsp_pon_onu_ctc_get_eth_pause", "pause", "Flow control", {uni}},
                     {"bsp_pon_onu_ctc_get_rate_limit", "rate_limit", "Rate limits", {uni}}});
}

ExitCode run_onu_vlan(const Output &output, const RemoteOptions &options)
{
    if (options.uni.empty()) return ask_onus(output, options.set, {{"bsp_pon_onu_ctc_get_vlan_json", "vlan", "VLANs"}});
    return ask_onus(output, options.set,
                    {{"bsp_pon_onu_ctc_get_vlan", "vlan", "VLANs", {uni_word("uni_port", options.uni)}}});
}

ExitCode run_onu_multicast(const Output &output, const RemoteOptions &options)
{
    const std::string uni = uni_word("uni_port", options.uni);
    if (options.local && options.uni.empty())
        return ask_onus(output, options.set,
                        {{"bsp_pon_onu_ctc_get_mc_switch_local", "mode", "Mode"},
                         {"bsp_pon_onu_ctc_get_fast_leave_local", "fast_leave", "Fast leave"}});
    if (options.local)
        return ask_onus(output, options.set,
                        {{"bsp_pon_onu_ctc_get_mc_group_num_max_local", "group_limit", "Group limit", {uni}},
                         {"bsp_pon_onu_ctc_get_mc_vlan_mode_local", "vlan_mode", "VLAN mode", {uni}},
                         {"bsp_pon_onu_ctc_get_mc_vlan_local", "vlan", "VLANs", {uni}}});
    if (!options.uni.empty())
        return ask_onus(output, options.set,
                        {{"bsp_pon_onu_ctc_get_mc_group_num_max_remote", "group_limit", "Group limit", {uni}},
                         {"bsp_pon_onu_ctc_get_mc_vlan_mode_remote", "vlan_mode", "VLAN mode", {uni}},
                         {"bsp_pon_onu_ctc_get_mc_vlan_remote", "vlan", "VLANs", {uni}},
                         {"bsp_pon_onu_ctc_get_mc_vlan_translate_json",
                          "translation",
                          "VLAN translation",
                          {uni_word("byte_arg", options.uni)}}});
    return ask_onus(output, options.set,
                    {{"bsp_pon_onu_ctc_get_mc_config_json", "configuration", "Configuration"},
                     {"bsp_pon_onu_uni_ctc_get_mc_config_json", "uni_ports", "UNI ports"},
                     {"bsp_pon_onu_ctc_get_mc_vlan_json", "vlan", "VLANs"},
                     {"bsp_pon_onu_ctc_get_mc_switch_remote", "mode", "Mode"},
                     {"bsp_pon_onu_ctc_get_fast_leave", "fast_leave", "Fast leave"},
                     {"bsp_pon_onu_ctc_get_fast_leave_ability", "fast_leave_ability", "Fast leave ability"},
                     {"bsp_pon_onu_ctc_get_mc_group", "groups", "Groups"}});
}

ExitCode run_onu_perf(const Output &output, const RemoteOptions &options)
{
    if (options.uni.empty()) throw UsageError("--uni: missing; give the number of a UNI port");
    const std::string uni = uni_word("uni_port", options.uni);
    if (options.chart.drawn) return draw(output, options, uni);
    const Query counters = options.history
                               ? Query{"bsp_onu_ctc_get_perf_history_data", "history", "Period before", {uni}}
                               : Query{"bsp_onu_ctc_get_perf_current_data", "current", "Current period", {uni}};
    return ask_onus(output, options.set,
                    {{"bsp_onu_ctc_get_perf_monitor_status", "monitoring", "Monitoring", {uni}}, counters});
}

ExitCode run_onu_perf_on(const Output &output, const std::string &set)
{
    return switch_perf(output, set, "1");
}

ExitCode run_onu_perf_off(const Output &output, const std::string &set)
{
    return switch_perf(output, set, "0");
}

ExitCode run_onu_optics(const Output &output, const RemoteOptions &options)
{
    return ask_onus(output, options.set, {{"bsp_pon_onu_optical_diagnose_get", "optics", "Optics"}});
}

ExitCode run_onu_configure(const Output &output, const RemoteOptions &options)
{
    return ask_onus(output, options.set, {{"bsp_pon_onu_get_configure", "configure", "Configure word"}});
}

ExitCode run_onu_services(const Output &output, const ServicesOptions &options)
{
    const std::string wan = number_word("--wan", options.wan);
    std::vector<std::string_view> services(options.services.begin(), options.services.end());
    if (services.empty()) services.assign(onu_services.begin(), onu_services.end());
    std::vector<Query> queries;
    for (const std::string_view service : services)
        for (const Query &query : queries_of_service(service, wan)) {
            if (std::ranges::find(queries, query.name, &Query::name) != queries.end())
                throw UsageError("SERVICE: '" + std::string(service) + "' given twice");
            queries.push_back(query);
        }
    return ask_onus(output, options.set, queries, options.services.empty());
}

ExitCode run_onu_image(const Output &output, const RemoteOptions &options)
{
    return ask_onus(
        output, options.set,
        {{"bsp_pon_tk_onu_get_fw", "banks", "Banks"}, {"bsp_pon_onu_ctc_get_upgrade_status", "update", "Update"}});
}

using Run = ExitCode (*)(const Output &, const RemoteOptions &);

// A QueryCommand is a command that shows something of each ONU of SET.
struct QueryCommand {
    Command &command;
    RemoteOptions &options;
};

QueryCommand add_query(Command &onu, const char *name, const char *brief, Run run)
{
    Command &command = onu.add(name, brief);
    RemoteOptions &options = command.runs(run);
    command.argument("SET", &options.set, onu_set_help).is_required();
    return {command, options};
}

// Lets SET be missing for a command with commands below it, because SET then stands behind those. When the command
// itself runs, it finds that SET is missing.
void let_set_be_missing(const QueryCommand &query)
{
    query.command.arguments.front().required = false;
}

void add_uni(const QueryCommand &query, const std::string &help)
{
    query.command.option("--uni", &query.options.uni, help, "N");
}

void add_perf(Command &onu)
{
    const QueryCommand perf =
        add_query(onu, "perf", "Shows the counters of a UNI port; on and off switch monitoring", run_onu_perf);
    let_set_be_missing(perf);
    add_uni(perf, "UNI port number; required where counters are shown");
    perf.command.option("--history", &perf.options.history, "those of the period before, in place of the current one");
    add_chart(perf.command, perf.options.chart);
    const auto add_switch = [&](const char *name, const char *brief, auto run) {
        Command &one = perf.command.add(name, brief);
        std::string &set = one.runs(run);
        one.argument("SET", &set, onu_set_help).is_required();
    };
    add_switch("on", "Switches performance monitoring on", run_onu_perf_on);
    add_switch("off", "Switches performance monitoring off", run_onu_perf_off);
}

void add_services(Command &onu)
{
    Command &services = onu.add("services", "Shows what ONUs do for their users, and how they are managed");
    ServicesOptions &options = services.runs(run_onu_services);
    services.argument("SET", &options.set, onu_set_help).is_required();
    services.argument("SERVICE", &options.services,
                      "of " + text::join(onu_services) + "; all that the ONU has when left out",
                      text::join(onu_services, "|"));
    services.option("--wan", &options.wan, "number of the WAN connection; 0, when left out, for all", "N");
}

} // namespace

Command &add_queries(Command &onu)
{
    add_query(onu, "info", "Asks remote ONUs who they are and what they can do", run_onu_info);
    add_uni(add_query(onu, "ports", "Asks for the links of the UNI ports", run_onu_ports),
            "in place of the links: state, auto-negotiation, flow control and rate limits of this UNI port");
    add_uni(add_query(onu, "vlan", "Asks for the VLANs of the UNI ports", run_onu_vlan),
            "the VLANs of this UNI port alone, with all their fields");
    const QueryCommand multicast = add_query(onu, "multicast", "Asks for multicast and its groups", run_onu_multicast);
    add_uni(multicast, "in place of the whole ONU: group limit, VLANs and their tags at this UNI port");
    multicast.command.option("--local", &multicast.options.local,
                             "as the OLT has it, in place of the ONU; only what both have");
    add_perf(onu);
    add_query(onu, "optics", "Asks for the optical transceivers", run_onu_optics);
    add_query(onu, "configure", "Asks the service for the configure words of ONUs", run_onu_configure);
    add_services(onu);
    const QueryCommand image =
        add_query(onu, "image", "Shows the image banks and how an update stands; sends images", run_onu_image);
    let_set_be_missing(image);
    return image.command;
}

} // namespace ponctl
