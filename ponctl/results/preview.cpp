#include "results/preview.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <new>
#include <optional>

#include "board/datastore.h"
#include "output/consent.h"
#include "output/table.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

// Returns the ONUs of a port: those that are bound, and those that wait. What cannot be learnt is left out: whoever is
// asked then sees less, and the command itself reports what fails.
std::vector<Hit> known_onus(uint32_t port)
{
    const Invocation listed("bsp_pon_exec_get_json_",
                            words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", std::to_string(port)}}),
                            looking());
    const db_handle *database = listed.good() ? listed.database() : nullptr;
    const auto cell = [database](uint32_t row, const char *column) {
        const char *text = db_get_text(database, row, column);
        return std::string(text ? text : "");
    };
    std::vector<Hit> known;
    for (uint32_t row = 0; database && row < db_rows(database); ++row) {
        Hit &onu = known.emplace_back();
        onu.port = port;
        onu.mac = cell(row, "mac");
        onu.state = cell(row, "state");
        onu.description = cell(row, "description");
        int64_t id = 0;
        if (db_get_integer(database, row, "onu_id", &id) == 0) onu.id = static_cast<uint32_t>(id);
    }
    return known;
}

// Returns an ONU of which the port knows nothing.
Hit unknown_onu(const Onu &onu)
{
    Hit hit;
    hit.port = onu.port;
    hit.id = onu.id;
    return hit;
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

std::string or_dash(const std::string &text)
{
    return text.empty() ? "-" : text;
}

// Returns the preview of these ONUs. `about` has a text for each of them, or none at all.
Preview preview_of(Effect effect, std::vector<Hit> hits, const std::vector<std::string> &about = {})
{
    constexpr size_t most_shown = 24;
    std::vector<Table::Heading> headings{{"ONU"}, {"MAC"}, {"STATE"}, {"DESCRIPTION", Table::Fit::wrap}};
    if (!about.empty()) headings.push_back({"CHANGES", Table::Fit::wrap});
    Table table(headings);
    size_t online = 0, known = 0;
    for (size_t index = 0; index < hits.size(); ++index) {
        Hit &hit = hits[index];
        online += hit.state == "online";
        known += !hit.mac.empty();
        hit.goes_offline = effect == Effect::offline && hit.state == "online";
        if (index >= most_shown) continue;
        std::vector<std::string> cells{hit.name(), or_dash(hit.mac), or_dash(hit.state), or_dash(hit.description)};
        if (!about.empty()) cells.push_back(about[index]);
        table.add(cells);
    }
    // A list of names alone would say no more than the question does.
    if (known == 0 && about.empty()) return {{}, std::move(hits)};
    std::string text = table_text(table);
    if (hits.size() > most_shown) text += "and " + std::to_string(hits.size() - most_shown) + " more\n";
    text += summary(effect, hits.size(), online);
    return {std::move(text), std::move(hits)};
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
    ask_before(name, action, [&] {
        std::map<uint32_t, std::vector<Hit>> ports;
        std::vector<Hit> hits;
        std::vector<std::string> about;
        for (const Planned &one : planned) {
            if (!ports.contains(one.onu.port)) ports[one.onu.port] = known_onus(one.onu.port);
            const std::vector<Hit> &known = ports[one.onu.port];
            const auto found = std::ranges::find(known, std::optional(one.onu.id), &Hit::id);
            Hit &hit = hits.emplace_back(found == known.end() ? unknown_onu(one.onu) : *found);
            hit.changes = one.changes;
            about.push_back(one.about);
        }
        if (std::ranges::all_of(about, &std::string::empty)) about.clear();
        return preview_of(effect, std::move(hits), about);
    });
}

void ask_about(std::string_view name, const std::string &action, Effect effect, const OnuSet &set,
               const std::function<std::vector<Change>(const Hit &)> &changes)
{
    ask_before(name, action, [&] {
        const std::vector<Hit> known = known_onus(set.port);
        std::vector<Hit> hits;
        for (uint32_t id = 0; id <= max_onu_id; ++id) {
            const auto found = std::ranges::find(known, std::optional(id), &Hit::id);
            if (found != known.end() && (set.all || holds(set.ids, id)))
                hits.push_back(*found);
            else if (!set.all && holds(set.ids, id))
                hits.push_back(unknown_onu({set.port, id}));
        }
        std::vector<std::string> about;
        for (Hit &hit : hits) {
            if (!changes) break;
            hit.changes = changes(hit);
            about.push_back(changes_text(hit.changes));
        }
        return preview_of(effect, std::move(hits), about);
    });
}

void ask_about(std::string_view name, const std::string &action, Effect effect, uint32_t port,
               const std::function<bool(const Hit &)> &is_hit)
{
    ask_before(name, action, [&] {
        std::vector<Hit> hits = known_onus(port);
        std::erase_if(hits, std::not_fn(is_hit));
        return preview_of(effect, std::move(hits));
    });
}

} // namespace ponctl
