#include "model/plant/module_memory.h"

#include <algorithm>
#include <numeric>

namespace ponsim
{
namespace
{

constexpr size_t measurements = 96;
constexpr size_t control = 110;
constexpr size_t alarm_flags = 112;
constexpr size_t warning_flags = 116;
constexpr size_t user = 128;

constexpr uint8_t soft_tx_disable = 1 << 6;
constexpr uint8_t tx_fault_state = 1 << 2;
constexpr uint8_t rx_los_state = 1 << 1;

void put_word(ModuleMemory &memory, size_t at, int32_t value)
{
    memory[at] = static_cast<uint8_t>(value >> 8);
    memory[at + 1] = static_cast<uint8_t>(value);
}

// Writes the text and pads it with spaces.
void put_text(ModuleMemory &memory, size_t at, size_t size, std::string_view text)
{
    std::fill_n(&memory[at], size, ' ');
    std::ranges::copy(text, &memory[at]);
}

// Writes the low byte of the sum of the bytes from `first` up to this one.
void put_checksum(ModuleMemory &memory, size_t at, size_t first)
{
    memory[at] = static_cast<uint8_t>(std::accumulate(&memory[first], &memory[at], 0u));
}

} // namespace

ModuleMemory identity_memory(const Module &module)
{
    const ModuleType &type = module.type();
    ModuleMemory memory{};
    memory[0] = 0x03; // SFP
    memory[1] = 0x04; // defined by this memory alone
    memory[2] = type.connector;
    memory[6] = type.ethernet;
    memory[11] = 0x01; // 8B/10B
    memory[12] = 13;   // 1.25 GBd, in 100 MBd
    memory[14] = static_cast<uint8_t>(type.reach);
    memory[15] = static_cast<uint8_t>(type.reach * 10); // km again, in 100 m
    put_text(memory, 20, 16, type.vendor);
    memory[37] = 0x02; // an OUI of local administration
    memory[38] = 0x53;
    memory[39] = 0x4d;
    put_text(memory, 40, 16, type.part);
    put_text(memory, 56, 4, type.revision);
    put_word(memory, 60, static_cast<int32_t>(type.wavelength));
    put_checksum(memory, 63, 0);
    memory[65] = 0x1a; // TX disable, TX fault, RX loss
    put_text(memory, 68, 16, module.serial());
    put_text(memory, 84, 8, module.date());
    memory[92] = 0x68; // diagnostics, calibrated in the module, average received power
    memory[93] = 0xf0; // flags, soft TX disable, soft TX fault, soft RX loss
    memory[94] = 0x08; // revision 12 of SFF-8472
    put_checksum(memory, 95, 64);
    return memory;
}

ModuleMemory diagnostic_memory(const Module &module, ModelTime now)
{
    ModuleMemory memory{};
    size_t at = 0;
    for (const Thresholds &thresholds : module.type().thresholds)
        for (int32_t value :
             {thresholds.high_alarm, thresholds.low_alarm, thresholds.high_warning, thresholds.low_warning}) {
            put_word(memory, at, value);
            at += 2;
        }
    // The calibration changes nothing: all slopes are 1, and the slope of received power is a float.
    memory[68] = 0x3f;
    memory[69] = 0x80;
    for (size_t slope : {76, 80, 84, 88})
        memory[slope] = 0x01;
    put_checksum(memory, 95, 0);

    const Readings readings = module.readings(now);
    for (size_t quantity = 0; quantity < quantities; ++quantity)
        put_word(memory, measurements + 2 * quantity, readings[quantity]);
    memory[control] =
        static_cast<uint8_t>((module.record().tx_disabled ? soft_tx_disable : 0) |
                             (module.fault(now) ? tx_fault_state : 0) | (module.loss_of_light(now) ? rx_los_state : 0));
    put_word(memory, alarm_flags, module.alarms(now));
    put_word(memory, warning_flags, module.warnings(now));
    std::ranges::copy(module.record().user, &memory[user]);
    return memory;
}

bool write_diagnostic_memory(ModuleRecord &record, uint32_t offset, std::span<const uint8_t> bytes)
{
    for (uint8_t byte : bytes) {
        if (offset == control)
            record.tx_disabled = byte & soft_tx_disable;
        else if (offset >= user && offset < user + record.user.size())
            record.user[offset - user] = byte;
        else
            return false;
        ++offset;
    }
    return true;
}

} // namespace ponsim
