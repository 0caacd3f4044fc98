#include "fleet/ponbridge/configuration.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "fleet/mqtt/broker_table.h"
#include "fleet/selection/inventory.h"
#include "toml_file/section.h"

namespace fleet
{
namespace
{

using catalogue::Class;
using toml_file::Keys;
using toml_file::Section;

constexpr uint32_t longest_period = 24 * 3600;
constexpr std::string_view classes[] = {"read", "write", "service-affecting"}; // in the order of their numbers

const Keys &configuration_keys()
{
    static const Keys keys{{"name"},
                           {"state"},
                           {"audit"},
                           {"threads"},
                           {"queue"},
                           {"inventory_period"},
                           {"events"},
                           broker_key(),
                           {"olt", {{"name"}, {"socket_dir"}, {"allow"}, {"labels"}}},
                           {"folder", {{"path"}, {"allow"}, {"labels"}}},
                           {"clients"}};
    return keys;
}

Class read_allow(const Section &section)
{
    return static_cast<Class>(section.choice_or("allow", classes, static_cast<size_t>(Class::service_affecting)));
}

// Returns the texts of a table whose keys are names.
std::map<std::string, std::string> read_texts(const Section &section, const char *key, size_t most)
{
    std::map<std::string, std::string> texts;
    for (const auto &[name, value] : section.members(key)) {
        const auto *text = std::get_if<std::string>(&value.value);
        if (!is_name(name)) toml_file::fail_at(value, "'" + name + "': expected letters, digits, '-', '_' and '.'");
        if (!text || text->empty() || text->size() > longest_value)
            toml_file::fail_at(value, name + ": expected a text of 1 to " + std::to_string(longest_value) + " bytes");
        texts[name] = *text;
    }
    if (texts.size() > most) section.fail(key, "more than " + std::to_string(most));
    return texts;
}

void add(const Section &section, const char *key, BridgedOlt olt, Configuration &configuration)
{
    olt.served.allow = read_allow(section);
    olt.served.journal = configuration.fixed.state + "/journal/" + olt.served.name + ".jsonl";
    olt.labels = read_texts(section, "labels", most_labels);
    for (const BridgedOlt &other : configuration.olts) {
        if (other.served.name == olt.served.name) section.fail(key, "another OLT has the name " + olt.served.name);
        if (other.served.socket_dir == olt.served.socket_dir)
            section.fail(key, other.served.name + " has the folder " + olt.served.socket_dir);
    }
    configuration.olts.push_back(std::move(olt));
}

void read_olts(const Section &file, Configuration &configuration)
{
    for (const Section &section : file.tables("olt"))
        add(section, "name",
            {.served = {.name = section.needed_name("name"), .socket_dir = section.path("socket_dir"), .journal = {}},
             .labels = {}},
            configuration);
}

// Each folder in the folder is an OLT. What begins with a dot is hidden.
void read_folders(const Section &file, Configuration &configuration)
{
    for (const Section &section : file.tables("folder")) {
        const std::string path = section.path("path");
        if (path.empty()) section.fail_expected("path", "the folder that has those of the OLTs");
        std::vector<std::string> names;
        std::error_code error;
        for (const auto &entry : std::filesystem::directory_iterator(path, error))
            if (entry.is_directory(error)) names.push_back(entry.path().filename());
        if (error) section.fail("path", path + " cannot be read: " + error.message());
        std::ranges::sort(names);
        for (const std::string &name : names) {
            if (name.starts_with('.')) continue;
            if (!is_name(name)) section.fail("path", "the folder '" + name + "' has no name that an OLT may have");
            add(section, "path",
                {.served = {.name = name, .socket_dir = path + "/" + name, .journal = {}}, .labels = {}},
                configuration);
        }
    }
}

Clients read_clients(const Section &file)
{
    Clients clients;
    for (const auto &[name, text] : read_texts(file, "clients", 10'000)) {
        const std::optional<Class> impact = catalogue::find_class(text);
        if (!impact) file.fail("clients", name + ": expected read, write or service-affecting");
        clients[name] = *impact;
    }
    return clients;
}

Configuration configuration_of(const toml_file::Value &value)
{
    const Section file(value, configuration_keys());
    file.check_keys();

    Configuration configuration;
    FixedSettings &fixed = configuration.fixed;
    fixed.name = file.needed_name("name");
    fixed.state = file.path("state");
    if (fixed.state.empty()) fixed.state = "/var/lib/ponbridge";
    fixed.audit = file.path("audit");
    fixed.engine.threads = file.number_or("threads", 1, 256, fixed.engine.threads);
    fixed.engine.queue = file.number_or("queue", 1, 1024, fixed.engine.queue);
    BrokerTable table = read_broker(file, Paths::from_the_root);
    fixed.broker = std::move(table.broker);
    fixed.root = std::move(table.root);

    if (const auto period = file.time("inventory_period")) {
        if (*period < 1000 || *period > 1000ull * longest_period || *period % 1000 != 0)
            file.fail_expected("inventory_period", "whole seconds, from one to a day");
        configuration.inventory_period = static_cast<uint32_t>(*period / 1000);
    }
    configuration.events = file.flag_or("events", configuration.events);
    read_olts(file, configuration);
    read_folders(file, configuration);
    if (file.has("clients")) configuration.clients = read_clients(file);
    return configuration;
}

} // namespace

Configuration read_configuration(std::string_view text, const std::string &name)
{
    return configuration_of(toml_file::read_table(text, name));
}

Configuration read_configuration_file(const std::string &file)
{
    return configuration_of(toml_file::read_table_file(file));
}

} // namespace fleet
