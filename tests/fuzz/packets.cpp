#include "packets.h"

#include <algorithm>
#include <cstring>

#include "fields.h"
#include "olt.h"
#include "target.h"

namespace fuzz
{
namespace
{

using namespace ponsim;

constexpr catalogue::Call calls[] = {catalogue::Call::set, catalogue::Call::get, catalogue::Call::dgram_set,
                                     catalogue::Call::dgram_get};

void put_mac(std::minstd_rand &chance, const catalogue::Field &field, std::span<uint8_t> bytes)
{
    const std::vector<Arrival> &arrivals = registered_olt().port(1 + chance() % 2)->arrivals;
    const Mac &mac = arrivals[chance() % arrivals.size()].mac;
    if (field.offset + mac.size() <= bytes.size()) std::memcpy(bytes.data() + field.offset, mac.data(), mac.size());
}

// Gives values to half of the fields. MAC addresses are those of ONUs.
void put_values(std::minstd_rand &chance, std::span<const catalogue::Field> fields, std::span<uint8_t> bytes)
{
    put_numbers(chance, fields, bytes);
    for (const catalogue::Field &field : fields)
        if (field.type == catalogue::FieldType::mac && chance() % 2) put_mac(chance, field, bytes);
}

// Returns a request for a command of the catalogue, some fields of which have values.
Packet packet_of_catalogue(std::minstd_rand &chance)
{
    const std::span commands = catalogue::commands();
    const catalogue::Command &command = commands[chance() % commands.size()];
    const auto channel = static_cast<uint8_t>(command.channel - catalogue::channels().data());
    const catalogue::Record &record = *command.channel->record;
    const auto call = static_cast<uint8_t>(1 + (command.call ? static_cast<uint32_t>(*command.call) : chance() % 4));
    std::vector<uint8_t> bytes(record.size);
    put_values(chance, record.fields, bytes);
    if (const catalogue::Layout *layout = catalogue::find_layout(command)) put_values(chance, layout->fields, bytes);
    if (record.command) std::memcpy(bytes.data() + record.command->offset, &command.code, sizeof command.code);
    return {call, channel, std::move(bytes)};
}

const catalogue::Channel &channel_of(uint8_t number)
{
    const std::span channels = catalogue::channels();
    return channels[number % channels.size()];
}

} // namespace

std::optional<ModelTime> Packet::pause() const
{
    if (call != 0) return std::nullopt;
    return (bytes[0] + 256u * bytes[1]) * ms_per_second;
}

Message Packet::message()
{
    words.assign((bytes.size() + sizeof(uint32_t) - 1) / sizeof(uint32_t), 0);
    if (!bytes.empty()) std::memcpy(words.data(), bytes.data(), bytes.size());
    return {channel_of(channel).type, words.data(), static_cast<uint32_t>(bytes.size()),
            calls[(call - 1u) % std::size(calls)]};
}

void Packet::change_field(std::minstd_rand &chance)
{
    if (call == 0) return;
    const catalogue::Channel &at = channel_of(channel);
    const catalogue::Field *code = at.record->command;
    uint32_t number = 0;
    if (code && code->offset + sizeof number <= bytes.size())
        std::memcpy(&number, bytes.data() + code->offset, sizeof number);
    const catalogue::Command *command = catalogue::find_command(at.type, number, calls[(call - 1u) % std::size(calls)]);
    const catalogue::Layout *layout = command ? catalogue::find_layout(*command) : nullptr;
    put_one_number(chance, layout && chance() % 2 ? layout->fields : at.record->fields, bytes);
}

void Packet::write_to(std::vector<uint8_t> &input) const
{
    const auto put = [&input](size_t number) {
        input.push_back(static_cast<uint8_t>(number));
        input.push_back(static_cast<uint8_t>(number >> 8));
    };
    const auto last = std::find_if(bytes.rbegin(), bytes.rend(), [](uint8_t byte) { return byte != 0; });
    const std::span written(bytes.begin(), last.base());
    input.push_back(call);
    input.push_back(channel);
    if (call != 0) {
        put(bytes.size());
        put(written.size());
        input.insert(input.end(), written.begin(), written.end());
    } else {
        input.insert(input.end(), bytes.begin(), bytes.end());
    }
}

std::vector<Packet> packets_of(Input input)
{
    std::vector<Packet> packets;
    while (!input.empty() && packets.size() < most_packets) {
        const auto call = input.take<uint8_t>(), channel = input.take<uint8_t>();
        const auto length = input.take<uint16_t>();
        std::vector<uint8_t> bytes{static_cast<uint8_t>(length), static_cast<uint8_t>(length >> 8)};
        if (call != 0) {
            const std::span<const uint8_t> written = input.take_bytes(std::min(input.take<uint16_t>(), length));
            bytes.assign(length, 0);
            std::ranges::copy(written, bytes.begin());
        }
        packets.emplace_back(call, channel, std::move(bytes));
    }
    return packets;
}

} // namespace fuzz

// Inputs are changed by whole packets and fields more often than byte by byte.
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t room, unsigned seed)
{
    std::minstd_rand chance(seed);
    std::vector<fuzz::Packet> packets = fuzz::packets_of({data, size});
    const size_t at = packets.empty() ? 0 : chance() % packets.size();
    switch (chance() % 6) {
    case 0:
        packets.push_back(fuzz::packet_of_catalogue(chance));
        break;
    case 1:
        if (!packets.empty()) packets[at] = fuzz::packet_of_catalogue(chance);
        break;
    case 2:
        packets.push_back({0, 0, {static_cast<uint8_t>(chance()), static_cast<uint8_t>(chance() % 16)}});
        break;
    case 3:
        if (!packets.empty()) packets[at].change_field(chance);
        break;
    default:
        return LLVMFuzzerMutate(data, size, room);
    }
    std::vector<uint8_t> input;
    for (const fuzz::Packet &packet : packets)
        packet.write_to(input);
    size = std::min(input.size(), room);
    std::copy_n(input.begin(), size, data);
    return size;
}
