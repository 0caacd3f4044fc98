// ponctl fdb shows and sets the OLT's forwarding database.
#include <array>

#include "board/datastore.h"
#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

struct FdbOptions {
    std::string port; // empty: all ports
    std::string llid, uni, vlan, mac, from, count;
    bool network = false; // on the side of the uplinks
};

struct FdbFlushOptions {
    std::string side, port, llid, vlan, mac;
};

struct FdbSetOptions {
    std::string ageing, learning = "on", limit = "0";
};

constexpr std::array<std::string_view, 3> sides{"both", "pon", "network"};

std::string mac_of(const std::string &text)
{
    return text.empty() ? text : text::mac_text(parse_mac("--mac", text));
}

ExitCode run_fdb_show(const Output &output, const FdbOptions &options)
{
    if (options.network && !(options.llid + options.uni).empty())
        throw UsageError("--llid and --uni: there are none on the network side");
    const Invocation called("bsp_pon_platform_by_db",
                            words_of({{"record.plat_cmd", options.network ? "BSP_CMD_MAC_NNI_GET" : "BSP_CMD_MAC_GET"},
                                      {"record.from", number_word("--from", options.from)},
                                      {"record.count", number_word("--count", options.count)},
                                      {"record.port", number_word("PORT", options.port)},
                                      {"record.llid", number_word("--llid", options.llid)},
                                      {"record.uni", number_word("--uni", options.uni)},
                                      {"record.vlan", number_word("--vlan", options.vlan)},
                                      {"record.mac", mac_of(options.mac)}}),
                            consent());
    const ExitCode code = show(output, {{{}, {}, &called}});
    if (!called.good() || output.format != Format::table) return code;
    // The service shows only a part of a long table.
    const uint32_t shown = called.database() ? db_rows(called.database()) : 0;
    const std::string matching = field_digits(called.answer(), "matching");
    if (matching != std::to_string(shown))
        note(std::to_string(shown) + " of " + matching + " addresses are shown; --from and --count show others");
    return code;
}

ExitCode run_fdb_age(const Output &output)
{
    const Invocation called("bsp_pon_plat_mac_age_get", std::vector<std::string>{}, consent());
    return show(output, {{{}, {}, &called, {{"ageing"}, {"entries"}}, true, true}});
}

ExitCode run_fdb_flush(const Output &, const FdbFlushOptions &options)
{
    const auto words =
        words_of({{"filter.side", options.side.empty() ? "" : number_of_word("--side", options.side, sides)},
                  {"filter.port", number_word("--port", options.port, UINT16_MAX)},
                  {"filter.llid", number_word("--llid", options.llid, UINT16_MAX)},
                  {"filter.vlan", number_word("--vlan", options.vlan, UINT16_MAX)},
                  {"filter.mac", mac_of(options.mac)}});
    ask_before("bsp_pon_plat_fdb_flush", words.empty() ? "forgetting every address" : "forgetting these addresses");
    return report(Invocation("bsp_pon_plat_fdb_flush", words.empty() ? std::vector<std::string>{"filter=hex:"} : words,
                             consent()));
}

ExitCode run_fdb_set(const Output &, const FdbSetOptions &options)
{
    const auto words = words_of({{"cfg.ageing", number_word("AGEING", options.ageing)},
                                 {"cfg.learning", number_of_word("--learning", options.learning, off_on)},
                                 {"cfg.port_limit", number_word("--port-limit", options.limit)}});
    ask_before("bsp_pon_plat_fdb_cfg_set", "changing how the OLT learns addresses");
    return report(Invocation("bsp_pon_plat_fdb_cfg_set", words, consent()));
}

} // namespace

void add_fdb(Program &program)
{
    Command &fdb = program.tree.add("fdb", "Shows, flushes and configures the forwarding database");

    Command &show = fdb.add("show", "Lists MAC addresses that the OLT has learned");
    FdbOptions &shown = show.runs(run_fdb_show);
    show.argument("PORT", &shown.port, "PON port number, or uplink with --network; all when left out");
    show.option("--network", &shown.network, "the addresses of the network side");
    show.option("--llid", &shown.llid, "those of this LLID", "LLID");
    show.option("--uni", &shown.uni, "those of this UNI port", "N");
    show.option("--vlan", &shown.vlan, "those of this VLAN", "VLAN");
    show.option("--mac", &shown.mac, "this MAC address", "MAC");
    show.option("--from", &shown.from, "how many to pass over", "N");
    show.option("--count", &shown.count, "how many to show then", "N");

    fdb.add("age", "Shows after which time addresses are forgotten, and how many there are").runs(run_fdb_age);

    Command &flush = fdb.add("flush", "Forgets addresses; all of them unless options say which");
    FdbFlushOptions &flushed = flush.runs(run_fdb_flush);
    flush.option("--side", &flushed.side, "those of this side; both when left out", "both|pon|network");
    flush.option("--port", &flushed.port, "those of this PON port, or uplink, of one side", "PORT");
    flush.option("--llid", &flushed.llid, "those of this LLID", "LLID");
    flush.option("--vlan", &flushed.vlan, "those of this VLAN", "VLAN");
    flush.option("--mac", &flushed.mac, "this MAC address", "MAC");

    Command &set = fdb.add("set", "Configures the forwarding database, all of it at once");
    FdbSetOptions &options = set.runs(run_fdb_set);
    set.argument("AGEING", &options.ageing, "seconds after which an address is forgotten; 0 never").is_required();
    set.option("--learning", &options.learning, "whether addresses are learned; on when left out", "on|off");
    set.option("--port-limit", &options.limit, "addresses that a PON port has at most; not limited when left out", "N");
    add_list_options(program, show);
}

} // namespace ponctl
