// The answer about the plant of a PON port: its tree of splitters, the ONUs in it, and who fell together.
#include <algorithm>
#include <functional>
#include <map>

#include "plant/falls.h"
#include "rest/answers.h"
#include "web/index.h"

namespace front
{
namespace
{

// ONUs that one cut hits are found to be offline within two readings, and the OLT needs some time itself.
constexpr UnixTime slack = 5000;

// A Row is an ONU of the plant, of the port, or both.
struct Row {
    std::string named;                         // as the plant does; empty: it does not
    const view::onu_info *onu = nullptr;       // at the port; null: it is not there
    const view::onu_info *elsewhere = nullptr; // at another one
    const Fact *fact = nullptr;
    std::string_view light = {};
};

struct Counts {
    uint32_t onus = 0, online = 0, offline = 0, unauthenticated = 0, waiting = 0, missing = 0, low_light = 0;

    void add(const Row &row)
    {
        ++onus;
        if (!row.onu) ++missing;
        const std::string_view state = row.onu ? row.onu->state : "";
        online += state == "online";
        offline += state == "offline";
        unauthenticated += state == "unauthenticated";
        waiting += state == "waiting";
        low_light += state == "online" && row.light == "low";
    }
};

// A PlantPage is what is known of a port, put together.
class PlantPage
{
public:
    PlantPage(const OltState &of, uint32_t number, const PortPlant *planned) : state(of), port(number), plan(planned)
    {
        for (const view::onu_info &onu : rows_of(state.snapshot->onus)) {
            const std::string mac = text::mac_text(onu.mac);
            auto &table = onu.pon_port == port ? here : elsewhere;
            const view::onu_info *&known = table[mac];
            if (!known || !known->onu_id) known = &onu; // what is bound counts, and not what waits
        }
        for (const auto &[mac, onu] : here)
            for (const auto &text : {onu->description, onu->text_a})
                if (text && !text->empty()) by_text[std::string(*text)].push_back(onu);
        if (plan) add_planned();
        add_others();
    }

    std::string text(UnixTime period)
    {
        json->StartObject();
        json.member("olt", state.name);
        json.member("pon_port", port);
        json.key("tree");
        plan ? write_node(0) : json.null();
        write_falls(2 * period + slack);
        json.key("unplanned");
        json->StartArray();
        for (const Row &row : rows)
            if (row.named.empty()) write_row(row);
        json->EndArray();
        json->EndObject();
        return json.text();
    }

private:
    void add_planned()
    {
        counts.resize(plan->size());
        for (size_t node = 0; node < plan->size(); ++node) {
            first_of.push_back(rows.size());
            for (const std::string &name : plan->at(node).onus) {
                Row row{.named = name};
                if (const auto found = here.find(name); found != here.end())
                    row.onu = found->second;
                else if (const auto texts = by_text.find(name); texts != by_text.end())
                    row.onu = one_of(texts->second);
                // Who is named in two ways is where the first one says.
                const auto same = [&row](const Row &other) { return row.onu && other.onu == row.onu; };
                if (std::ranges::any_of(rows, same)) row.onu = nullptr;
                if (const auto found = elsewhere.find(name); !row.onu && found != elsewhere.end())
                    row.elsewhere = found->second;
                add(row, node);
            }
        }
    }

    // Returns the ONU that a text names, or null where several have it.
    static const view::onu_info *one_of(const std::vector<const view::onu_info *> &onus)
    {
        const bool same = std::ranges::all_of(onus, [&](const auto *onu) { return onu == onus.front(); });
        return same ? onus.front() : nullptr;
    }

    void add_others()
    {
        std::vector<const view::onu_info *> planned;
        for (const Row &row : rows)
            planned.push_back(row.onu);
        std::ranges::sort(planned);
        for (const view::onu_info &onu : rows_of(state.snapshot->onus)) {
            const auto known = here.find(text::mac_text(onu.mac));
            if (known == here.end() || known->second != &onu) continue;
            if (!std::ranges::binary_search(planned, &onu)) add({.named = {}, .onu = &onu}, std::nullopt);
        }
    }

    void add(Row row, std::optional<size_t> node)
    {
        if (row.onu) {
            row.fact = fact_of(state, *row.onu);
            row.light = light_of(state, port, text::mac_text(row.onu->mac));
        }
        placed.push_back({.node = node,
                          .state = row.onu ? row.onu->state : "",
                          .since = row.fact ? row.fact->since : 0,
                          .cause = row.fact ? std::string_view(row.fact->cause) : ""});
        for (; node; node = plan->at(*node).from)
            counts[*node].add(row);
        rows.push_back(std::move(row));
    }

