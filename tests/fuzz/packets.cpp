#include "packets.h"

#include <cstring>
#include <random>

#include "catalogue.h"
#include "olt.h"
#include "target.h"

namespace fuzz
{
namespace
{

using namespace ponsim;

constexpr catalogue::Call calls[] = {catalogue::Call::set, catalogue::Call::get, catalogue::Call::dgram_set,
                                     catalogue::Call::dgram_get};

void put_number(std::minstd_rand &chance, const catalogue::Field &field, std::vector<uint8_t> &bytes)
{
    constexpr uint64_t telling[] = {0,    1,     2,          3,          4,          5,         7,   8,
                                    16,   31,    32,         63,         127,        128,       255, 1000,
                                    4095, 65535, 0x7fffffff, 0x80000000, UINT32_MAX, UINT64_MAX};
    const uint64_t number = telling[chance() % std::size(telling)];
    const size_t room = std::min<size_t>(field.size, bytes.size() - field.offset);
    std::memcpy(bytes.data() + field.offset, &number, std::min(room, sizeof number));
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
    const catalogue::Layout *layout = catalogue::find_layout(command);
    for (const std::span<const catalogue::Field> fields :
         {record.fields, layout ? layout->fields : std::span<const catalogue::Field>()})
        for (const catalogue::Field &field : fields) {
            if (field.offset >= bytes.size() || chance() % 2) continue;
            if (field.type == catalogue::FieldType::mac) {
                const std::vector<Arrival> &arrivals = fuzz::registered_olt().port(1 + chance() % 2)->arrivals;
                const Mac &mac = arrivals[chance() % arrivals.size()].mac;
                std::memcpy(bytes.data() + field.offset, mac.data(), mac.size());
            } else {
                put_number(chance, field, bytes);
            }
        }
    if (record.command) std::memcpy(bytes.data() + record.command->offset, &command.code, sizeof command.code);
    return {call, channel, std::move(bytes)};
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
    const std::span channels = catalogue::channels();
    return {channels[channel % channels.size()].type, words.data(), static_cast<uint32_t>(bytes.size()),
            calls[(call - 1u) % std::size(calls)]};
}

void Packet::write_to(std::vector<uint8_t> &input) const
{
    input.push_back(call);
    input.push_back(channel);
    if (call != 0) {
        input.push_back(static_cast<uint8_t>(bytes.size()));
        input.push_back(static_cast<uint8_t>(bytes.size() >> 8));
    }
    input.insert(input.end(), bytes.begin(), bytes.end());
}

std::vector<Packet> packets_of(Input input)
{
    std::vector<Packet> packets;
    while (!input.empty() && packets.size() < most_packets) {
        const auto call = input.take<uint8_t>(), channel = input.take<uint8_t>();
        const auto length = input.take<uint16_t>();
        const uint8_t seconds[] = {static_cast<uint8_t>(length), static_cast<uint8_t>(length >> 8)};
        const std::span<const uint8_t> bytes = call == 0 ? std::span<const uint8_t>(seconds) : input.take_bytes(length);
        packets.emplace_back(call, channel, std::vector<uint8_t>(bytes.begin(), bytes.end()));
    }
    return packets;
}

} // namespace fuzz

// Inputs are changed by whole packets as often as byte by byte.
size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t room, unsigned seed)
{
    std::minstd_rand chance(seed);
    std::vector<fuzz::Packet> packets = fuzz::packets_of({data, size});
    const size_t at = packets.empty() ? 0 : chance() % packets.size();
    switch (chance() % 5) {
    case 0:
        packets.push_back(fuzz::packet_of_catalogue(chance));
        break;
    case 1:
        if (!packets.empty()) packets[at] = fuzz::packet_of_catalogue(chance);
        break;
    case 2:
        packets.push_back({0, 0, {static_cast<uint8_t>(chance()), static_cast<uint8_t>(chance() % 16)}});
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
