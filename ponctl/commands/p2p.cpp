// ponctl p2p controls forwarding between ONUs at the OLT.
#include <array>
#include <deque>
#include <utility>

#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/operand_help.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/delivered.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

struct P2pSwitchOptions {
    std::string port; // 0: all ports
    std::string state, onu;
    std::string rest, rate, vlans, broadcast, multicast; // those that are left out do not change
};

struct P2pEntryOptions {
    std::string port, entry, action;
    std::string from_onu, to_port, to_onu, rate, vlan, ethertype;
};

struct P2pOwnPortOptions {
    std::string port, uplink;
};

// This id stands for the port itself, and for any ONU.
constexpr const char *no_onu = "128";
constexpr uint32_t greatest_vlan = 4094;

constexpr std::array<std::string_view, 2> drop_forward{"drop", "forward"};
constexpr std::array<std::string_view, 3> actions{"remove", "forward", "drop"};

std::string onu_or_any(const char *name, const std::string &text)
{
    return text.empty() ? no_onu : std::to_string(parse_number(name, text, max_onu_id));
}

// Asks for everything that the service knows of P2P forwarding of a port: the answer, and the entries as rows.
Invocation ask_for_port(const std::string &port, call::Permission &permission)
{
    return {"bsp_pon_platform_by_db",
            words_of({{"record.plat_cmd", "BSP_CMD_P2P_OWN_PORT_GET"}, {"record.plat_port", port}}), permission};
}

struct Vlans {
    std::string first, last;
};

// Reads FIRST-LAST, one VLAN, or all.
Vlans parse_vlans(const std::string &text)
{
    if (text == "all") return {"0", "0"};
    const size_t dash = text.find('-');
    const std::string first = text.substr(0, dash), last = dash == text.npos ? first : text.substr(dash + 1);
    return {std::to_string(parse_number("--vlans", first, greatest_vlan)),
            std::to_string(parse_number("--vlans", last, greatest_vlan))};
}

// Changes the given parts of a port's configuration, and keeps the rest as it is.
ExitCode configure(const P2pSwitchOptions &options, const std::string &port)
{
    const Invocation current = ask_for_port(port, looking());
    if (!current.good()) return report(current);
    const Reading now = current.answer();
    const auto kept_or_word = [&now](const char *field, const char *name, const std::string &word, Words words) {
        return word.empty() ? field_digits(now, field) : number_of_word(name, word, words);
    };
    const Vlans vlans = options.vlans.empty() ? Vlans{field_digits(now, "first_vlan"), field_digits(now, "last_vlan")}
                                              : parse_vlans(options.vlans);
    return report(
        Invocation("bsp_p2p_cfg_set",
                   words_of({{"pon_port", port},
                             {"arg108", kept_or_word("rest", "--rest", options.rest, drop_forward)},
                             {"cfg.rate", options.rate.empty() ? field_digits(now, "rate") : options.rate},
                             {"cfg.first_vlan", vlans.first},
                             {"cfg.last_vlan", vlans.last},
                             {"cfg.broadcast", kept_or_word("broadcast", "--broadcast", options.broadcast, off_on)},
                             {"cfg.multicast", kept_or_word("multicast", "--multicast", options.multicast, off_on)}}),
                   consent()));
}

ExitCode run_p2p_show(const Output &output, const std::string &port)
{
    if (port.empty()) return run_list(output, "bsp_pon_get_p2p_state", {});
    const Invocation called = ask_for_port(port_of(port), consent());
    if (!called.good()) return report(called);
    const std::vector<FieldStyle> styles{{"on", "state"}, {"onu_set", "onus"}, {"rest"},      {"own_port"}, {"rate"},
                                         {"first_vlan"},  {"last_vlan"},       {"broadcast"}, {"multicast"}};
    return show(output, {{"port", "Port", &called, styles, true, true}, {"entries", "Entries", &called}});
}

ExitCode run_p2p_set(const Output &output, const P2pSwitchOptions &options)
{
    const std::string port = port_of(options.port);
    const bool configured =
        !(options.rest + options.rate + options.vlans + options.broadcast + options.multicast).empty();
    if (options.state.empty() && !configured)
        throw UsageError("nothing to set; give on or off, or one of --rest, --rate, --vlans, --broadcast and "
                         "--multicast");
    if (options.state.empty() && !options.onu.empty()) throw UsageError("--onu: goes with on or off alone");
    if (configured && port == "0") throw UsageError("PORT: 0 stands for all ports, which only on and off are for");
    // All errors are found before the user is asked.
    const IdSet onus = parse_idset("--onu", options.onu);
    const std::string state = options.state.empty() ? "" : number_of_word("STATE", options.state, off_on);
    if (!options.rest.empty()) number_of_word("--rest", options.rest, drop_forward);
    number_word("--rate", options.rate);
    if (!options.vlans.empty()) parse_vlans(options.vlans);
    for (const auto &[name, word] : {std::pair{"--broadcast", options.broadcast}, {"--multicast", options.multicast}})
        if (!word.empty()) number_of_word(name, word, off_on);
    ask_before("bsp_p2p_state_set",
               "changing which ONUs of " + (port == "0" ? "all ports" : "port " + port) + " reach each other");
    if (configured)
        if (const ExitCode code = configure(options, port); code != exit_success) return code;
    if (state.empty()) return exit_success;
    const auto words = [&](const std::string &onu) {
        return words_of({{"first", port}, {"second", onu}, {"state", state}});
    };
    if (options.onu.empty()) return report(Invocation("bsp_p2p_state_set", words(no_onu), consent()));
    return for_each_onu(
        {parse_number("PORT", port), onus},
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            calls.emplace_back("bsp_p2p_state_set", words(std::to_string(onu.id)), consent());
        },
        statuses_on(output));
}

