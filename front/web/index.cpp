#include "web/index.h"

#include "text/words.h"

namespace front
{

void AlarmCounts::add(std::string_view severity)
{
    ++(severity == "critical" ? critical : severity == "major" ? major : minor);
}

std::string_view AlarmCounts::worst() const
{
    if (critical > 0) return "critical";
    if (major > 0) return "major";
    return minor > 0 ? "minor" : "";
}

void write(Json &json, const AlarmCounts &counts)
{
    json->StartObject();
    json.member("critical", counts.critical);
    json.member("major", counts.major);
    json.member("minor", counts.minor);
    json->EndObject();
}

std::string serial_of(std::string_view vendor, const view::Mac &mac)
{
    if (vendor.empty()) return {};
    constexpr size_t not_in_serial = 2; // bytes of the address
    return std::string(vendor) + text::upper_case(text::to_hex(std::span(mac).subspan<not_in_serial>()));
}

std::string_view light_of(const OltState &state, uint32_t port, const std::string &mac)
{
    const Fact *const at_olt = state.fact(FactKind::light, port, mac, "olt");
    const Fact *const at_onu = state.fact(FactKind::light, port, mac, "onu");
    if (!at_olt && !at_onu) return "";
    return (at_olt && at_olt->value == "low") || (at_onu && at_onu->value == "low") ? "low" : "well";
}

const Fact *fact_of(const OltState &state, const view::onu_info &onu)
{
    const Fact *const fact = state.fact(FactKind::onu, onu.pon_port, text::mac_text(onu.mac));
    return fact && fact->value == onu.state ? fact : nullptr;
}

void write_since(Json &json, const Fact *fact)
{
    json.member("since", fact && fact->since > 0 ? std::optional(fact->since) : std::nullopt);
}

void write_alarm(Json &json, const OltState &state, const view::onu_alarm &alarm)
{
    const auto fact = state.facts->find(key_of(alarm));
    json->StartObject();
    json.columns(alarm);
    write_since(json, fact == state.facts->end() ? nullptr : &fact->second);
    json->EndObject();
}

} // namespace front
