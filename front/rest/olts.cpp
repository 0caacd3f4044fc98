// Answers about OLTs and their ports.
#include <algorithm>
#include <map>

#include "collector/clock.h"
#include "rest/answers.h"
#include "web/index.h"

namespace front
{
namespace
{

// Counts are those of an OLT, or of one of its ports.
struct Counts {
    uint32_t bound = 0, online = 0, offline = 0, unauthenticated = 0, waiting = 0, low_light = 0;
    AlarmCounts alarms;
};

// Returns the counts of each port; those of port 0 are of the OLT as a whole.
std::map<uint32_t, Counts> counts_of(const OltState &state)
{
    std::map<uint32_t, Counts> counts;
    counts[0];
    for (const view::onu_info &onu : rows_of(state.snapshot->onus)) {
        const bool low = onu.state == "online" && light_of(state, onu.pon_port, text::mac_text(onu.mac)) == "low";
        for (Counts *of : {&counts[0], &counts[onu.pon_port]}) {
            of->bound += onu.onu_id.has_value();
            of->online += onu.state == "online";
            of->offline += onu.state == "offline";
            of->unauthenticated += onu.state == "unauthenticated";
            of->waiting += onu.state == "waiting";
            of->low_light += low;
        }
    }
    for (const view::onu_alarm &alarm : rows_of(state.snapshot->alarms)) {
        if (alarm.state != "active") continue;
        counts[0].alarms.add(alarm.severity);
        if (alarm.pon_port > 0) counts[alarm.pon_port].alarms.add(alarm.severity);
    }
    return counts;
}

void write_olt(Json &json, const OltState &state, const Counts &counts)
{
    const UnixTime since = state.reached_since();
    json.member("name", state.name);
    json.member("reached", state.is_reached());
    json.member("since", since > 0 ? std::optional(since) : std::nullopt);
    const auto rows = rows_of(state.snapshot->olt);
    const view::basic_info *const olt = rows.empty() ? nullptr : rows.data();
    const auto put = [&](const char *name, auto of) {
        json.member(name, olt ? std::optional(olt->*of) : std::nullopt);
    };
    put("model", &view::basic_info::model);
    put("version", &view::basic_info::version);
    put("serial", &view::basic_info::serial);
    put("mac", &view::basic_info::mac);
    put("pon_ports", &view::basic_info::pon_ports);
    put("ge_ports", &view::basic_info::ge_ports);
    put("uptime", &view::basic_info::uptime);
    json.member("bound", counts.bound);
    json.member("online", counts.online);
    json.member("offline", counts.offline);
    json.member("unauthenticated", counts.unauthenticated);
    json.member("waiting", counts.waiting);
    json.key("alarms");
    write(json, counts.alarms);
    json.member("low_light", counts.low_light);
    json.key("versions");
    json->StartObject();
    for (const TableKind &kind : table_kinds())
        json.member(kind.name, state.versions[static_cast<size_t>(kind.table)]);
    json->EndObject();
}

void write_counters(Json &json, const Snapshot &snapshot, uint32_t port)
{
    json.key("counters");
    for (const PortCounters &of : rows_of(snapshot.counters)) {
        if (!of.pon || of.port != port) continue;
        json->StartObject();
        json.member("in_octets", of.in_octets);
        json.member("in_unicast", of.in_unicast);
        json.member("in_multicast", of.in_multicast);
        json.member("in_broadcast", of.in_broadcast);
        json.member("in_errors", of.in_errors);
        json.member("in_discards", of.in_discards);
        json.member("out_octets", of.out_octets);
        json.member("out_unicast", of.out_unicast);
        json.member("out_multicast", of.out_multicast);
        json.member("out_broadcast", of.out_broadcast);
        json.member("out_discards", of.out_discards);
        json.member("read", snapshot.state(Table::counters).read);
        json->EndObject();
        return;
    }
    json.null();
}

// The table of ONUs is read more often than that of ports, and is what the rest is counted in.
view::port_info counted(const OltState &state, view::port_info port, const Counts &counts)
{
    if (!state.snapshot->onus) return port;
    port.bound = counts.bound;
    port.online = counts.online;
    port.waiting = counts.waiting;
    return port;
}

void write_port(Json &json, const OltState &state, const view::port_info &port, const Counts &counts)
{
    json->StartObject();
    json.columns(counted(state, port, counts));
    json.member("offline", counts.offline);
    json.member("unauthenticated", counts.unauthenticated);
    json.member("low_light", counts.low_light);
    json.key("alarms");
    write(json, counts.alarms);
    json.key("module");
    json->StartArray();
    for (const ModuleQuantity &quantity : rows_of(state.snapshot->modules))
        if (quantity.cage == port.pon_port) json.row(quantity.of);
    json->EndArray();
    write_counters(json, *state.snapshot, port.pon_port);
    json->EndObject();
}

void write_ports(Json &json, const OltState &state, std::map<uint32_t, Counts> &counts)
{
    json.key("ports");
    json->StartArray();
    for (const view::port_info &port : rows_of(state.snapshot->ports))
        write_port(json, state, port, counts[port.pon_port]);
    json->EndArray();
}

void write_tables(Json &json, const OltState &state)
{
    json.key("tables");
    json->StartArray();
    for (const TableKind &kind : table_kinds()) {
        const TableState &table = state.snapshot->state(kind.table);
        json->StartObject();
        json.member("name", std::string_view(kind.name));
        json.member("brief", std::string_view(kind.brief));
        json.member("period", table.period);
        json.member("version", state.versions[static_cast<size_t>(kind.table)]);
        json.member("generation", table.generation);
        json.member("read", table.generation > 0 ? std::optional(table.read) : std::nullopt);
        json.member("took", table.took);
        json.member("failures", table.failures);
        json.member("failed", table.failed);
        json.member_or_null("error", table.error);
        json.member("stale", table.stale());
        json.member("outdated", table.outdated(unix_time_now()));
        json->EndObject();
    }
    json->EndArray();
}

constexpr auto port_tables = {Table::ports, Table::onus, Table::alarms, Table::modules, Table::counters, Table::optics};

} // namespace

HttpResponse answer_olts(const Context &context)
{
    const std::vector<OltDoor> olts = context.services.known.olts();
    std::string version;
    for (const OltDoor &olt : olts) {
        version += olt.state->version_of({Table::olt, Table::ports, Table::onus, Table::alarms, Table::loops,
                                          Table::stats, Table::counters, Table::unis, Table::upgrades, Table::optics,
                                          Table::modules, Table::capabilities}) +
                   " ";
    }
    return versioned(context, version, [&olts] {
        Json json;
        json->StartObject();
        json.key("olts");
        json->StartArray();
        for (const OltDoor &olt : olts) {
            json->StartObject();
            write_olt(json, *olt.state, counts_of(*olt.state)[0]);
            json->EndObject();
        }
        json->EndArray();
        json->EndObject();
        return json.text();
    });
}

HttpResponse answer_olt(const Context &context)
{
    const OltState &state = context.state();
    std::map<uint32_t, Counts> counts = counts_of(state);
    Json json;
    json->StartObject();
    write_olt(json, state, counts[0]);
    write_ports(json, state, counts);
    write_tables(json, state);
    json->EndObject();
    return json_response(json.text());
}

HttpResponse answer_ports(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::ports);
    return versioned(context, state.version_of(port_tables), [&state] {
        std::map<uint32_t, Counts> counts = counts_of(state);
        Json json;
        json->StartObject();
        write_ports(json, state, counts);
        json->EndObject();
        return json.text();
    });
}

HttpResponse answer_port(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::ports);
    const uint32_t number = context.place_number("port");
    const auto ports = rows_of(state.snapshot->ports);
    const auto port = std::ranges::find(ports, number, &view::port_info::pon_port);
    if (port == ports.end()) not_found(state.name + ": has no PON port " + std::to_string(number));
    return versioned(context, state.version_of(port_tables), [&] {
        Json json;
        write_port(json, state, *port, counts_of(state)[number]);
        return json.text();
    });
}

} // namespace front