ExitCode run_p2p_entry(const Output &, const P2pEntryOptions &options)
{
    const std::string port = port_of(options.port);
    const std::string action = number_of_word("ACTION", options.action, actions);
    if (!options.vlan.empty() && !options.ethertype.empty())
        throw UsageError("--vlan and --ethertype: an entry matches one of them, or all traffic");
    if (action == "1" && options.to_port.empty())
        throw UsageError("--to-port: missing; give the PON port that the frames go to");
    const std::string traffic = !options.vlan.empty() ? number_word("--vlan", options.vlan, greatest_vlan)
                                                      : number_word("--ethertype", options.ethertype, UINT16_MAX);
    const std::vector<std::string> words = words_of(
        {{"pon_port", port},
         {"arg108", traffic.empty() ? "0" : traffic},
         {"arg104", number_word("ENTRY", options.entry)},
         {"entry.action", action},
         {"entry.from_onu", onu_or_any("--from-onu", options.from_onu)},
         {"entry.to_port", options.to_port.empty() ? port : number_word("--to-port", options.to_port, UINT16_MAX)},
         {"entry.to_onu", onu_or_any("--to-onu", options.to_onu)},
         {"entry.rate", number_word("--rate", options.rate)}});
    ask_before("bsp_p2p_entry_set", "changing which ONUs of port " + port + " reach others");
    return report(Invocation("bsp_p2p_entry_set", words, consent()));
}

ExitCode run_p2p_own_port(const Output &output, const P2pOwnPortOptions &options)
{
    const std::string port = port_of(options.port);
    if (options.uplink.empty()) {
        const Invocation called("bsp_onu_p2p_own_port_get", words_of({{"pon_port", port}}), consent());
        return show(output, {{{}, {}, &called, {{"own_port"}}, true, true}});
    }
    const std::string uplink = options.uplink == "any" ? "0" : options.uplink;
    if (!is_number(uplink)) throw UsageError("UPLINK: '" + uplink + "' is not the number of a GE uplink, or any");
    parse_number("UPLINK", uplink);
    ask_before("bsp_onu_p2p_own_port_set", "changing by which uplink traffic of port " + port + " goes");
    return report(Invocation("bsp_onu_p2p_own_port_set", words_of({{"pon_port", port}, {"value", uplink}}), consent()));
}

void add_p2p_set(Command &p2p)
{
    Command &set = p2p.add("set", "Switches forwarding between the ONUs of a port, and configures it");
    P2pSwitchOptions &options = set.runs(run_p2p_set);
    set.argument("PORT", &options.port, "PON port number; 0 all ports").is_required();
    set.argument("STATE", &options.state, "on or off; as it is when left out", "on|off");
    set.option("--onu", &options.onu, "ONU ids that on or off is for, as 5 or 3-17,20; the port itself when left out",
               "IDS");
    set.option("--rest", &options.rest, "what becomes of frames that no entry concerns", "drop|forward");
    set.option("--rate", &options.rate, "kbit/s of all frames between ONUs together; 0 not limited", "KBITS");
    set.option("--vlans", &options.vlans, "VLANs that are forwarded: FIRST-LAST, one, or all", "VLANS");
    set.option("--broadcast", &options.broadcast, "whether broadcast frames are forwarded", "on|off");
    set.option("--multicast", &options.multicast, "whether multicast frames are forwarded", "on|off");
    set.footer = "What is left out stays as it is.";
}

void add_p2p_entry(Command &p2p)
{
    Command &entry = p2p.add("entry", "Sets or removes a forwarding entry of a port");
    P2pEntryOptions &options = entry.runs(run_p2p_entry);
    entry.argument("PORT", &options.port, port_help).is_required();
    entry.argument("ENTRY", &options.entry, "number of the entry; the lowest that matches decides").is_required();
    entry.argument("ACTION", &options.action, "forward, drop or remove", "forward|drop|remove").is_required();
    entry.option("--from-onu", &options.from_onu, "ONU id that the frames come from; any when left out", "ID");
    entry.option("--to-port", &options.to_port, "PON port that they go to; to be given with forward", "PORT");
    entry.option("--to-onu", &options.to_onu, "ONU id there; any when left out", "ID");
    entry.option("--rate", &options.rate, "kbit/s; not limited when left out", "KBITS");
    entry.option("--vlan", &options.vlan, "VLAN that the frames have; all traffic when left out", "VLAN");
    entry.option("--ethertype", &options.ethertype, "in place of --vlan: the ethertype that they have", "N");
}

} // namespace

void add_p2p(Program &program)
{
    Command &p2p = program.tree.add("p2p", "Shows and sets forwarding between ONUs at the OLT");

    Command &show = p2p.add("show", "Shows P2P forwarding of all ports, or of one with its entries");
    std::string &shown = show.runs(run_p2p_show);
    show.argument("PORT", &shown, "PON port number; all ports when left out");

    add_p2p_set(p2p);
    add_p2p_entry(p2p);

    Command &own = p2p.add("own-port", "Shows or sets the uplink of what P2P forwarding leaves");
    P2pOwnPortOptions &options = own.runs(run_p2p_own_port);
    own.argument("PORT", &options.port, port_help).is_required();
    own.argument("UPLINK", &options.uplink, "GE uplink, or any; shown when left out");
    add_list_options(program, show);
}

} // namespace ponctl
