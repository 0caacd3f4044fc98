#include "model/lifecycle/images.h"

#include <algorithm>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/block.h"
#include "model/lifecycle/upgrade.h"

namespace ponsim
{
namespace
{

using Bank = Banks::Bank;
using Push = Banks::Push;

constexpr uint32_t least_own_size = 2 * 1024 * 1024; // least size of the images that ONUs come with
constexpr uint32_t own_sizes = 1024 * 1024;

SettingKey key_of(const PonPort &port, const Mac &mac)
{
    return {port.number, mac, BSP_CMD_ONU_BANKS_GET, 0};
}

Entry<OnuSetting> entry_of(const Olt &olt, const PonPort &port, const Mac &mac, const Banks &banks)
{
    const std::string block = to_block(banks);
    return {key_of(port, mac), OnuSetting{block, block, olt.now()}};
}

Bank bank_of(std::string_view version, uint32_t size)
{
    Bank bank{.size = size};
    version.copy(bank.version.data(), bank.version.size() - 1);
    return bank;
}

// Returns a bank with an image whose bytes exist nowhere. Its checksum is made from vendor, model and version instead.
Bank known_bank(const DeviceType &type, std::string_view version, std::optional<uint32_t> size)
{
    uint32_t crc = 0;
    for (std::string_view text : {type.vendor, type.model, version})
        crc = crc32(crc, text);
    Bank bank = bank_of(version, size.value_or(least_own_size + crc % own_sizes));
    bank.valid = 1;
    bank.received = bank.size;
    bank.crc = crc;
    return bank;
}

bool upgrading(const RemoteOnu &onu)
{
    const UpgradeRun *run = onu.port->upgrades.find(onu.binding->mac);
    return run && run->under_way();
}

// Returns why a command on its images cannot be sent to the ONU, or BSP_OK.
uint32_t check(const RemoteOnu &onu)
{
    if (!onu.online()) return PON_ERR_OFFLINE;
    return upgrading(onu) ? PON_ERR_UPGRADING : BSP_OK;
}

void run_bank(Banks &banks, uint32_t index, OnuRecord &record)
{
    banks.active = index;
    banks.committed = index;
    record.software = banks.banks.at(index).name();
}

} // namespace

uint32_t Bank::percent() const
{
    return size == 0 ? 0 : static_cast<uint32_t>(uint64_t{received} * 100 / size);
}

bool is_good(const Banks &banks)
{
    const auto is_good_bank = [](const Bank &bank) {
        const std::string_view version(bank.version.data(), bank.version.size());
        const std::string name(version.substr(0, version.find('\0')));
        return (name.empty() || is_version(name)) && version.find_first_not_of('\0', name.size()) == version.npos &&
               bank.valid <= 1 && bank.received <= bank.size;
    };
    return std::ranges::all_of(banks.banks, is_good_bank) && banks.active < banks.banks.size() &&
           banks.committed < banks.banks.size() && banks.push <= Push::failed && banks.pushed < banks.banks.size();
}

std::optional<std::string_view> to_text(Push push)
{
    constexpr std::string_view texts[] = {"", "receiving", "complete", "committed", "started", "failed"};
    if (push == Push::none) return std::nullopt;
    return texts[static_cast<size_t>(push)];
}

uint32_t crc32(uint32_t before, std::string_view bytes)
{
    constexpr uint32_t polynomial = 0xedb88320;
    uint32_t crc = ~before;
    for (char byte : bytes) {
        crc ^= static_cast<uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? polynomial : 0);
    }
    return ~crc;
}

Banks banks_of(const Olt &olt, const PonPort &port, const Mac &mac)
{
    const OnuSetting *kept = olt.setting(key_of(port, mac));
    if (kept) return from_block(&kept->sent, Banks{});
    const Device device = device_at(olt, port, mac);
    return {{known_bank(*device.type, device.software, std::nullopt), Bank{}}, 0, 0, Push::none, 0};
}

Plan push_part(const Olt &olt, const RemoteOnu &onu, const ImagePart &part)
{
    if (const uint32_t status = check(onu)) return {status};
    const Mac &mac = onu.binding->mac;
    Banks banks = banks_of(olt, *onu.port, mac);
    if (part.offset == 0) {
        if (!is_version(part.version)) return {PON_ERR_BAD_RECORD};
        if (part.size == 0 || part.size > max_image_size) return {PON_ERR_BAD_IMAGE};
        banks.pushed = banks.spare();
        banks.push = Push::receiving;
        banks.committed = banks.active;
        banks.banks.at(banks.pushed) = bank_of(part.version, part.size);
    }
    Bank &bank = banks.banks.at(banks.pushed);
    if (banks.push != Push::receiving || part.offset != bank.received || part.size != bank.size ||
        part.bytes.size() > bank.size - bank.received)
        return {PON_ERR_BAD_IMAGE};
    bank.received += static_cast<uint32_t>(part.bytes.size());
    bank.crc = crc32(bank.crc, part.bytes);
    if (bank.received == bank.size) {
        bank.valid = !onu.port->record(mac).bad_image;
        banks.push = bank.valid ? Push::complete : Push::failed;
    }
    return {BSP_OK, change_of(entry_of(olt, *onu.port, mac, banks))};
}

Plan commit_image(const Olt &olt, const RemoteOnu &onu)
{
    if (const uint32_t status = check(onu)) return {status};
    Banks banks = banks_of(olt, *onu.port, onu.binding->mac);
    if (banks.push == Push::committed) return {BSP_OK};
    if (banks.push != Push::complete) return {PON_ERR_NO_IMAGE};
    banks.push = Push::committed;
    banks.committed = banks.pushed;
    return {BSP_OK, change_of(entry_of(olt, *onu.port, onu.binding->mac, banks))};
}

void start_committed(const Olt &olt, const PonPort &port, const Mac &mac, OnuRecord &record, Change &change)
{
    Banks banks = banks_of(olt, port, mac);
    if (banks.push == Push::receiving) {
        banks.banks.at(banks.pushed) = {};
        banks.push = Push::none;
    } else if (banks.push == Push::committed) {
        run_bank(banks, banks.committed, record);
        banks.push = Push::started;
    } else {
        return;
    }
    change.add(entry_of(olt, port, mac, banks));
}

void start_upgraded(const Olt &olt, const PonPort &port, const Mac &mac, const UpgradeRun &run, OnuRecord &record,
                    Change &change)
{
    Banks banks = banks_of(olt, port, mac);
    const uint32_t index = banks.spare();
    banks.banks.at(index) = known_bank(*olt.device_of(mac).type, run.version, run.size);
    banks.push = Push::none;
    run_bank(banks, index, record);
    change.add(entry_of(olt, port, mac, banks));
}

} // namespace ponsim
