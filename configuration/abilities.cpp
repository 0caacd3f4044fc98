#include "configuration/abilities.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "board/datastore.h"
#include "call/invocation.h"
#include "text/number.h"

namespace config
{
namespace
{

// A Need is a value of a setting that not every ONU can have.
struct Need {
    std::string_view command, field, value; // without a field: the setting itself
    bool Abilities::*ability;
    std::string_view name; // of the ability
};

constexpr std::array<Need, 11> needs{{
    {"BSP_CMD_ONU_VLAN_GET", "mode", "translation", &Abilities::vlan_translation, "VLAN translation"},
    {"BSP_CMD_ONU_VLAN_GET", "mode", "trunk", &Abilities::vlan_trunk, "VLAN trunks"},
    {"BSP_CMD_ONU_PORT_CONFIG_SET", "vlan_mode", "translation", &Abilities::vlan_translation, "VLAN translation"},
    {"BSP_CMD_ONU_PORT_CONFIG_SET", "vlan_mode", "trunk", &Abilities::vlan_trunk, "VLAN trunks"},
    {"BSP_CMD_ONU_FEC_GET", "mode", "enabled", &Abilities::fec, "forward error correction"},
    {"BSP_CMD_ONU_MC_SWITCH_GET", "mode", "controllable multicast", &Abilities::multicast_control,
     "controllable multicast"},
    {"BSP_CMD_ONU_FAST_LEAVE_GET", "state", "on", &Abilities::fast_leave, "fast leave"},
    {"BSP_CMD_VIEW_ONU_WLAN", {}, {}, &Abilities::is_gateway, "WLAN"},
    {"BSP_CMD_VIEW_ONU_ACL", {}, {}, &Abilities::is_gateway, "access control"},
    {"BSP_CMD_VIEW_ONU_DHCP", {}, {}, &Abilities::is_gateway, "DHCP"},
    {"BSP_CMD_VIEW_ONU_WAN", "mode", "route", &Abilities::is_gateway, "routing"},
}};

// A Limit bounds a number in a setting by something that the ONU has so many of.
struct Limit {
    std::string_view command, field; // the field, or each of its places
    uint32_t Abilities::*most;
    uint32_t more; // 1: the number is a count; 0: it numbers one of them, from 0 on
    std::string_view name;
};

constexpr std::array<Limit, 2> limits{{
    {"BSP_CMD_ONU_VLAN_GET", "count", &Abilities::max_vlans, 1, "VLANs"},
    {"BSP_CMD_ONU_CLASSIFICATION_GET", "queue", &Abilities::queues, 0, "upstream queues"},
}};

uint32_t number_in(const db_handle *database, uint32_t row, const char *column)
{
    int64_t number = 0;
    db_get_integer(database, row, column, &number);
    return static_cast<uint32_t>(number);
}

bool truth_in(const db_handle *database, uint32_t row, const char *column)
{
    int truth = 0;
    db_get_bool(database, row, column, &truth);
    return truth != 0;
}

std::string text_in(const db_handle *database, uint32_t row, const char *column)
{
    const char *text = db_get_text(database, row, column);
    return text ? text : "";
}

// Returns whether a setting is the value of this field, or of one of its places: queue_1 of queue.
bool is_of(const ConfigSetting &setting, std::string_view field)
{
    const std::string_view name = setting.name;
    return name.starts_with(field) &&
           (name.size() == field.size() ||
            (name[field.size()] == '_' && text::to_number<uint32_t>(name.substr(field.size() + 1))));
}

// Returns why an ONU cannot have this value of a setting, or an empty text.
std::string misfit_of(const Abilities &onu, std::string_view command, const ConfigSetting &setting)
{
    for (const Need &need : needs)
        if (need.command == command && !(onu.*need.ability) &&
            (need.field.empty() || (setting.name == need.field && setting.value == need.value)))
            return "knows no " + std::string(need.name);
    for (const Limit &limit : limits) {
        const auto number = text::to_number<uint32_t>(setting.value);
        if (limit.command == command && is_of(setting, limit.field) && number &&
            *number >= onu.*limit.most + limit.more)
            return "has only " + std::to_string(onu.*limit.most) + " " + std::string(limit.name);
    }
    return {};
}

// Returns whether a command's settings are of a UNI port of an ONU. Other numbers of settings count connections or
// rules.
bool is_of_uni_port(std::string_view command)
{
    return !command.starts_with("BSP_CMD_VIEW_");
}

} // namespace

AbilitiesOfOnus abilities_of_onus(call::Permission &permission)
{
    AbilitiesOfOnus onus;
    std::map<std::pair<uint32_t, uint32_t>, Abilities *> by_id;
    const Invocation listed("bsp_pon_get_onu_cap_snmp", {}, permission);
    const db_handle *database = listed.good() ? listed.database() : nullptr;
    std::set<uint32_t> ports;
    for (uint32_t row = 0; database && row < db_rows(database); ++row) {
        const uint32_t port = number_in(database, row, "pon_port");
        Abilities &onu = onus[{port, text_in(database, row, "mac")}];
        onu = {text_in(database, row, "vendor"),
               text_in(database, row, "model"),
               number_in(database, row, "ge_ports") + number_in(database, row, "fe_ports"),
               number_in(database, row, "us_queues"),
               number_in(database, row, "max_vlans"),
               truth_in(database, row, "fec"),
               truth_in(database, row, "multicast_control"),
               truth_in(database, row, "fast_leave"),
               truth_in(database, row, "vlan_translation"),
               truth_in(database, row, "vlan_trunk"),
               false};
        by_id[{port, number_in(database, row, "onu_id")}] = &onu;
        ports.insert(port);
    }
    for (const uint32_t port : ports) {
        const Invocation gateways("bsp_pon_onu_ctc_get_wlantab", {"pon_port=" + std::to_string(port)}, permission);
        const db_handle *table = gateways.good() ? gateways.database() : nullptr;
        for (uint32_t row = 0; table && row < db_rows(table); ++row)
            if (const auto onu = by_id.find({port, number_in(table, row, "onu_id")}); onu != by_id.end())
                onu->second->is_gateway = true;
    }
    return onus;
}

std::string misfit_of(const AbilitiesOfOnus &onus, const ConfigTable &table, const ConfigRow &row)
{
    const std::string_view command = command_name_of(table, row);
    const auto port = text::to_number<uint32_t>(key_cell_text(table, row, "pon_port"));
    const auto found = onus.find({port.value_or(0), key_cell_text(table, row, "mac")});
    if (command.empty() || found == onus.end()) return {};
    const Abilities &onu = found->second;
    const std::string subject = "the ONU is a " + onu.kind() + ", which ";
    const auto uni = text::to_number<uint32_t>(key_cell_text(table, row, "uni"));
    if (is_of_uni_port(command) && uni && *uni > onu.unis)
        return subject + "has only " + std::to_string(onu.unis) + (onu.unis == 1 ? " UNI port" : " UNI ports");
    for (const auto &[place, setting] : settings_of(table, row))
        if (const std::string misfit = misfit_of(onu, command, setting); !misfit.empty()) return subject + misfit;
    return {};
}

} // namespace config
