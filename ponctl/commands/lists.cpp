// This file has ponctl blacklist and ponctl whitelist. ponctl onu puts ONUs on the blacklist and takes them off.
#include <cstring>

#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/operand_help.h"
#include "cli/program.h"
#include "output/bytes.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "output/table.h"
#include "results/delivered.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

// Shows the ids in use that an operation answers.
ExitCode run_ids(const Output &output, const char *operation, const std::string &port)
{
    const Invocation called(operation, words_of({{"pon_port", port_of(port)}}), consent());
    if (!called.good()) return report(called);
    refuse_selection(output);
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

template <class Run>
void add_ids(Command &list, const char *about, Run run)
{
    Command &ids = list.add("ids", about);
    std::string &port = ids.runs(run);
    ids.argument("PORT", &port, port_help).is_required();
}

} // namespace

void add_whitelist(Program &program)
{
    Command &whitelist = program.tree.add("whitelist", "Shows the whitelist: the bound ONUs");
    add_ids(whitelist, "Shows which ONU ids of a port are in use", run_whitelist_ids);
}

void add_blacklist(Program &program)
{
    Command &blacklist = program.tree.add(
        "blacklist", "Lists the blacklist; 'onu reject' and 'onu allow' put ONUs on it and take them off");
    std::string &port = blacklist.runs(run_blacklist);
    blacklist.argument("PORT", &port, port_or_all_help);
    Command &list = blacklist.add("list", "Lists the blacklist, as 'blacklist' does");
    std::string &of_port = list.runs(run_blacklist);
    list.argument("PORT", &of_port, port_or_all_help);
    add_ids(blacklist, "Shows which ids of a port's blacklist are in use", run_blacklist_ids);
    add_list_options(program, blacklist);
    add_list_options(program, list);
}

} // namespace ponctl
