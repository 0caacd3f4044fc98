// These commands plug ONUs and devices of users in, and take them away.
#include "model/inventory/inventory.h"

#include <algorithm>
#include <functional>

#include "bsp_pon.h"
#include "control/sets.h"
#include "generated/service_words.h"
#include "model/base/text.h"
#include "model/lifecycle/authentication.h"
#include "text/number.h"
#include "text/words.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

uint32_t number_of(const std::string &word, uint32_t least, uint32_t greatest)
{
    return static_cast<uint32_t>(control_number(word, least, greatest));
}

std::string name_of(const std::string &word)
{
    if (!text::is_name(word))
        throw ControlError(word + ": expected a name of at most " + std::to_string(text::longest_name) +
                           " letters, digits, '-', '_' and '.'");
    return word;
}

std::string clean_text(const std::string &word, size_t least, size_t most)
{
    if (word.size() < least || word.size() > most || !is_clean(word))
        throw ControlError('"' + word + "\": expected a text of " + std::to_string(least) + " to " +
                           std::to_string(most) + " bytes without control characters");
    return word;
}

// An Option is a word KEY=VALUE of a command.
struct Option {
    std::string_view key;
    std::function<void(const std::string &value)> take;
};

void take_options(const std::string &command, std::span<const std::string> words, const std::vector<Option> &options)
{
    for (const std::string &word : words) {
        const size_t middle = std::min(word.find('='), word.size());
        const auto option = std::ranges::find(options, word.substr(0, middle), &Option::key);
        if (option == options.end() || middle == word.size()) {
            std::string known;
            for (const Option &each : options)
                known.append(known.empty()              ? ""
                             : &each == &options.back() ? " or "
                                                        : ", ")
                    .append(each.key)
                    .append("=");
            throw ControlError(command + ": " + word + ": expected " + known);
        }
        option->take(word.substr(middle + 1));
    }
}

// These are the options that several of the commands have.
Option name_option(NewOnu &onu)
{
    return {"name", [&](const std::string &value) { onu.name = name_of(value); }};
}
Option branch_option(NewOnu &onu)
{
    return {"branch", [&](const std::string &value) { onu.branch = name_of(value); }};
}
Option drop_option(NewOnu &onu)
{
    return {"drop", [&](const std::string &value) { onu.length = number_of(value, 0, max_distance); }};
}
Option mac_option(NewOnu &onu)
{
    return {"mac", [&](const std::string &value) { onu.mac = control_mac(value); }};
}
Option loid_option(NewOnu &onu)
{
    return {"loid", [&](const std::string &value) { onu.loid = clean_text(value, 1, max_loid); }};
}
Option password_option(NewOnu &onu)
{
    return {"password", [&](const std::string &value) { onu.password = clean_text(value, 0, max_password); }};
}
Option kind_option(NewOnu &onu)
{
    return {"kind", [&](const std::string &value) { onu.kind = name_of(value); }};
}

// Lets the inventory plan something, and says in the words of a command what cannot be.
template <class PlanSteps>
Plan plan_inventory(const Olt &olt, PlanSteps plan_steps)
{
    try {
        Inventory inventory(olt);
        plan_steps(inventory);
        return {BSP_OK, inventory.change()};
    } catch (const InventoryError &error) {
        throw ControlError(error.what());
    }
}

Plan arrive(const Olt &olt, std::span<const std::string> words)
{
    if (words.empty()) throw ControlError("arrive: expected a PON port");
    NewOnu onu;
    std::optional<uint32_t> count;
    take_options("arrive", words.subspan(1),
                 {name_option(onu),
                  {"count", [&](const std::string &value) { count = number_of(value, 1, onus_per_port); }},
                  branch_option(onu),
                  drop_option(onu),
                  mac_option(onu),
                  loid_option(onu),
                  password_option(onu),
                  kind_option(onu),
                  {"service", [&](const std::string &value) { onu.service = name_of(value); }},
                  {"id", [&](const std::string &value) { onu.id = number_of(value, 0, onus_per_port - 1); }},
                  {"silent", [&](const std::string &value) { onu.silent = control_switch(value); }},
                  {"in_use", [&](const std::string &value) { onu.in_use = control_switch(value); }}});
    const Ports ports = control_ports(olt, words[0]);
    const bool several = count || ports.size() > 1;
    if (several && (onu.mac || !onu.loid.empty()))
        throw ControlError("arrive: expected mac= and loid= with one ONU only");
    if (count && onu.id) throw ControlError("arrive: expected id= without count=");
    const std::string name = onu.name;
    return plan_inventory(olt, [&](Inventory &inventory) {
        for (const PonPort *port : ports)
            for (uint32_t number = 1; number <= count.value_or(1); ++number) {
                if (count && !name.empty()) onu.name = name_of(name + '-' + std::to_string(number));
                inventory.arrive(port->number, onu);
            }
    });
}

