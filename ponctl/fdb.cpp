// ponctl fdb: the OLT's forwarding database.
#include "consent.h"
#include "daily.h"
#include "platform.h"
#include "report.h"
#include "sections.h"

namespace ponctl
{
namespace
{

constexpr std::array<std::string_view, 3> sides{"both", "pon", "network"};

std::string mac_of(const std::string &text)
{
    return text.empty() ? text : format_mac(parse_mac("--mac", text).data());
}

} // namespace

ExitCode run_fdb_show(const Output &output, const FdbOptions &options)
{
    if (options.network && !(options.llid + options.uni).empty())
        throw UsageError("--llid and --uni: there are none on the network side");
    const Called called("bsp_pon_platform_by_db",
                        words_of({{"record.plat_cmd", options.network ? "BSP_CMD_MAC_NNI_GET" : "BSP_CMD_MAC_GET"},
                                  {"record.from", number_word("--from", options.from)},
                                  {"record.count", number_word("--count", options.count)},
                                  {"record.port", number_word("PORT", options.port)},
                                  {"record.llid", number_word("--llid", options.llid)},
                                  {"record.uni", number_word("--uni", options.uni)},
                                  {"record.vlan", number_word("--vlan", options.vlan)},
                                  {"record.mac", mac_of(options.mac)}}));
    const ExitCode code = show(output, {{{}, {}, &called}});
    if (!called.good() || output.format != Format::table) return code;
    // Of a long table the service shows a part.
    const uint32_t shown = called.database() ? db_rows(called.database()) : 0;
    const std::string matching = field_digits(called.answer(), "matching");
    if (matching != std::to_string(shown))
        note(std::to_string(shown) + " of " + matching + " addresses are shown; --from and --count show others");
    return code;
}

ExitCode run_fdb_age(const Output &output)
{
    const Called called("bsp_pon_plat_mac_age_get", std::vector<std::string>{});
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
    return Called("bsp_pon_plat_fdb_flush", words.empty() ? std::vector<std::string>{"filter=hex:"} : words).report();
}

ExitCode run_fdb_set(const Output &, const FdbSetOptions &options)
{
    const auto words = words_of({{"cfg.ageing", number_word("AGEING", options.ageing)},
                                 {"cfg.learning", number_of_word("--learning", options.learning, off_on)},
                                 {"cfg.port_limit", number_word("--port-limit", options.limit)}});
    ask_before("bsp_pon_plat_fdb_cfg_set", "changing how the OLT learns addresses");
    return Called("bsp_pon_plat_fdb_cfg_set", words).report();
}

} // namespace ponctl
