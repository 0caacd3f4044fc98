#include "control/show.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "model/olt/standing.h"
#include "model/plant/fibre.h"
#include "text/hex.h"
#include "text/json.h"

namespace ponsim
{
namespace
{

constexpr double hundredths = 100;

void add_branches(const PonPort &port, std::vector<Difference> &found)
{
    for (const auto &[branch, loss] : port.damage) {
        Difference difference{.kind = "bent", .pon_port = port.number, .branch = port.branches.at(branch).name};
        if (loss >= cut_loss) {
            difference.kind = "cut";
        } else {
            difference.value = loss / hundredths;
            difference.unit = "dB";
        }
        found.push_back(std::move(difference));
    }
}

void add_module(const Module &module, uint32_t pon_port, std::vector<Difference> &found)
{
    const ModuleRecord &record = module.record();
    const auto add = [&](std::string_view kind, double value, std::string_view unit) {
        found.push_back({.kind = kind, .pon_port = pon_port, .cage = module.cage(), .value = value, .unit = unit});
    };
    if (record.dimmed != 0) add("dimmed", record.dimmed / hundredths, "dB");
    if (record.added_hours != 0) add("aged", record.added_hours, "h");
}

void add_onu(const PonPort &port, const Arrival &arrival, std::vector<Difference> &found)
{
    const OnuRecord record = port.record(arrival.mac);
    const auto add = [&](std::string_view kind, std::optional<double> value = {}, std::string_view unit = {},
                         std::string text = {}) {
        found.push_back({.kind = kind,
                         .pon_port = port.number,
                         .name = arrival.name,
                         .mac = arrival.mac,
                         .value = value,
                         .unit = unit,
                         .text = std::move(text)});
    };
    if (arrival.unplugged) add("leaving");
    if (!record.powered) add("off");
    if (record.rogue) add("rogue");
    if (record.added_hours != 0) add("aged", record.added_hours, "h");
    if (record.load_up) add("load", *record.load_up, "kbit/s", "up");
    if (record.load_down) add("load", *record.load_down, "kbit/s", "down");
    if (record.flood != 0) add("flood", record.flood, "frames/s");
    if (record.bad_image) add("bad-image");
}

void add_gone(const Olt &olt, const PonPort &port, std::vector<Difference> &found)
{
    const auto &plugged = olt.kept<PluggedOnu>();
    std::vector<Arrival> plant;
    for (auto at = plugged.lower_bound({port.number, {}}); at != plugged.end() && at->first.pon_port == port.number;
         ++at) {
        const auto &[key, onu] = *at;
        if (onu.state != Plugged::gone) continue;
        if (plant.empty()) plant = olt.found_at(port.number).arrivals;
        if (std::ranges::count(plant, key.mac, &Arrival::mac) == 0) continue;
        found.push_back({.kind = "gone", .pon_port = port.number, .name = onu.name, .mac = key.mac});
    }
}

void add_unis(const Olt &olt, const PonPort &port, std::vector<Difference> &found)
{
    const auto name_of = [&](const Mac &mac) {
        const Arrival *arrival = port.arrived(mac);
        return arrival ? arrival->name : std::string();
    };
    const auto add = [&](std::string_view kind, const UniKey &key, std::string text = {}) {
        found.push_back({.kind = kind,
                         .pon_port = key.pon_port,
                         .name = name_of(key.mac),
                         .mac = key.mac,
                         .uni = key.uni,
                         .text = std::move(text)});
    };
    const UniKey first{port.number, {}, 0};
    for (auto at = olt.loops().lower_bound(first); at != olt.loops().end() && at->first.pon_port == port.number; ++at) {
        if (at->second.looped) add("looped", at->first);
        if (at->second.shut) add("shut", at->first);
    }
    const auto &devices = olt.kept<PluggedDevice>();
    for (auto at = devices.lower_bound(first); at != devices.end() && at->first.pon_port == port.number; ++at) {
        const PluggedDevice &device = at->second;
        if (device.speed == 0)
            add("unplugged", at->first);
        else
            add("plugged", at->first, to_text(LinkMode{device.speed, device.full_duplex}));
    }
}

std::string number_text(double value)
{
    char text[40];
    snprintf(text, sizeof text, value == std::floor(value) ? "%.0f" : "%.2f", value);
    return text;
}

// Returns where it is, in words.
std::string where(const Difference &difference)
{
    if (!difference.branch.empty()) return "branch " + difference.branch;
    if (difference.cage != 0) return "cage " + std::to_string(difference.cage);
    if (!difference.mac) return "-";
    const std::string onu = difference.name.empty() ? text::mac_text(*difference.mac)
                                                    : difference.name + " (" + text::mac_text(*difference.mac) + ")";
    return onu + (difference.uni == 0 ? "" : ", UNI " + std::to_string(difference.uni));
}

std::string detail(const Difference &difference)
{
    std::string text = difference.text;
    if (difference.value)
        text += (text.empty() ? "" : " ") + number_text(*difference.value) + ' ' + std::string(difference.unit);
    return text;
}

} // namespace

std::vector<Difference> differences_at(const Olt &olt, const Ports &ports)
{
    std::vector<Difference> found;
    for (const PonPort *port : ports) {
        if (known_blinded(olt, *port)) found.push_back({.kind = "blinded", .pon_port = port->number});
        add_branches(*port, found);
        add_module(*olt.module(port->number), port->number, found);
        add_gone(olt, *port, found);
        for (const Arrival &arrival : port->arrivals)
            add_onu(*port, arrival, found);
        add_unis(olt, *port, found);
    }
    return found;
}

std::vector<Difference> differences_of_uplinks(const Olt &olt)
{
    std::vector<Difference> found;
    for (const Module &module : olt.modules())
        if (!olt.port(module.cage())) add_module(module, 0, found);
    return found;
}

std::string to_table(const std::vector<Difference> &differences)
{
    if (differences.empty()) return "nothing differs from a healthy plant\n";
    using Row = std::array<std::string, 4>;
    std::vector<Row> rows{{"PORT", "WHAT", "WHERE", "HOW MUCH"}};
    for (const Difference &each : differences)
        rows.push_back({each.pon_port == 0 ? "-" : std::to_string(each.pon_port), std::string(each.kind), where(each),
                        detail(each)});
    std::array<size_t, std::tuple_size_v<Row>> widths{};
    for (const Row &row : rows)
        for (size_t column = 0; column < row.size(); ++column)
            widths.at(column) = std::max(widths.at(column), row.at(column).size());
    std::string text;
    for (Row &row : rows) {
        std::string line;
        for (size_t column = 0; column < row.size(); ++column) {
            row.at(column).resize(widths.at(column), ' ');
            line += (column == 0 ? "" : "  ") + row.at(column);
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}

std::string to_json(const std::vector<Difference> &differences, ModelTime now)
{
    text::json::Buffer buffer;
    text::json::Writer writer(buffer);
    const auto put = [&](const char *key, std::string_view value) {
        if (value.empty()) return;
        writer.Key(key);
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    const auto put_number = [&](const char *key, uint32_t value) {
        if (value == 0) return;
        writer.Key(key);
        writer.Uint(value);
    };
    writer.StartObject();
    writer.Key("model_time_ms");
    writer.Uint64(now);
    writer.Key("differences");
    writer.StartArray();
    for (const Difference &each : differences) {
        writer.StartObject();
        put("kind", each.kind);
        put_number("pon_port", each.pon_port);
        put("branch", each.branch);
        put("name", each.name);
        if (each.mac) put("mac", text::mac_text(*each.mac));
        put_number("uni", each.uni);
        put_number("cage", each.cage);
        if (each.value) {
            writer.Key("value");
            writer.Double(*each.value);
        }
        put("unit", each.unit);
        put("text", each.text);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

} // namespace ponsim
