#include "daemon/configuration.h"

#include <algorithm>
#include <charconv>

#include "fleet/protocol/topics.h"
#include "text/words.h"
#include "toml_file/section.h"

namespace front
{
namespace
{

using toml_file::Keys;
using toml_file::Section;

constexpr uint32_t shortest_period = 1, longest_period = 24 * 3600;
constexpr uint32_t most_olts = 255;
constexpr double darkest = -60, brightest = 20; // dBm

const Keys &configuration_keys()
{
    static const Keys keys = [] {
        Keys periods;
        for (const TableKind &kind : table_kinds())
            periods.push_back({kind.name});
        return Keys{
            {"olt", {{"name"}, {"socket_dir"}, {"fleet"}, {"index"}, {"plant"}}},
            {"fleet", {{"settings"}}, false, true},
            {"periods", periods, false, true},
            {"light", {{"olt_low"}, {"olt_well"}, {"onu_low"}, {"onu_well"}}, false, true},
            {"history", {{"file"}, {"events"}, {"light"}, {"light_hourly"}}, false, true},
            {"audit", {{"file"}}, false, true},
            {"http",
             {{"listen"}, {"enabled"}, {"certificate"}, {"key"}, {"behind_tls"}, {"hosts"}, {"users"}, {"metrics"}},
             false,
             true},
            {"metrics", {{"onus"}}, false, true},
            {"snmp", {{"enabled"}, {"agentx"}, {"root"}, {"standard_tables"}, {"priority"}, {"sets"}}, false, true}};
    }();
    return keys;
}

LightLimits read_limits(const Section &section, const std::string &who, const LightLimits &otherwise)
{
    const LightLimits limits{.low = section.decimal_or(who + "_low", darkest, brightest, otherwise.low),
                             .well = section.decimal_or(who + "_well", darkest, brightest, otherwise.well)};
    if (limits.well <= limits.low)
        section.fail(who + "_well", "expected more than " + who + "_low, so that light between them changes nothing");
    return limits;
}

void read_address(const Section &section, ListenSettings &listen)
{
    const std::string text = section.text("listen", 1, 100).value_or("");
    if (text.empty()) return;
    const size_t colon = text.rfind(':');
    const auto fail = [&] { section.fail_expected("listen", "ADDRESS:PORT, as \"127.0.0.1:9911\" or \"[::1]:9911\""); };
    if (colon == text.npos || colon == 0) fail();
    listen.address = text.substr(0, colon);
    if (listen.address.starts_with('[') && listen.address.ends_with(']'))
        listen.address = listen.address.substr(1, listen.address.size() - 2);
    const char *const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data() + colon + 1, end, listen.port);
    if (error != std::errc{} || behind != end) fail();
}

std::vector<std::string> read_hosts(const Section &section)
{
    const std::string text = section.text("hosts", 1, 4096).value_or("");
    std::vector<std::string> hosts;
    for (const std::string &host : text::split(text::lower_case(text), ' '))
        if (!host.empty()) hosts.push_back(host);
    for (const std::string &host : hosts)
        if (host.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-.") != host.npos)
            section.fail_expected("hosts", "names with blanks between them, as \"olt.example.net console\"");
    return hosts;
}

ListenSettings read_listen(const Section &section)
{
    constexpr std::string_view readers[] = {"anyone", "users"};
    ListenSettings listen;
    read_address(section, listen);
    listen.certificate = section.path("certificate");
    listen.key = section.path("key");
    if (listen.certificate.empty() != listen.key.empty())
        section.fail(listen.key.empty() ? "certificate" : "key", "certificate and key belong together");
    listen.behind_tls = section.flag_or("behind_tls", false);
    listen.hosts = read_hosts(section);
    listen.users = section.path("users");
    listen.metrics_need_user = section.choice_or("metrics", readers, 0) == 1;
    if (listen.metrics_need_user && listen.users.empty())
        section.fail("metrics", "there are no users; name their file");
    return listen;
}

// Returns the fleet through which OLTs are reached, or null when none is configured.
std::shared_ptr<const Fleet> read_fleet(const Section &file)
{
    const auto section = file.table("fleet");
    if (!section) return nullptr;
    return std::make_shared<Fleet>(section->text("settings", 1, 4096).value_or(""));
}

Reach read_reach(const Section &section, const std::shared_ptr<const Fleet> &fleet)
{
    Reach reach{.folder = section.text("socket_dir", 1, 4096).value_or(""),
                .olt = section.text("fleet", 1, 64).value_or("")};
    if (!reach.folder.empty() && reach.folder[0] != '/')
        section.fail_expected("socket_dir", "a path from the root, as \"/run/board-ipc\"");
    if (reach.olt.empty()) return reach;
    if (!fleet::is_name(reach.olt)) section.fail_expected("fleet", "the name of an OLT of the fleet");
    if (!reach.folder.empty()) section.fail("fleet", "an OLT with a socket_dir is on this machine");
    if (!fleet) section.fail("fleet", "no fleet is configured: [fleet] names the file of its settings");
    reach.fleet = fleet;
    return reach;
}

void read_olts(const Section &file, Configuration &configuration)
{
    const std::shared_ptr<const Fleet> fleet = read_fleet(file);
    for (const Section &section : file.tables("olt")) {
        const uint32_t place = static_cast<uint32_t>(configuration.olts.size()) + 1;
        OltSettings olt{.name = section.needed_name("name"),
                        .reach = read_reach(section, fleet),
                        .index = section.number_or("index", 1, most_olts, std::min(place, most_olts))};
        for (const OltSettings &other : configuration.olts) {
            if (other.name == olt.name) section.fail("name", "another OLT has this name");
            if (other.index == olt.index)
                section.fail("index", other.name + " has the index " + std::to_string(olt.index));
            if (other.reach == olt.reach)
                section.fail(olt.reach.fleet ? "fleet" : "socket_dir", other.name + " is the same OLT");
        }
        if (const std::string plant = section.path("plant"); !plant.empty())
            configuration.plants[olt.name] = read_plant_file(plant);
        configuration.olts.push_back(std::move(olt));
    }
    if (configuration.olts.empty()) configuration.olts.push_back({.name = "olt", .reach = {}});
}

snmp::Oid read_root(const Section &section, const snmp::Oid &otherwise)
{
    constexpr size_t shortest = 4, longest = 32;
    const std::string text = section.text("root", 1, 400).value_or("");
    if (text.empty()) return otherwise;
    const auto fail = [&] {
        section.fail_expected("root", "the object identifier of an arc of yours, as \"1.3.6.1.4.1.8072.9999.9999\"");
    };
    snmp::Oid root;
    for (const std::string &digits : text::split(text, '.')) {
        uint32_t number = 0;
        const char *const end = digits.data() + digits.size();
        const auto [behind, error] = std::from_chars(digits.data(), end, number);
        if (error != std::errc{} || behind != end) fail();
        root.push_back(number);
    }
    constexpr uint32_t most_first = 2, most_second = 39;
    if (root.size() < shortest || root.size() > longest || root[0] > most_first || root[1] > most_second) fail();
    // Those of standards are nobody's, and their tables would stand in the way.
    for (const snmp::Oid &standard : {snmp::Oid{1, 3, 6, 1, 2}, snmp::Oid{1, 3, 6, 1, 6}})
        if (snmp::is_below(root, standard)) fail();
    return root;
}

SnmpSettings read_snmp(const Section &section)
{
    SnmpSettings snmp;
    if (const auto text = section.text("agentx", 1, 400)) {
        const auto master = snmp::to_master_address(*text);
        if (!master)
            section.fail_expected("agentx", "the path of a Unix socket, as \"/var/agentx/master\", or an address and a "
                                            "port, as \"tcp:127.0.0.1:705\"");
        snmp.master = *master;
    }
    snmp.mib = {.root = read_root(section, snmp.mib.root),
                .standard_tables = section.flag_or("standard_tables", snmp.mib.standard_tables)};
    snmp.priority = static_cast<uint8_t>(section.number_or("priority", 1, 255, snmp.priority));
    static constexpr std::string_view sets[] = {"off", "write", "service_affecting"};
    if (const size_t chosen = section.choice_or("sets", sets, 0); chosen > 0)
        snmp.sets = chosen == 1 ? catalogue::Class::write : catalogue::Class::service_affecting;
    return snmp;
}

void read_periods(const Section &section, Configuration &configuration)
{
    for (const TableKind &kind : table_kinds()) {
        const std::optional<uint64_t> time = section.time(kind.name);
        if (!time) continue;
        if (*time < 1000ull * shortest_period || *time > 1000ull * longest_period || *time % 1000 != 0)
            section.fail_expected(kind.name, "whole seconds, from one to a day");
        configuration.periods[static_cast<size_t>(kind.table)] = static_cast<uint32_t>(*time / 1000);
    }
}

HistoryLimits read_history_limits(const Section &section)
{
    constexpr UnixTime day = 24 * light_hour, longest_light = 31 * day, longest_hourly = 3650 * day;
    HistoryLimits limits;
    limits.events = section.number("events", 1, 10'000'000).value_or(limits.events);
    const auto read = [&section](const char *key, UnixTime longest, const char *expected, UnixTime &time) {
        const std::optional<uint64_t> given = section.time(key);
        if (!given) return;
        if (*given < light_hour || *given > static_cast<uint64_t>(longest)) section.fail_expected(key, expected);
        time = static_cast<UnixTime>(*given);
    };
    read("light", longest_light, "a time from an hour to 31 days, as \"2d\"", limits.light);
    limits.hourly = std::max(limits.hourly, limits.light);
    read("light_hourly", longest_hourly, "a time from an hour to ten years, as \"31d\"", limits.hourly);
    if (limits.hourly < limits.light)
        section.fail("light_hourly", "expected no less than light, for which every reading is kept");
    return limits;
}

Configuration configuration_of(const toml_file::Value &value)
{
    const Section file(value, configuration_keys());
    file.check_keys();

    Configuration configuration;
    for (const TableKind &kind : table_kinds())
        configuration.periods[static_cast<size_t>(kind.table)] = kind.period;
    read_olts(file, configuration);
    if (const auto periods = file.table("periods")) read_periods(*periods, configuration);
    if (const auto light = file.table("light"))
        configuration.limits = {.olt = read_limits(*light, "olt", configuration.limits.olt),
                                .onu = read_limits(*light, "onu", configuration.limits.onu)};
    if (const auto history = file.table("history")) {
        configuration.history = history->text("file", 1, 4096).value_or("");
        configuration.history_limits = read_history_limits(*history);
    }
    if (const auto http = file.table("http")) {
        configuration.http = read_listen(*http);
        if (!http->flag_or("enabled", true)) configuration.http.reset();
    }
    if (const auto metrics = file.table("metrics")) {
        configuration.onus =
            static_cast<OnuDetail>(metrics->choice_or("onus", onu_details(), static_cast<size_t>(configuration.onus)));
    }
    if (const auto audit = file.table("audit")) configuration.audit = audit->path("file");
    if (const auto snmp = file.table("snmp")) {
        configuration.snmp = read_snmp(*snmp);
        if (!snmp->flag_or("enabled", true)) configuration.snmp.reset();
    }
    return configuration;
}

} // namespace

bool Configuration::collects_as(const Configuration &other) const
{
    return periods == other.periods && limits == other.limits && history == other.history;
}

Configuration default_configuration()
{
    return read_configuration("", "the defaults");
}

Configuration read_configuration(std::string_view text, const std::string &name)
{
    return configuration_of(toml_file::read_table(text, name));
}

Configuration read_configuration_file(const std::string &file)
{
    return configuration_of(toml_file::read_table_file(file));
}

} // namespace front
