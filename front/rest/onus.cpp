// Answers about the ONUs of an OLT: all that are bound, those that wait, and alarms.
#include <map>

#include "rest/answers.h"
#include "web/index.h"

namespace front
{
namespace
{

// Writes a row of values, and the names of its columns.
class CompactRow
{
public:
    explicit CompactRow(Json &to) : json(to) { json->StartArray(); }
    ~CompactRow() { json->EndArray(); }
    CompactRow(const CompactRow &) = delete;
    CompactRow &operator=(const CompactRow &) = delete;

    template <class Value>
    void put(const Value &value)
    {
        json.put(value);
    }
    void put_or_null(std::string_view text) { text.empty() ? json.null() : json.put(text); }

private:
    Json &json;
};

constexpr std::string_view columns[] = {
    "pon_port",         "onu_id",        "mac",          "state",  "since",  "cause",    "place",
    "description",      "loid",          "text_a",       "serial", "vendor", "model",    "software",
    "distance",         "rx_power",      "olt_rx_power", "light",  "alarms", "severity", "upgrade_run",
    "upgrade_progress", "upgrade_reason"};

struct Beside {
    std::map<OnuPlace, const view::onu_optics_table *> optics;
    std::map<OnuPlace, const view::upgrade_base_info *> upgrades;
    std::map<OnuPlace, const view::onu_capabilities *> capabilities;
    std::map<OnuPlace, AlarmCounts> alarms;
};

Beside beside(const Snapshot &snapshot)
{
    Beside found{by_place(snapshot.optics), by_place(snapshot.upgrades), by_place(snapshot.capabilities), {}};
    for (const view::onu_alarm &alarm : rows_of(snapshot.alarms))
        if (alarm.onu_id && alarm.state == "active") found.alarms[{alarm.pon_port, *alarm.onu_id}].add(alarm.severity);
    return found;
}

template <class Row>
const Row *of(const std::map<OnuPlace, const Row *> &rows, const OnuPlace &place)
{
    const auto found = rows.find(place);
    return found == rows.end() ? nullptr : found->second;
}

// Returns the value of a column, or none where there is no row.
template <class Row, class Value>
auto value_of(const Row *row, Value Row::*column)
{
    if constexpr (requires(Value value) { value.has_value(); })
        return row ? row->*column : Value();
    else
        return row ? std::optional(row->*column) : std::nullopt;
}

void write_row(Json &json, const OltState &state, const view::onu_info &onu, const Beside &more)
{
    const OnuPlace place{onu.pon_port, *onu.onu_id};
    const std::string mac = text::mac_text(onu.mac);
    const Fact *const fact = fact_of(state, onu);
    const auto *const optics = of(more.optics, place);
    const auto *const upgrade = of(more.upgrades, place);
    const auto *const able = of(more.capabilities, place);
    const auto alarms = more.alarms.find(place);
    const AlarmCounts counts = alarms == more.alarms.end() ? AlarmCounts() : alarms->second;
    CompactRow row(json);
    row.put(onu.pon_port);
    row.put(*onu.onu_id);
    row.put(mac);
    row.put(onu.state);
    row.put(fact && fact->since > 0 ? std::optional(fact->since) : std::nullopt);
    row.put_or_null(fact ? fact->cause : "");
    row.put_or_null(fact ? fact->place : "");
    row.put(onu.description);
    row.put(onu.loid);
    row.put(onu.text_a);
    row.put_or_null(able ? serial_of(able->vendor, onu.mac) : "");
    row.put(value_of(able, &view::onu_capabilities::vendor));
    row.put(value_of(able, &view::onu_capabilities::model));
    row.put(value_of(upgrade, &view::upgrade_base_info::software));
    row.put(onu.distance);
    row.put(value_of(optics, &view::onu_optics_table::rx_power));
    row.put(value_of(optics, &view::onu_optics_table::olt_rx_power));
    row.put_or_null(light_of(state, onu.pon_port, mac));
    row.put(counts.all());
    row.put_or_null(counts.worst());
    row.put(value_of(upgrade, &view::upgrade_base_info::run));
    row.put(value_of(upgrade, &view::upgrade_base_info::progress));
    row.put(value_of(upgrade, &view::upgrade_base_info::reason));
}

std::string onus_text(const OltState &state, const std::optional<uint64_t> &port)
{
    const Beside more = beside(*state.snapshot);
    Json json;
    json->StartObject();
    json.key("columns");
    json->StartArray();
    for (const std::string_view column : columns)
        json.put(column);
    json->EndArray();
    json.key("rows");
    json->StartArray();
    for (const view::onu_info &onu : rows_of(state.snapshot->onus))
        if (onu.onu_id && (!port || onu.pon_port == *port)) write_row(json, state, onu, more);
    json->EndArray();
    json->EndObject();
    return json.text();
}

} // namespace

HttpResponse answer_onus(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::onus);
    const std::optional<uint64_t> port = context.number("port", UINT32_MAX);
    return versioned(
        context, state.version_of({Table::onus, Table::optics, Table::alarms, Table::upgrades, Table::capabilities}),
        [&] { return onus_text(state, port); });
}

HttpResponse answer_waiting(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::onus);
    return versioned(context, state.version_of({Table::onus}), [&state] {
        Json json;
        json->StartObject();
        json.key("waiting");
        json->StartArray();
        for (const view::onu_info &onu : rows_of(state.snapshot->onus)) {
            if (onu.onu_id) continue;
            json->StartObject();
            json.columns(onu);
            write_since(json, fact_of(state, onu));
            json->EndObject();
        }
        json->EndArray();
        json->EndObject();
        return json.text();
    });
}

HttpResponse answer_alarms(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::alarms);
    return versioned(context, state.version_of({Table::alarms}), [&state] {
        Json json;
        json->StartObject();
        json.key("alarms");
        json->StartArray();
        for (const view::onu_alarm &alarm : rows_of(state.snapshot->alarms))
            write_alarm(json, state, alarm);
        json->EndArray();
        json->EndObject();
        return json.text();
    });
}

} // namespace front
