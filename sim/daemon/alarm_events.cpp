#include "daemon/alarm_events.h"

#include <cinttypes>
#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "model/alarm/alarms.h"
#include "model/base/text.h"
#include "text/json.h"

namespace ponsim
{
namespace
{

using text::json::Writer;

void put(Writer &writer, std::string_view text)
{
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// Writes null for an empty text.
void put(Writer &writer, const char *key, std::string_view text)
{
    writer.Key(key);
    if (text.empty())
        writer.Null();
    else
        put(writer, text);
}

template <class Members>
std::string line_of(uint64_t number, Members members)
{
    text::json::Buffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("number");
    writer.Uint64(number);
    members(writer);
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

std::string line_of(const Olt &olt, uint64_t number, const AlarmEvent &event)
{
    return line_of(number, [&](Writer &writer) {
        const AlarmKey &key = event.alarm;
        writer.Key("at");
        writer.Uint64(event.at);
        writer.Key("pon_port");
        writer.Uint(key.pon_port);
        writer.Key("onu_id");
        if (event.onu_id)
            writer.Uint(*event.onu_id);
        else
            writer.Null();
        put(writer, "mac", is_zero(key.mac) ? std::string() : text::mac_text(key.mac));
        put(writer, "alarm", name_of(Alarm{key.alarm}));
        put(writer, "severity", severity_of(Alarm{key.alarm}));
        put(writer, "state", state_of(event.active));
        put(writer, "cause", name_of(event.reason.cause));
        put(writer, "place", place_of(olt, key, event.reason));
    });
}

std::string note(uint64_t number, const char *what, uint64_t count)
{
    return line_of(number, [&](Writer &writer) {
        writer.Key(what);
        writer.Uint64(count);
    });
}

} // namespace

std::string events_after(const Olt &olt, uint64_t number, size_t most)
{
    const auto &history = olt.kept<AlarmEvent>();
    const uint64_t last = history.empty() ? 0 : history.rbegin()->first;
    if (number > last) return note(0, "restarted", last);
    auto at = history.upper_bound(number);
    if (at == history.end()) return {};
    std::string text;
    if (at->first > number + 1) text = note(at->first - 1, "missed", at->first - 1 - number);
    for (; at != history.end(); ++at) {
        const std::string line = line_of(olt, at->first, at->second);
        if (text.size() + line.size() > most) break;
        text += line;
    }
    return text;
}

std::string first_events(const Olt &olt, size_t most)
{
    const auto &history = olt.kept<AlarmEvent>();
    return history.empty() ? std::string() : events_after(olt, history.begin()->first - 1, most);
}

uint64_t number_of(const std::string &line)
{
    uint64_t number = 0;
    if (std::sscanf(line.c_str(), "{\"number\":%" SCNu64, &number) != 1)
        throw std::runtime_error("an event without a number: " + line);
    return number;
}

} // namespace ponsim
