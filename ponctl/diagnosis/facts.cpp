#include "diagnosis/facts.h"

#include <array>
#include <cstdio>

namespace ponctl
{
namespace
{

std::optional<int64_t> whole(const db_handle *database, uint32_t row, const char *column)
{
    int64_t number = 0;
    if (db_get_integer(database, row, column, &number) || number < 0) return std::nullopt;
    return number;
}

std::optional<MilliTime> time_of(const db_handle *database, uint32_t row, const char *column)
{
    const std::optional<int64_t> number = whole(database, row, column);
    return number ? std::optional(static_cast<MilliTime>(*number)) : std::nullopt;
}

std::optional<uint32_t> number_of(const db_handle *database, uint32_t row, const char *column)
{
    const std::optional<int64_t> number = whole(database, row, column);
    return number && *number <= UINT32_MAX ? std::optional(static_cast<uint32_t>(*number)) : std::nullopt;
}

std::optional<double> real_of(const db_handle *database, uint32_t row, const char *column)
{
    double number = 0;
    return db_get_real(database, row, column, &number) ? std::nullopt : std::optional(number);
}

// A Unit is a unit of time.
struct Unit {
    const char *name;
    MilliTime milliseconds;
};

constexpr std::array<Unit, 4> units{{{"d", 86400000}, {"h", 3600000}, {"min", 60000}, {"s", 1000}}};

} // namespace

std::string OnuFact::name() const
{
    return std::to_string(port) + "/" + (id ? std::to_string(*id) : mac);
}

std::string AlarmFact::subject() const
{
    if (onu_id) return std::to_string(port) + "/" + std::to_string(*onu_id);
    if (!mac.empty()) return std::to_string(port) + "/" + mac;
    return port == 0 ? "OLT" : "port " + std::to_string(port);
}

std::string AlarmFact::reason() const
{
    if (cause.empty() || cause == "unknown") return place;
    return cause + (place.empty() ? "" : " at " + place);
}

std::vector<OnuFact> read_onus(const db_handle *database)
{
    std::vector<OnuFact> onus;
    for (uint32_t row = 0; row < db_rows(database); ++row) {
        int supported = 1;
        db_get_bool(database, row, "supported", &supported);
        onus.push_back({number_of(database, row, "pon_port").value_or(0), number_of(database, row, "onu_id"),
                        cell_text(database, row, "mac"), cell_text(database, row, "state"),
                        cell_text(database, row, "description"), cell_text(database, row, "loid"), supported != 0});
    }
    return onus;
}

std::vector<AlarmFact> read_alarms(const db_handle *database)
{
    std::vector<AlarmFact> alarms;
    for (uint32_t row = 0; row < db_rows(database); ++row)
        alarms.push_back({number_of(database, row, "pon_port").value_or(0), number_of(database, row, "onu_id"),
                          cell_text(database, row, "mac"), cell_text(database, row, "name"),
                          cell_text(database, row, "severity"), cell_text(database, row, "cause"),
                          cell_text(database, row, "place"), cell_text(database, row, "state") == "active",
                          time_of(database, row, "raised"), time_of(database, row, "cleared")});
    return alarms;
}

std::vector<LightFact> read_light(const db_handle *database)
{
    std::vector<LightFact> light;
    for (uint32_t row = 0; row < db_rows(database); ++row) {
        const auto port = number_of(database, row, "pon_port"), id = number_of(database, row, "onu_id");
        if (port && id)
            light.push_back({*port, *id, real_of(database, row, "olt_rx_power"), real_of(database, row, "rx_power")});
    }
    return light;
}

std::optional<LightLimits> read_limits(const db_handle *database)
{
    for (uint32_t row = 0; row < db_rows(database); ++row) {
        if (cell_text(database, row, "quantity") != "received power") continue;
        const auto lost = real_of(database, row, "low_alarm"), weak = real_of(database, row, "low_warning"),
                   strong = real_of(database, row, "high_alarm");
        if (lost && weak && strong) return LightLimits{*weak, *lost, *strong};
    }
    return std::nullopt;
}

std::string cell_text(const db_handle *database, uint32_t row, const char *column)
{
    const char *text = db_get_text(database, row, column);
    return text ? text : "";
}

std::string span_text(MilliTime span)
{
    if (span < 10000) {
        char text[32];
        std::snprintf(text, sizeof text, "%.1f s", static_cast<double>(span) / 1000);
        return text;
    }
    for (size_t index = 0; index < units.size(); ++index) {
        const auto [name, size] = units[index];
        if (span < size) continue;
        std::string text = std::to_string(span / size) + " " + name;
        if (index + 1 == units.size()) return text;
        if (const MilliTime rest = span % size / units[index + 1].milliseconds)
            text += " " + std::to_string(rest) + " " + units[index + 1].name;
        return text;
    }
    return {};
}

std::string ago_text(std::optional<MilliTime> now, std::optional<MilliTime> then)
{
    if (!now || !then) return "-";
    return span_text(*now > *then ? *now - *then : 0) + " ago";
}

std::string decibel_text(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

void write_member(JsonText &json, std::string_view key, const std::optional<MilliTime> &value)
{
    if (!value) return json.null(key);
    json.key(key);
    json->Uint64(*value);
}

void write_member(JsonText &json, std::string_view key, const std::optional<double> &value)
{
    if (!value) return json.null(key);
    json.key(key);
    json.number(decibel_text(*value));
}

void write_alarm(JsonText &json, const AlarmFact &alarm)
{
    json->StartObject();
    json.member("subject", alarm.subject());
    json.member("alarm", alarm.name);
    json.member("severity", alarm.severity);
    json.member("state", alarm.active ? "active" : "cleared");
    write_member(json, "raised", alarm.raised);
    write_member(json, "cleared", alarm.cleared);
    json.member_or_null("cause", alarm.cause);
    json.member_or_null("place", alarm.place);
    json->EndObject();
}

} // namespace ponctl
