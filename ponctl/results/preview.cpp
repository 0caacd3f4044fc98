#include "results/preview.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>

#include "board/datastore.h"
#include "output/consent.h"
#include "output/table.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

// What is known of an ONU that is bound.
struct Known {
    std::string mac, state, description;
};

std::string cell_of(const db_handle *database, uint32_t row, const char *column)
{
    const char *text = db_get_text(database, row, column);
    return text && *text ? text : "-";
}

// Returns what is known of the bound ONUs of a port, by their ids. What cannot be learnt is left out: whoever is asked
// then sees less, and the command itself reports what fails.
std::map<uint32_t, Known> known_onus(uint32_t port)
{
    const Invocation listed("bsp_pon_exec_get_json_",
                            words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", std::to_string(port)}}),
                            looking());
    std::map<uint32_t, Known> known;
    const db_handle *database = listed.good() ? listed.database() : nullptr;
    for (uint32_t row = 0; database && row < db_rows(database); ++row) {
        int64_t id = 0;
        if (db_get_integer(database, row, "onu_id", &id) == 0)
            known[static_cast<uint32_t>(id)] = {cell_of(database, row, "mac"), cell_of(database, row, "state"),
                                                cell_of(database, row, "description")};
    }
    return known;
}

std::string count_of_onus(size_t count)
{
    return std::to_string(count) + (count == 1 ? " ONU" : " ONUs");
}

std::string summary(Effect effect, size_t count, size_t online)
{
    std::string text =
        count_of_onus(count) + ", of which " + std::to_string(online) + (online == 1 ? " is" : " are") + " online";
    if (effect == Effect::offline) text += online == 1 ? " and goes offline" : " and go offline";
    return text + "\n";
}

std::string preview_of(Effect effect, const std::vector<Planned> &planned)
{
    constexpr size_t most_shown = 24;
    std::map<uint32_t, std::map<uint32_t, Known>> ports;
    std::vector<Table::Heading> headings{{"ONU"}, {"MAC"}, {"STATE"}, {"DESCRIPTION", Table::Fit::wrap}};
    const bool changes = !planned.empty() && !planned.front().changes.empty();
    if (changes) headings.push_back({"CHANGES", Table::Fit::wrap});
    Table table(headings);
    size_t online = 0, shown = 0, found_any = 0;
    for (const auto &[onu, change] : planned) {
        if (!ports.contains(onu.port)) ports[onu.port] = known_onus(onu.port);
        const auto found = ports[onu.port].find(onu.id);
        const Known known = found == ports[onu.port].end() ? Known{"-", "-", "-"} : found->second;
        if (known.state == "online") ++online;
        if (known.mac != "-") ++found_any;
        if (++shown > most_shown) continue;
        std::vector<std::string> cells{onu.name(), known.mac, known.state, known.description};
        if (changes) cells.push_back(change);
        table.add(cells);
    }
    // A list of names alone would say no more than the question does.
    if (found_any == 0 && !changes) return {};
    std::string text = table_text(table);
    if (shown > most_shown) text += "and " + std::to_string(shown - most_shown) + " more\n";
    return text + summary(effect, planned.size(), online);
}

} // namespace

std::string table_text(const Table &table)
{
    char *text = nullptr;
    size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    if (!stream) throw std::bad_alloc();
    table.print({stream});
    std::fclose(stream);
    std::string copy(text, size);
    std::free(text);
    return copy;
}

void ask_about(std::string_view name, const std::string &action, Effect effect, const std::vector<Planned> &planned)
{
    ask_before(name, action, [&] { return preview_of(effect, planned); });
}

void ask_about(std::string_view name, const std::string &action, Effect effect, const OnuSet &set)
{
    ask_before(name, action, [&] {
        std::vector<Planned> planned;
        const auto known = set.all ? known_onus(set.port) : std::map<uint32_t, Known>();
        for (uint32_t id = 0; id <= max_onu_id; ++id)
            if (set.all ? known.contains(id) : holds(set.ids, id)) planned.push_back({{set.port, id}, {}});
        return preview_of(effect, planned);
    });
}

} // namespace ponctl
