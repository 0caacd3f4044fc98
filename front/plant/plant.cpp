#include "plant/plant.h"

#include <algorithm>
#include <functional>
#include <set>

#include "text/hex.h"
#include "toml_file/section.h"

namespace front
{
namespace
{

using toml_file::Keys;
using toml_file::Section;

constexpr uint32_t most_ports = 64, most_onus = 1024, least_ratio = 2, most_ratio = 256, longest_fibre = 100'000;
constexpr size_t most_nodes = 512, deepest = 8, longest_text = 128;

const Keys &plant_keys()
{
    static const Keys splitter{{"name"}, {"from"}, {"ratio"}, {"place"}, {"length"}, {"onus"}};
    static const Keys keys{
        {"port", {{"pon_port"}, {"feeder"}, {"place"}, {"length"}, {"onus"}, {"splitter", splitter}}}};
    return keys;
}

// A Reader reads one file: what it has read is what a later line must not say again.
class Reader
{
public:
    std::map<uint32_t, PortPlant> read(const Section &file)
    {
        for (const Section &port : file.tables("port")) {
            const auto number = port.number("pon_port", 1, most_ports);
            if (!number) port.fail_expected("pon_port", "the number of a PON port");
            if (ports.contains(static_cast<uint32_t>(*number)))
                port.fail("pon_port", "the plant of this port stands above already");
            nodes = &ports[static_cast<uint32_t>(*number)];
            texts.clear();
            onus = 0;
            read_port(port);
        }
        return std::move(ports);
    }

private:
    void read_port(const Section &port)
    {
        nodes->push_back({.name = port.text("feeder", 1, longest_text).value_or("feeder")});
        read_node(port, nodes->back());
        for (const Section &splitter : port.tables("splitter")) {
            if (nodes->size() >= most_nodes)
                splitter.fail("name", "a port has at most " + std::to_string(most_nodes - 1) + " splitters");
            read_splitter(splitter);
        }
    }

    void read_splitter(const Section &section)
    {
        PlantNode splitter{.name = section.text("name", 1, longest_text).value_or("")};
        if (splitter.name.empty()) section.fail_expected("name", "the name of the splitter");
        if (find(splitter.name)) section.fail("name", "another one of this port has the name " + splitter.name);
        splitter.from = place_of(section);
        const auto ratio = section.number("ratio", least_ratio, most_ratio);
        if (!ratio) section.fail_expected("ratio", "how many ways it splits light, as 16");
        splitter.ratio = static_cast<uint32_t>(*ratio);
        read_node(section, splitter);
        nodes->push_back(std::move(splitter));
        nodes->at(*nodes->back().from).splitters.push_back(nodes->size() - 1);
        check_ways(section, "ratio", nodes->back());
        check_ways(section, "from", nodes->at(*nodes->back().from));
        size_t depth = 0;
        for (auto from = nodes->back().from; from; from = nodes->at(*from).from)
            ++depth;
        if (depth > deepest)
            section.fail("from", "more than " + std::to_string(deepest) + " splitters one behind the other");
    }

    // A splitter hangs from one that stands above it, so there is no way back to itself.
    size_t place_of(const Section &section) const
    {
        const auto from = section.text("from", 1, longest_text);
        if (!from) return 0;
        if (const auto found = find(*from)) return *found;
        std::vector<std::string> known;
        for (const PlantNode &node : *nodes)
            known.push_back(node.name);
        section.fail_unknown("from", "splitter of this port above it with the name", *from, known);
    }

    void read_node(const Section &section, PlantNode &node)
    {
        node.place = section.text("place", 1, longest_text).value_or("");
        if (const auto length = section.number("length", 0, longest_fibre))
            node.length = static_cast<uint32_t>(*length);
        const toml_file::Value *const written = section.written("onus");
        if (!written) return;
        if (!written->array())
            section.fail_expected("onus", "a list of MAC addresses, descriptions or first bind texts");
        for (const toml_file::Value &onu : *written->array())
            node.onus.push_back(read_onu(onu));
    }

    // An address is at one place of the OLT, and a text at one of the port.
    std::string read_onu(const toml_file::Value &value)
    {
        const auto *const text = std::get_if<std::string>(&value.value);
        if (!text || text->empty() || text->size() > longest_text)
            fail_at(value, "onus: expected a MAC address, a description or a first bind text, found " +
                               toml_file::describe(value));
        const auto mac = text::to_mac(*text);
        const std::string name = mac ? text::mac_text(*mac) : *text;
        if (!(mac ? addresses : texts).insert(name).second)
            fail_at(value, "onus: " + *text + " stands above already: an ONU is at one place");
        if (++onus > most_onus) fail_at(value, "onus: a port has at most " + std::to_string(most_onus) + " ONUs");
        return name;
    }

    static void check_ways(const Section &section, const char *key, const PlantNode &node)
    {
        const size_t used = node.splitters.size() + node.onus.size();
        if (node.ratio && used > *node.ratio)
            section.fail(key, node.name + " has " + std::to_string(used) + " branches, and splits light " +
                                  std::to_string(*node.ratio) + " ways");
    }

    std::optional<size_t> find(const std::string &name) const
    {
        const auto found = std::ranges::find(*nodes, name, &PlantNode::name);
        return found == nodes->end() ? std::nullopt : std::optional(static_cast<size_t>(found - nodes->begin()));
    }

    std::map<uint32_t, PortPlant> ports;
    PortPlant *nodes = nullptr; // of the port that is read
    std::set<std::string> addresses, texts;
    size_t onus = 0; // of this port
};

std::shared_ptr<const Plant> plant_of(const toml_file::Value &value)
{
    const Section file(value, plant_keys());
    file.check_keys();
    auto plant = std::make_shared<Plant>();
    plant->ports = Reader().read(file);
    plant->version = std::to_string(std::hash<std::string>()(toml_file::write_toml(*value.table())));
    return plant;
}

} // namespace

std::shared_ptr<const Plant> read_plant(std::string_view text, const std::string &name)
{
    return plant_of(toml_file::read_table(text, name));
}

std::shared_ptr<const Plant> read_plant_file(const std::string &file)
{
    return plant_of(toml_file::read_table_file(file));
}

} // namespace front