std::vector<OnuAtPort> onus_there(const Olt &olt, std::span<const std::string> words)
{
    const std::vector<OnuAtPort> onus = control_onus(control_ports(olt, words[0]), words[1]);
    for (const OnuAtPort &onu : onus)
        if (const Arrival *arrival = olt.port(onu.pon_port)->arrived(onu.mac); !arrival || arrival->unplugged)
            throw ControlError(text_of(olt, onu) + ": there is no such ONU");
    return onus;
}

Plan leave(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2) throw ControlError("leave: expected a PON port and an ONU");
    return plan_inventory(olt, [&](Inventory &inventory) {
        for (const auto &[pon_port, mac] : onus_there(olt, words))
            inventory.leave(pon_port, mac);
    });
}

Plan move(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() < 3) throw ControlError("move: expected a PON port, an ONU, and the PON port that it moves to");
    NewOnu place;
    take_options("move", words.subspan(3), {name_option(place), branch_option(place), drop_option(place)});
    const uint32_t to = number_of(words[2], 1, static_cast<uint32_t>(olt.ports().size()));
    const std::vector<OnuAtPort> onus = onus_there(olt, words);
    if (onus.size() > 1 && !place.name.empty()) throw ControlError("move: expected name= with one ONU only");
    return plan_inventory(olt, [&](Inventory &inventory) {
        for (const auto &[pon_port, mac] : onus)
            inventory.move(pon_port, mac, to, place);
    });
}

Plan swap(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() < 2) throw ControlError("swap: expected a PON port and an ONU");
    NewOnu other;
    take_options("swap", words.subspan(2),
                 {mac_option(other), kind_option(other), loid_option(other), password_option(other)});
    const std::vector<OnuAtPort> onus = onus_there(olt, words);
    if (onus.size() > 1 && (other.mac || !other.loid.empty()))
        throw ControlError("swap: expected mac= and loid= with one ONU only");
    return plan_inventory(olt, [&](Inventory &inventory) {
        for (const auto &[pon_port, mac] : onus)
            inventory.swap(pon_port, mac, other);
    });
}

// Reads a speed in Mbit/s, perhaps with FD or HD behind it, as views show links.
LinkMode mode_of(const std::string &word)
{
    LinkMode mode{0, true};
    std::string speed = word;
    if (word.ends_with("FD") || word.ends_with("HD")) {
        mode.full_duplex = word.ends_with("FD");
        speed.resize(speed.size() - 2);
    }
    const auto number = text::to_number<uint32_t>(speed);
    const bool fits = number && is_speed(*number) && (*number < 1000 || mode.full_duplex);
    if (!fits) throw ControlError(word + ": expected the speed of a device, as 10, 100 or 1000, perhaps with FD or HD");
    mode.speed = *number;
    return mode;
}

// Makes of each UNI port what `device_of` says of it.
template <class DeviceOf>
Plan set_devices(const Olt &olt, std::span<const std::string> words, DeviceOf device_of)
{
    const std::vector<UniKey> unis = control_unis(olt, onus_there(olt, words), words[2]);
    return plan_each<UniKey>(olt, unis, [&](const Olt &model, const UniKey &key) -> Plan {
        const Device onu = model.device_of(key.mac);
        if (key.uni > onu.unis.size()) return {PON_ERR_NO_UNI};
        return {BSP_OK, plug_device(model, key, device_of(onu.unis[key.uni - 1]))};
    });
}

Plan plug(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3 && words.size() != 4)
        throw ControlError("plug: expected a PON port, an ONU, a UNI port, and perhaps the speed of a device");
    std::optional<LinkMode> mode;
    if (words.size() == 4) mode = mode_of(words[3]);
    return set_devices(olt, words, [&](const Uni &uni) { return mode.value_or(LinkMode{uni.line_rate, true}); });
}

Plan unplug(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("unplug: expected a PON port, an ONU and a UNI port");
    return set_devices(olt, words, [](const Uni &) { return std::nullopt; });
}

constexpr Control commands[] = {
    {"arrive", "PORT [KEY=VALUE ...]",
     "an ONU is plugged in; name=, branch=, drop=, mac=, kind=, service= and more say which one", arrive},
    {"leave", "PORT ONU", "an ONU is taken away", leave},
    {"move", "PORT ONU TO [KEY=VALUE ...]", "an ONU is plugged in elsewhere; name=, branch= and drop= say where", move},
    {"swap", "PORT ONU [KEY=VALUE ...]", "an ONU is replaced by another one: mac=, kind=, loid=, password=", swap},
    {"plug", "PORT ONU UNI [SPEED]", "a user's device is plugged in at a UNI port", plug},
    {"unplug", "PORT ONU UNI", "a user's device is plugged out of a UNI port", unplug},
};

} // namespace

std::span<const Control> inventory_controls()
{
    return commands;
}

} // namespace ponsim
