// ponctl onu reject and ponctl onu allow put ONUs on the blacklist and take them off.
#include <cstring>

#include "cli/operand_help.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "output/consent.h"
#include "results/delivered.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/preview.h"

namespace ponctl
{
namespace
{

struct RejectOptions {
    std::string port;
    std::vector<std::string> ids;
    std::string mac, text;
};

struct AllowOptions {
    std::string port, mac, ids;
};

constexpr size_t longest_entry_text = 200;

ExitCode reject_by_mac(const Output &output, const RejectOptions &options, const std::string &port)
{
    if (!options.ids.empty()) throw UsageError("--mac: not together with ids");
    const std::string mac = text::mac_text(parse_mac("--mac", options.mac));
    check_text("--text", options.text, longest_entry_text);
    ask_about("bsp_pon_blacklist_add_onu_auto_id", "rejecting ONU " + mac + " at port " + port, Effect::offline,
              parse_number("PORT", port), [&mac](const Hit &onu) { return onu.mac == mac; });
    return run_call(output, "bsp_pon_blacklist_add_onu_auto_id",
                    words_of({{"pon_port", port}, {"mac", mac}, {"text", options.text}}));
}

ExitCode run_onu_reject(const Output &output, const RejectOptions &options)
{
    constexpr const char *one = "bsp_pon_reject_onu_to_blacklist";
    if (const auto set = set_in_place_of(options.port)) {
        if (!options.ids.empty() || !(options.mac + options.text).empty())
            throw UsageError("ID, --mac and --text: not beside a set; " + options.port + " names the ONUs already");
        ask_about(one, "rejecting " + describe_onu_set(*set), Effect::offline, *set);
        return tell_onus(output, *set, one);
    }
    const std::string port = port_of(options.port);
    if (!options.mac.empty()) return reject_by_mac(output, options, port);
    if (!options.text.empty()) throw UsageError("--text: goes with --mac alone");
    const IdSet ids = parse_idset("ID", join_words(options.ids));
    const uint32_t count = count_of(ids);
    if (count == 0) throw UsageError("which ONU? give ONU ids, as 1-5,7, or --mac MAC");
    const std::string which = format_idset(ids);
    ask_about(one, (count == 1 ? "rejecting ONU " : "rejecting ONUs ") + which + " of port " + port, Effect::offline,
              OnuSet{parse_number("PORT", port), ids});
    if (count == 1) return run_call(output, one, words_of({{"pon_port", port}, {"onu_id", which}}));
    return run_call(output, "bsp_pon_reject_onu_to_blacklist_batch",
                    words_of({{"record.pon_port", port}, {"record.onu_set", which}}));
}

ExitCode run_onu_allow(const Output &output, const AllowOptions &options)
{
    const std::string port = port_of(options.port);
    if (options.mac.empty() == options.ids.empty()) throw UsageError("which ONU? give either MAC or --ids SET");
    if (!options.mac.empty()) {
        const std::string mac = text::mac_text(parse_mac("MAC", options.mac));
        ask_before("bsp_pon_no_bind_blacklist_onu_by_mac", "allowing ONU " + mac + " at port " + port + " again");
        return run_call(output, "bsp_pon_no_bind_blacklist_onu_by_mac", words_of({{"pon_port", port}, {"mac", mac}}));
    }
    const std::string ids = format_idset(parse_idset("--ids", options.ids));
    ask_before("bsp_pon_no_bind_blacklist_batch",
               "allowing the ONUs with ids " + ids + " on the blacklist of port " + port + " again");
    return run_call(output, "bsp_pon_no_bind_blacklist_batch",
                    words_of({{"record.pon_port", port}, {"record.id_set", ids}}));
}

void add_reject(Command &onu)
{
    Command &reject = onu.add("reject", "Puts ONUs on the blacklist: they are released and stay away until allowed");
    RejectOptions &options = reject.runs(run_onu_reject);
    reject.argument("PORT", &options.port, port_or_set_help).is_required();
    reject.argument("ID", &options.ids, "ONU ids of bound ONUs, as 5 or 1-5,7, unless PORT has them");
    reject.option("--mac", &options.mac, "MAC address of any ONU, in place of ids", "MAC");
    reject.option("--text", &options.text, "text of the entry, with --mac", "TEXT");
}

void add_allow(Command &onu)
{
    Command &allow = onu.add("allow", "Takes ONUs off the blacklist");
    AllowOptions &options = allow.runs(run_onu_allow);
    allow.argument("PORT", &options.port, port_help).is_required();
    allow.argument("MAC", &options.mac, "MAC address of the ONU");
    allow.option("--ids", &options.ids, "in place of MAC: ids on the blacklist, as 1-5,7", "IDS");
}

} // namespace

void add_blacklisting(Command &onu)
{
    add_reject(onu);
    add_allow(onu);
}

} // namespace ponctl
