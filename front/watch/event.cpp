#include "watch/event.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace front
{
namespace
{

struct KindWords {
    std::string_view name;
    std::string_view words;
};
constexpr std::array<KindWords, event_kind_count> kinds{{
    {"olt_lost", "does not answer any more"},
    {"olt_back", "answers again"},
    {"onu_waiting", "waits to be bound"},
    {"onu_online", "is online"},
    {"onu_offline", "is offline"},
    {"onu_refused", "is refused"},
    {"onu_removed", "is gone"},
    {"light_low", "has too little light"},
    {"light_well", "has enough light again"},
    {"rogue_found", "is blinded by a rogue ONU"},
    {"rogue_gone", "is blinded no more"},
    {"loop_found", "has a loop"},
    {"loop_gone", "has no loop any more"},
    {"link_down", "has no link"},
    {"link_up", "has a link again"},
    {"module_alarm", "is out of its limits"},
    {"module_well", "is within its limits again"},
    {"alarm_raised", "has an alarm"},
    {"alarm_cleared", "has an alarm no more"},
    {"upgrade_done", "is upgraded"},
    {"upgrade_failed", "was not upgraded"},
}};

// Returns the words for several subjects: "are offline" for "is offline".
std::string plural_of(std::string_view words)
{
    static constexpr std::pair<std::string_view, std::string_view> verbs[] = {
        {"is ", "are "}, {"has ", "have "}, {"was ", "were "}, {"waits ", "wait "}};
    for (const auto &[one, several] : verbs)
        if (words.starts_with(one)) return std::string(several).append(words.substr(one.size()));
    return std::string(words);
}

std::string subject_of(const Event &event)
{
    const std::string port = std::to_string(event.port);
    if (event.kind == EventKind::module_alarm || event.kind == EventKind::module_well) return "module " + port;
    if (event.count > 1)
        return std::to_string(event.count) + " ONUs of port " + port +
               (event.onus.empty() ? std::string() : " (" + event.onus + ")");
    if (event.onu_id) return "ONU " + port + "/" + std::to_string(*event.onu_id) + " " + event.mac;
    if (!event.mac.empty()) return "ONU " + event.mac + " at port " + port;
    if (event.port > 0) return "port " + port;
    return event.kind == EventKind::link_down || event.kind == EventKind::link_up ? event.place : "the OLT";
}

} // namespace

std::string_view name_of(EventKind kind)
{
    return kinds[static_cast<size_t>(kind)].name;
}

std::optional<EventKind> event_kind(std::string_view name)
{
    const auto found = std::ranges::find(kinds, name, &KindWords::name);
    if (found == kinds.end()) return std::nullopt;
    return static_cast<EventKind>(found - kinds.begin());
}

std::string sentence_of(const Event &event)
{
    const std::string_view words = kinds[static_cast<size_t>(event.kind)].words;
    std::string sentence = event.olt + ": " + subject_of(event) + " ";
    sentence += event.count > 1 ? plural_of(words) : words;
    const bool is_light = event.kind == EventKind::light_low || event.kind == EventKind::light_well;
    char measure[32] = "";
    if (event.measure) std::snprintf(measure, sizeof measure, is_light ? ": %.2f dBm" : ", %.2f", *event.measure);
    if (is_light)
        sentence += measure + std::string(event.detail == "olt" ? " at the OLT" : " at the ONU");
    else
        sentence += (event.detail.empty() ? "" : ": " + event.detail) + measure;
    if (!event.cause.empty()) sentence += ", " + event.cause;
    if (!event.place.empty() && event.kind != EventKind::link_down && event.kind != EventKind::link_up)
        sentence += " at " + event.place;
    return sentence;
}

} // namespace front
