// ponctl sla, p2p and fdb.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{
namespace
{

constexpr const char *port_help = "PON port number";
constexpr const char *port_or_set_help = "PON port number; or with the ids of its ONUs, as 1/3-17,20 or 1/all";
constexpr const char *onu_help = "ONU ids on the port, as 5 or 3-17,20, unless PORT has them";

void add_p2p_set(CLI::App &p2p, Command &command)
{
    CLI::App *set = p2p.add_subcommand("set", "Switches forwarding between the ONUs of a port, and configures it");
    auto options = std::make_shared<P2pSwitchOptions>();
    set->add_option("PORT", options->port, "PON port number; 0 all ports")->required();
    set->add_option("STATE", options->state, "on or off; as it is when left out")->type_name("on|off");
    set->add_option("--onu", options->onu,
                    "ONU ids that on or off is for, as 5 or 3-17,20; the port itself when left out")
        ->type_name("IDS");
    set->add_option("--rest", options->rest, "what becomes of frames that no entry concerns")
        ->type_name("drop|forward");
    set->add_option("--rate", options->rate, "kbit/s of all frames between ONUs together; 0 not limited")
        ->type_name("KBITS");
    set->add_option("--vlans", options->vlans, "VLANs that are forwarded: FIRST-LAST, one, or all")->type_name("VLANS");
    set->add_option("--broadcast", options->broadcast, "whether broadcast frames are forwarded")->type_name("on|off");
    set->add_option("--multicast", options->multicast, "whether multicast frames are forwarded")->type_name("on|off");
    set->footer("What is left out stays as it is.");
    runs(set, command, options, run_p2p_set);
}

void add_p2p_entry(CLI::App &p2p, Command &command)
{
    CLI::App *entry = p2p.add_subcommand("entry", "Sets or removes a forwarding entry of a port");
    auto options = std::make_shared<P2pEntryOptions>();
    entry->add_option("PORT", options->port, port_help)->required();
    entry->add_option("ENTRY", options->entry, "number of the entry; the lowest that matches decides")->required();
    entry->add_option("ACTION", options->action, "forward, drop or remove")
        ->required()
        ->type_name("forward|drop|remove");
    entry->add_option("--from-onu", options->from_onu, "ONU id that the frames come from; any when left out")
        ->type_name("ID");
    entry->add_option("--to-port", options->to_port, "PON port that they go to; to be given with forward")
        ->type_name("PORT");
    entry->add_option("--to-onu", options->to_onu, "ONU id there; any when left out")->type_name("ID");
    entry->add_option("--rate", options->rate, "kbit/s; not limited when left out")->type_name("KBITS");
    entry->add_option("--vlan", options->vlan, "VLAN that the frames have; all traffic when left out")
        ->type_name("VLAN");
    entry->add_option("--ethertype", options->ethertype, "in place of --vlan: the ethertype that they have")
        ->type_name("N");
    runs(entry, command, options, run_p2p_entry);
}

} // namespace

void add_sla(CLI::App &app, Command &command)
{
    CLI::App *sla = app.add_subcommand("sla", "Shows and sets the bandwidth of ONUs");
    sla->require_subcommand(1);

    CLI::App *show = sla->add_subcommand("show", "Shows the bandwidth of a port and its ONUs, or of some ONUs");
    auto shown = std::make_shared<SlaOptions>();
    show->add_option("PORT", shown->port, port_or_set_help)->required();
    show->add_option("ID", shown->onu, "ONU ids on the port; when left out, the port and all its ONUs");
    runs(show, command, shown, run_sla_show);

    CLI::App *set = sla->add_subcommand("set", "Sets the bandwidth of ONUs");
    auto options = std::make_shared<SlaSetOptions>();
    set->add_option("PORT", options->port, port_or_set_help)->required();
    set->add_option("ID", options->onu, onu_help);
    set->add_option("--fixed", options->fixed, "upstream kbit/s that are granted whether used or not")
        ->type_name("KBITS");
    set->add_option("--assured", options->assured, "upstream kbit/s that are granted when asked for")
        ->type_name("KBITS");
    set->add_option("--max", options->maximum, "upstream kbit/s that are never exceeded")->type_name("KBITS");
    set->add_option("--priority", options->priority, "of what is left: 0 lowest to 7 highest")->type_name("N");
    set->add_option("--weight", options->weight, "share among those of one priority")->type_name("N");
    set->add_option("--down-max", options->down, "downstream kbit/s that are never exceeded; 0 is the default again")
        ->type_name("KBITS");
    set->footer("What is left out stays as it is.");
    runs(set, command, options, run_sla_set);

    CLI::App *clear = sla->add_subcommand("clear", "Gives ONUs the default bandwidth again");
    auto cleared = std::make_shared<SlaOptions>();
    clear->add_option("PORT", cleared->port, port_or_set_help)->required();
    clear->add_option("ID", cleared->onu, onu_help);
    runs(clear, command, cleared, run_sla_clear);
}

