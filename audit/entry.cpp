#include "audit/entry.h"

#include <chrono>
#include <ctime>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "call/codec/decode.h"
#include "call/exchange.h"
#include "text/utf8.h"

namespace audit
{
namespace
{

using catalogue::FieldType;

class Line
{
public:
    explicit Line(uint64_t time) : writer(buffer)
    {
        writer.StartObject();
        put("time", text_of(time));
    }

    void put(std::string_view key, std::string_view value)
    {
        name(key);
        writer.String(value.data(), size_of(value));
    }
    void put(std::string_view key, uint64_t value)
    {
        name(key);
        writer.Uint64(value);
    }
    void put(const Who &who)
    {
        put("user", who.user);
        put("process", static_cast<uint64_t>(who.process));
    }
    void put(const Client &client)
    {
        put("user", text::printable(client.user));
        put("address", client.address);
        if (!client.olt.empty()) put("olt", client.olt);
    }
    void put_fields(const std::vector<std::pair<std::string, std::string>> &fields)
    {
        name("fields");
        writer.StartObject();
        for (const auto &[field, value] : fields)
            put(field, value);
        writer.EndObject();
    }
    std::string end()
    {
        writer.EndObject();
        return {buffer.GetString(), buffer.GetSize()};
    }

private:
    static rapidjson::SizeType size_of(std::string_view text) { return static_cast<rapidjson::SizeType>(text.size()); }
    static std::string text_of(uint64_t time)
    {
        constexpr uint64_t ms_per_second = 1000;
        const auto second = static_cast<time_t>(time / ms_per_second);
        tm broken{};
        gmtime_r(&second, &broken);
        char text[sizeof "2026-01-01T00:00:00.000Z" + 16];
        const size_t length = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &broken);
        std::string ms = std::to_string(ms_per_second + time % ms_per_second);
        ms.front() = '.';
        return std::string(text, length) + ms + 'Z';
    }
    void name(std::string_view key) { writer.Key(key.data(), size_of(key)); }

    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer;
};

bool may_be_secret(FieldType type)
{
    return type == FieldType::text || type == FieldType::bytes;
}

} // namespace

Wanted wanted_by(uint32_t channel_type, catalogue::Call call, std::string_view request)
{
    const bool asks = call == catalogue::Call::get || call == catalogue::Call::dgram_get;
    Wanted wanted{asks ? catalogue::Class::read : catalogue::Class::write, channel_type, {}, {}};
    const catalogue::Channel *channel = catalogue::find_channel(channel_type);
    if (!channel) return wanted;
    const call::RecordRole role{channel, call};
    const std::span bytes(reinterpret_cast<const uint8_t *>(request.data()), request.size());
    const call::Reading reading = call::read_record(*channel->record, role, bytes);
    const catalogue::Field *code = channel->record->command;
    if (const catalogue::Command *command = call::command_of(*channel->record, role, bytes)) {
        wanted.impact = command->impact;
        wanted.command = command->name;
    } else if (code && reading.reaches(*code)) {
        wanted.command = call::text_of(reading, *code);
    }
    for (const call::DecodedField &field : call::decode(reading)) {
        if (field.zero || field.field == code || may_be_secret(field.field->type)) continue;
        if (wanted.fields.size() == most_fields) break;
        wanted.fields.emplace_back(field.field->name, field.text);
    }
    return wanted;
}

Wanted wanted_by(const call::PermissionRequest &request)
{
    const call::Exchange &exchange = request.exchange;
    const std::string_view bytes(reinterpret_cast<const char *>(exchange.request.data()), exchange.request.size());
    Wanted wanted = wanted_by(exchange.channel ? exchange.channel->type : 0, exchange.call, bytes);
    wanted.impact = request.impact;
    return wanted;
}

namespace
{

template <class Author>
std::string line_of_request(uint64_t time, const Author &author, const Wanted &wanted, std::string_view result)
{
    Line line(time);
    line.put(author);
    line.put("class", to_text(wanted.impact));
    line.put("channel", wanted.channel);
    line.put("command", wanted.command);
    line.put_fields(wanted.fields);
    line.put("result", text::printable(result));
    return line.end();
}

template <class Author>
std::string line_of_command(uint64_t time, const Author &author, std::string_view command, std::string_view result)
{
    Line line(time);
    line.put(author);
    line.put("control", text::printable(command));
    line.put("result", text::printable(result));
    return line.end();
}

} // namespace

uint64_t time_of_day()
{
    using namespace std::chrono;
    return static_cast<uint64_t>(duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
}

std::string line_of(uint64_t time, const Who &who, const Wanted &wanted, std::string_view result)
{
    return line_of_request(time, who, wanted, result);
}

std::string line_of(uint64_t time, const Client &client, const Wanted &wanted, std::string_view result)
{
    return line_of_request(time, client, wanted, result);
}

std::string line_of(uint64_t time, const Who &who, std::string_view command, std::string_view result)
{
    return line_of_command(time, who, command, result);
}

std::string line_of(uint64_t time, const Client &client, std::string_view command, std::string_view result)
{
    return line_of_command(time, client, command, result);
}

std::string line_of_lost(uint64_t time, uint64_t lost)
{
    Line line(time);
    line.put("lost", lost);
    return line.end();
}

} // namespace audit
