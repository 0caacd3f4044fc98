// ponctl onu: what remote ONUs answer.
#include <algorithm>

#include "daily.h"
#include "generated/service_words.h"
#include "onu_set.h"
#include "remote.h"
#include "sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// A call whose answer is a part of the result.
struct Query {
    const char *operation;
    std::string_view name;  // of the member in JSON
    std::string_view title; // for people
    std::vector<std::string> words = {};
};

Section section_of(const Query &query, const Called &called)
{
    Section section{query.name, query.title, &called};
    // Of an answer in the caller's record, what the ONU said.
    if (called.has(catalogue::ArgumentType::record)) {
        section.of_answer = true;
        section.start = catalogue::find_field(called.operation().record->fields, "onu_data")->offset;
    }
    return section;
}

std::vector<Section> sections_of(const std::vector<Query> &queries, const OnuCalls &asked)
{
    std::vector<Section> sections;
    for (const Called &called : asked.calls)
        sections.push_back(section_of(*std::ranges::find(queries, called.operation().name, &Query::operation), called));
    return sections;
}

// Puts the queries to each ONU of the set. `able_only`: leaves out what an ONU's kind is not able to do.
ExitCode ask_onus(const Output &output, const std::string &set, const std::vector<Query> &queries,
                  bool able_only = false)
{
    const bool named = queries.size() > 1;
    return for_each_onu(
        parse_onu_set(set),
        [&](const Onu &onu, std::deque<Called> &calls) {
            for (const Query &query : queries) {
                const catalogue::Operation &operation = *catalogue::find_operation(query.operation);
                const Called &called = calls.emplace_back(operation, onu_words(operation, onu, query.words));
                if (able_only && called.answered() && called.exchange().status == PON_ERR_NOT_ABLE) calls.pop_back();
            }
        },
        [&](const std::deque<OnuCalls> &asked, bool several) {
            std::vector<Subject> subjects;
            for (const OnuCalls &of_onu : asked)
                subjects.push_back({of_onu.onu, sections_of(queries, of_onu)});
            if (several)
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

} // namespace

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

} // namespace ponctl
