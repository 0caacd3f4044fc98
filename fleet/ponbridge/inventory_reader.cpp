#include "fleet/ponbridge/inventory_reader.h"

#include "call/exchange.h"
#include "call/permission.h"
#include "front/collector/read_table.h"
#include "text/hex.h"
#include "text/sha256.h"

namespace fleet
{

std::string read_inventory(Inventory &inventory)
{
    call::UpTo reading(catalogue::Class::read);
    const call::Sender sender{"reading the inventory", nullptr};
    const call::Watch watch(sender, reading);
    front::Snapshot snapshot;
    try {
        front::read_table(front::Table::olt, snapshot);
    } catch (const front::Fault &fault) {
        inventory.answers = dynamic_cast<const front::NoAnswer *>(&fault) == nullptr;
        return fault.what();
    }
    const view::basic_info &olt = rows_of(snapshot.olt)[0];
    inventory.answers = true;
    inventory.model = olt.model;
    inventory.firmware = olt.version;
    inventory.ports = olt.pon_ports;
    inventory.onus = {
        .online = olt.online, .offline = olt.bound > olt.online ? olt.bound - olt.online : 0, .waiting = olt.waiting};
    return {};
}

const std::string &catalogue_digest()
{
    static const std::string digest = [] {
        std::string all;
        const auto add = [&all](std::string_view word) { all.append(word).push_back('\n'); };
        for (const catalogue::Command &command : catalogue::commands()) {
            add(command.name);
            add(command.channel->name);
            add(std::to_string(command.code));
            add(catalogue::to_text(command.impact));
        }
        for (const catalogue::Operation &operation : catalogue::operations()) {
            add(operation.name);
            for (const catalogue::Argument &argument : operation.arguments)
                add(argument.name);
        }
        return text::to_hex(text::sha256(all));
    }();
    return digest;
}

} // namespace fleet
