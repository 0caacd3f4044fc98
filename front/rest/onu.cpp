// Answers about one ONU.
#include <algorithm>

#include "rest/answers.h"
#include "web/event_json.h"
#include "web/index.h"

namespace front
{
namespace
{

constexpr size_t most_events = 50;

const view::onu_info &onu_of(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::onus);
    const OnuPlace place{context.place_number("port"), context.place_number("id")};
    if (const view::onu_info *const onu = row_of(state.snapshot->onus, place)) return *onu;
    not_found(state.name + ": has no ONU " + std::to_string(place.first) + "/" + std::to_string(place.second));
}

template <class Row>
void write_row_of(Json &json, const char *name, const std::shared_ptr<const Rows<Row>> &table, const OnuPlace &place)
{
    json.key(name);
    const Row *const row = row_of(table, place);
    row ? json.row(*row) : json.null();
}

template <class Row>
void write_rows_of(Json &json, const char *name, const std::shared_ptr<const Rows<Row>> &table, const OnuPlace &place)
{
    json.key(name);
    json->StartArray();
    for (const Row &row : rows_of(table))
        if (row.pon_port == place.first && row.onu_id == place.second) json.row(row);
    json->EndArray();
}

void write_limits(Json &json, const char *who, const LightLimits &limits)
{
    json.key(who);
    json->StartObject();
    json.member("low", limits.low);
    json.member("well", limits.well);
    json->EndObject();
}

void write_light(Json &json, const OltState &state, uint32_t port, const std::string &mac)
{
    json.key("light");
    json->StartObject();
    json.key("limits");
    json->StartObject();
    write_limits(json, "olt", state.limits.olt);
    write_limits(json, "onu", state.limits.onu);
    json->EndObject();
    for (const char *who : {"olt", "onu"}) {
        const Fact *const fact = state.fact(FactKind::light, port, mac, who);
        json.member_or_null(who, fact ? fact->value : "");
    }
    json->EndObject();
}

void write_alarms(Json &json, const OltState &state, const OnuPlace &place)
{
    json.key("alarms");
    json->StartArray();
    for (const view::onu_alarm &alarm : rows_of(state.snapshot->alarms)) {
        if (alarm.pon_port == place.first && alarm.onu_id == place.second) write_alarm(json, state, alarm);
    }
    json->EndArray();
}

// Addresses that were learned behind the ONU, in the order of its UNI ports.
void write_stations(Json &json, const Snapshot &snapshot, const OnuPlace &place)
{
    std::vector<const Station *> stations;
    for (const Station &station : rows_of(snapshot.stations))
        if (station.pon && station.port == place.first && station.onu_id == place.second) stations.push_back(&station);
    std::ranges::stable_sort(stations, {}, [](const Station *station) { return station->uni; });
    json.key("stations");
    json->StartArray();
    for (const Station *station : stations) {
        json->StartObject();
        json.member("uni", station->uni);
        json.member("vlan", station->vlan);
        json.member("mac", station->mac);
        json->EndObject();
    }
    json->EndArray();
}

void write_times(Json &json, const Snapshot &snapshot)
{
    json.key("read");
    json->StartObject();
    for (const Table table : {Table::onus, Table::optics, Table::stats, Table::unis, Table::upgrades,
                              Table::capabilities, Table::alarms, Table::loops, Table::stations}) {
        const TableState &state = snapshot.state(table);
        json.member(table_kinds()[static_cast<size_t>(table)].name,
                    state.generation > 0 ? std::optional(state.read) : std::nullopt);
    }
    json->EndObject();
}

} // namespace

HttpResponse answer_onu(const Context &context)
{
    const OltState &state = context.state();
    const Snapshot &snapshot = *state.snapshot;
    const view::onu_info &onu = onu_of(context);
    const OnuPlace place{onu.pon_port, *onu.onu_id};
    const std::string mac = text::mac_text(onu.mac);
    const auto *const able = row_of(snapshot.capabilities, place);
    const Fact *const fact = fact_of(state, onu);
    Json json;
    json->StartObject();
    json.member("olt", state.name);
    json.key("onu");
    json.row(onu);
    json.member_or_null("serial", able ? serial_of(able->vendor, onu.mac) : "");
    write_since(json, fact);
    json.member_or_null("cause", fact ? fact->cause : "");
    json.member_or_null("place", fact ? fact->place : "");
    write_row_of(json, "optics", snapshot.optics, place);
    write_light(json, state, onu.pon_port, mac);
    write_row_of(json, "capabilities", snapshot.capabilities, place);
    write_row_of(json, "upgrade", snapshot.upgrades, place);
    write_row_of(json, "stats", snapshot.stats, place);
    write_rows_of(json, "unis", snapshot.unis, place);
    write_rows_of(json, "loops", snapshot.loops, place);
    write_stations(json, snapshot, place);
    write_alarms(json, state, place);
    json.key("events");
    write_events(json, context.services.known.events()->find(
                           {.olt = state.name, .port = place.first, .mac = mac, .onu_id = place.second}, most_events));
    write_times(json, snapshot);
    json->EndObject();
    return json_response(json.text());
}

HttpResponse answer_light(const Context &context)
{
    const view::onu_info &onu = onu_of(context);
    const auto from = context.number("from", INT64_MAX), to = context.number("to", INT64_MAX);
    const std::vector<LightSample> samples = context.services.known.events()->light_of(
        context.state().name, onu.pon_port, onu.mac, static_cast<UnixTime>(from.value_or(0)),
        static_cast<UnixTime>(to.value_or(INT64_MAX)));
    Json json;
    json->StartObject();
    json.member("mac", onu.mac);
    json.key("columns");
    json->StartArray();
    for (const std::string_view column : {"at", "rx_power", "olt_rx_power", "tx_power", "temperature"})
        json.put(column);
    json->EndArray();
    json.key("rows");
    json->StartArray();
    for (const LightSample &sample : samples) {
        json->StartArray();
        json.put(sample.at);
        for (const auto &value : sample.values)
            json.put(value);
        json->EndArray();
    }
    json->EndArray();
    json->EndObject();
    return json_response(json.text());
}

} // namespace front