void add_p2p(CLI::App &app, Command &command)
{
    CLI::App *p2p = app.add_subcommand("p2p", "Shows and sets forwarding between ONUs at the OLT");
    p2p->require_subcommand(1);

    CLI::App *show = p2p->add_subcommand("show", "Shows P2P forwarding of all ports, or of one with its entries");
    auto shown = std::make_shared<std::string>();
    show->add_option("PORT", *shown, "PON port number; all ports when left out");
    runs(show, command, shown, run_p2p_show);

    add_p2p_set(*p2p, command);
    add_p2p_entry(*p2p, command);

    CLI::App *own = p2p->add_subcommand("own-port", "Shows or sets the uplink of what P2P forwarding leaves");
    auto options = std::make_shared<P2pOwnPortOptions>();
    own->add_option("PORT", options->port, port_help)->required();
    own->add_option("UPLINK", options->uplink, "GE uplink, or any; shown when left out");
    runs(own, command, options, run_p2p_own_port);
}

void add_fdb(CLI::App &app, Command &command)
{
    CLI::App *fdb = app.add_subcommand("fdb", "Shows, flushes and configures the forwarding database");
    fdb->require_subcommand(1);

    CLI::App *show = fdb->add_subcommand("show", "Lists MAC addresses that the OLT has learned");
    auto shown = std::make_shared<FdbOptions>();
    show->add_option("PORT", shown->port, "PON port number, or uplink with --network; all when left out");
    show->add_flag("--network", shown->network, "the addresses of the network side");
    show->add_option("--llid", shown->llid, "those of this LLID")->type_name("LLID");
    show->add_option("--uni", shown->uni, "those of this UNI port")->type_name("N");
    show->add_option("--vlan", shown->vlan, "those of this VLAN")->type_name("VLAN");
    show->add_option("--mac", shown->mac, "this MAC address")->type_name("MAC");
    show->add_option("--from", shown->from, "how many to pass over")->type_name("N");
    show->add_option("--count", shown->count, "how many to show then")->type_name("N");
    runs(show, command, shown, run_fdb_show);

    fdb->add_subcommand("age", "Shows after which time addresses are forgotten, and how many there are")
        ->callback([&command] { command = run_fdb_age; });

    CLI::App *flush = fdb->add_subcommand("flush", "Forgets addresses; all of them unless options say which");
    auto flushed = std::make_shared<FdbFlushOptions>();
    flush->add_option("--side", flushed->side, "those of this side; both when left out")->type_name("both|pon|network");
    flush->add_option("--port", flushed->port, "those of this PON port, or uplink, of one side")->type_name("PORT");
    flush->add_option("--llid", flushed->llid, "those of this LLID")->type_name("LLID");
    flush->add_option("--vlan", flushed->vlan, "those of this VLAN")->type_name("VLAN");
    flush->add_option("--mac", flushed->mac, "this MAC address")->type_name("MAC");
    runs(flush, command, flushed, run_fdb_flush);

    CLI::App *set = fdb->add_subcommand("set", "Configures the forwarding database, all of it at once");
    auto options = std::make_shared<FdbSetOptions>();
    set->add_option("AGEING", options->ageing, "seconds after which an address is forgotten; 0 never")->required();
    set->add_option("--learning", options->learning, "whether addresses are learned; on when left out")
        ->type_name("on|off");
    set->add_option("--port-limit", options->limit, "addresses that a PON port has at most; not limited when left out")
        ->type_name("N");
    runs(set, command, options, run_fdb_set);
}

} // namespace ponctl