    void write_row(const Row &row)
    {
        const view::onu_info *const found = row.onu ? row.onu : row.elsewhere;
        const auto put = [&](const char *name, auto of) {
            json.member(name, found ? std::optional(found->*of) : std::nullopt);
        };
        json->StartObject();
        json.member_or_null("named", row.named);
        put("pon_port", &view::onu_info::pon_port);
        json.member("onu_id", found ? found->onu_id : std::nullopt);
        put("mac", &view::onu_info::mac);
        json.member("description", found ? found->description : std::nullopt);
        json.member_or_null("state", row.onu ? row.onu->state : "");
        write_since(json, row.fact);
        json.member_or_null("cause", row.fact ? row.fact->cause : "");
        json.member_or_null("light", row.light);
        json->EndObject();
    }

    void write_counts(const Counts &below)
    {
        json.key("counts");
        json->StartObject();
        json.member("onus", below.onus);
        json.member("online", below.online);
        json.member("offline", below.offline);
        json.member("unauthenticated", below.unauthenticated);
        json.member("waiting", below.waiting);
        json.member("missing", below.missing);
        json.member("low_light", below.low_light);
        json->EndObject();
    }

    void write_node(size_t number)
    {
        const PlantNode &node = plan->at(number);
        json->StartObject();
        json.member("name", node.name);
        json.member("kind", std::string_view(number == 0 ? "feeder" : "splitter"));
        json.member("ratio", node.ratio);
        json.member_or_null("place", node.place);
        json.member("length", node.length);
        write_counts(counts[number]);
        json.key("onus");
        json->StartArray();
        for (size_t index = 0; index < node.onus.size(); ++index)
            write_row(rows[first_of[number] + index]);
        json->EndArray();
        json.key("splitters");
        json->StartArray();
        for (const size_t splitter : node.splitters)
            write_node(splitter);
        json->EndArray();
        json->EndObject();
    }

    void write_falls(UnixTime span)
    {
        static const PortPlant none;
        const PortPlant &nodes = plan ? *plan : none;
        json.key("falls");
        json->StartArray();
        for (const Fall &fall : falls_of(nodes, placed, span)) {
            json->StartObject();
            json.member("first", fall.first);
            json.member("last", fall.last);
            json.member_or_null("cause", fall.cause);
            json.key("onus");
            json->StartArray();
            for (const size_t index : fall.onus)
                write_row(rows[index]);
            json->EndArray();
            json.member("node", fall.node ? std::optional(nodes[*fall.node].name) : std::nullopt);
            json.key("path");
            json->StartArray();
            if (fall.node)
                for (const size_t node : path_to(nodes, *fall.node))
                    json.put(nodes[node].name);
            json->EndArray();
            json.member("whole", fall.whole);
            json->EndObject();
        }
        json->EndArray();
    }

    const OltState &state;
    const uint32_t port;
    const PortPlant *const plan;                                   // null: none
    std::map<std::string, const view::onu_info *> here, elsewhere; // by address
    std::map<std::string, std::vector<const view::onu_info *>> by_text;
    std::vector<Row> rows;         // those of the plan in the order of its nodes, and then the others
    std::vector<PlacedOnu> placed; // likewise
    std::vector<size_t> first_of;  // the first row of each node
    std::vector<Counts> counts;    // of all below each node
    Json json;
};

} // namespace

HttpResponse answer_plant(const Context &context)
{
    const OltState &state = context.state();
    expect_read(state, Table::ports);
    expect_read(state, Table::onus);
    const uint32_t port = context.place_number("port");
    if (std::ranges::find(rows_of(state.snapshot->ports), port, &view::port_info::pon_port) ==
        rows_of(state.snapshot->ports).end())
        not_found(state.name + ": has no PON port " + std::to_string(port));
    const Plant *const plant = context.olt.plant.get();
    const auto found = plant ? plant->ports.find(port) : decltype(plant->ports.end())();
    const PortPlant *const planned = plant && found != plant->ports.end() ? &found->second : nullptr;
    const std::string version = state.version_of({Table::onus}) + "." + (plant ? plant->version : "");
    return versioned(context, version, [&] {
        return PlantPage(state, port, planned).text(1000 * UnixTime{state.snapshot->state(Table::onus).period});
    });
}

} // namespace front
