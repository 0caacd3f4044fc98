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

void add_sla(Command &app)
{
    Command &sla = app.add("sla", "Shows and sets the bandwidth of ONUs");

    Command &show = sla.add("show", "Shows the bandwidth of a port and its ONUs, or of some ONUs");
    SlaOptions &shown = show.runs(run_sla_show);
    show.argument("PORT", &shown.port, port_or_set_help).is_required();
    show.argument("ID", &shown.onu, "ONU ids on the port; when left out, the port and all its ONUs");

    Command &set = sla.add("set", "Sets the bandwidth of ONUs");
    SlaSetOptions &options = set.runs(run_sla_set);
    set.argument("PORT", &options.port, port_or_set_help).is_required();
    set.argument("ID", &options.onu, onu_help);
    set.option("--fixed", &options.fixed, "upstream kbit/s that are granted whether used or not", "KBITS");
    set.option("--assured", &options.assured, "upstream kbit/s that are granted when asked for", "KBITS");
    set.option("--max", &options.maximum, "upstream kbit/s that are never exceeded", "KBITS");
    set.option("--priority", &options.priority, "of what is left: 0 lowest to 7 highest", "N");
    set.option("--weight", &options.weight, "share among those of one priority", "N");
    set.option("--down-max", &options.down, "downstream kbit/s that are never exceeded; 0 is the default again",
               "KBITS");
    set.footer = "What is left out stays as it is.";

    Command &clear = sla.add("clear", "Gives ONUs the default bandwidth again");
    SlaOptions &cleared = clear.runs(run_sla_clear);
    clear.argument("PORT", &cleared.port, port_or_set_help).is_required();
    clear.argument("ID", &cleared.onu, onu_help);
}

void add_p2p(Command &app)
{
    Command &p2p = app.add("p2p", "Shows and sets forwarding between ONUs at the OLT");

    Command &show = p2p.add("show", "Shows P2P forwarding of all ports, or of one with its entries");
    std::string &shown = show.runs(run_p2p_show);
    show.argument("PORT", &shown, "PON port number; all ports when left out");

    add_p2p_set(p2p);
    add_p2p_entry(p2p);

    Command &own = p2p.add("own-port", "Shows or sets the uplink of what P2P forwarding leaves");
    P2pOwnPortOptions &options = own.runs(run_p2p_own_port);
    own.argument("PORT", &options.port, port_help).is_required();
    own.argument("UPLINK", &options.uplink, "GE uplink, or any; shown when left out");
}

void add_fdb(Command &app)
{
    Command &fdb = app.add("fdb", "Shows, flushes and configures the forwarding database");

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
}

} // namespace ponctl
