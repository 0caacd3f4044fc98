// ponctl blacklist, ponctl whitelist, and what puts ONUs on the black list and takes them off.
#include <cstring>

#include "consent.h"
#include "daily.h"
#include "onu_set.h"

namespace ponctl
{
namespace
{

constexpr size_t longest_entry_text = 200;

// Ids in use, as an operation answers them.
ExitCode run_ids(const Output &output, const char *operation, const std::string &port)
{
    const Called called(operation, words_of({{"pon_port", port_of(port)}}));
    if (!called.good()) return called.report();
    const Reading reading = called.response();
    IdSet ids;
    const catalogue::Field &field = *catalogue::find_field(reading.layout->fields, "id_set");
    std::memcpy(ids.data(), field_bytes(field, reading.bytes).data(), sizeof ids);
    if (output.format == Format::hex) {
        print_bytes(output, reading.bytes, &reading);
    } else if (output.format == Format::json) {
        Json json(output.stream);
        json->StartObject();
        json.member("pon_port", parse_number("PORT", port));
        json.member("used", count_of(ids));
        json.member("free", max_onu_id + 1 - count_of(ids));
        json.key("ids");
        json.ids(ids);
        json->EndObject();
    } else {
        Table table({{"PORT", Table::Fit::right},
                     {"USED", Table::Fit::right},
                     {"FREE", Table::Fit::right},
                     {"IDS", Table::Fit::wrap}});
        table.add({port_of(port), std::to_string(count_of(ids)), std::to_string(max_onu_id + 1 - count_of(ids)),
                   count_of(ids) ? format_idset(ids) : "-"});
        table.print(output);
    }
    return exit_success;
}

ExitCode reject_by_mac(const Output &output, const RejectOptions &options, const std::string &port)
{
    if (!options.ids.empty()) throw UsageError("--mac: not together with ids");
    const std::string mac = format_mac(parse_mac("--mac", options.mac).data());
    check_text("--text", options.text, longest_entry_text);
    ask_before("bsp_pon_blacklist_add_onu_auto_id", "rejecting ONU " + mac + " at port " + port);
    return call(output, "bsp_pon_blacklist_add_onu_auto_id",
                words_of({{"pon_port", port}, {"mac", mac}, {"text", options.text}}));
}

} // namespace

ExitCode run_blacklist(const Output &output, const std::string &port)
{
    return run_list(output, "bsp_pon_get_onu_blacklist", words_of({{"record.pon_port", port_of(port)}}));
}

ExitCode run_blacklist_ids(const Output &output, const std::string &port)
{
    return run_ids(output, "bsp_pon_get_b_onu_id_resouce", port);
}

ExitCode run_whitelist_ids(const Output &output, const std::string &port)
{
    return run_ids(output, "bsp_pon_get_w_onu_id_resouce", port);
}

ExitCode run_onu_reject(const Output &output, const RejectOptions &options)
{
    constexpr const char *one = "bsp_pon_reject_onu_to_blacklist";
    if (const auto set = set_in_place_of(options.port)) {
        if (!options.ids.empty() || !(options.mac + options.text).empty())
            throw UsageError("ID, --mac and --text: not beside a set; " + options.port + " names the ONUs already");
        ask_before(one, "rejecting " + describe_onu_set(*set));
        return tell_onus(output, *set, one);
    }
    const std::string port = port_of(options.port);
    if (!options.mac.empty()) return reject_by_mac(output, options, port);
    if (!options.text.empty()) throw UsageError("--text: goes with --mac alone");
    const IdSet ids = parse_idset("ID", join_words(options.ids));
    const uint32_t count = count_of(ids);
    if (count == 0) throw UsageError("which ONU? give ONU ids, as 1-5,7, or --mac MAC");
    const std::string which = format_idset(ids);
    ask_before(one, (count == 1 ? "rejecting ONU " : "rejecting ONUs ") + which + " of port " + port);
    if (count == 1) return call(output, one, words_of({{"pon_port", port}, {"onu_id", which}}));
    return call(output, "bsp_pon_reject_onu_to_blacklist_batch",
                words_of({{"record.pon_port", port}, {"record.onu_set", which}}));
}

ExitCode run_onu_allow(const Output &output, const AllowOptions &options)
{
    const std::string port = port_of(options.port);
    if (options.mac.empty() == options.ids.empty()) throw UsageError("which ONU? give either MAC or --ids SET");
    if (!options.mac.empty()) {
        const std::string mac = format_mac(parse_mac("MAC", options.mac).data());
        ask_before("bsp_pon_no_bind_blacklist_onu_by_mac", "allowing ONU " + mac + " at port " + port + " again");
        return call(output, "bsp_pon_no_bind_blacklist_onu_by_mac", words_of({{"pon_port", port}, {"mac", mac}}));
    }
    const std::string ids = format_idset(parse_idset("--ids", options.ids));
    ask_before("bsp_pon_no_bind_blacklist_batch",
               "allowing the ONUs with ids " + ids + " on the black list of port " + port + " again");
    return call(output, "bsp_pon_no_bind_blacklist_batch",
                words_of({{"record.pon_port", port}, {"record.id_set", ids}}));
}

} // namespace ponctl
