// What is asked of the history: events by what they are about, and light over time.
#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>

#include "history/history.h"
#include "text/words.h"

namespace front
{

using storage::Statement;

namespace
{

// Returns whether an id is one of a text as 1-5,9.
bool holds(const std::string &ids, uint32_t id)
{
    for (const std::string &run : text::split(ids, ',')) {
        const uint32_t first = static_cast<uint32_t>(std::strtoul(run.c_str(), nullptr, 10));
        const size_t dash = run.find('-');
        const uint32_t last =
            dash == run.npos ? first : static_cast<uint32_t>(std::strtoul(run.c_str() + dash + 1, nullptr, 10));
        if (first <= id && id <= last) return true;
    }
    return false;
}

bool is_about(const Event &event, const EventQuery &query)
{
    return !query.onu_id || event.count == 1 || holds(event.onus, *query.onu_id);
}

} // namespace

std::vector<Event> History::find(const EventQuery &query, size_t most_events) const
{
    std::string sql = std::string(event_columns) + " WHERE 1";
    std::vector<storage::Cell> values;
    const auto where = [&](const char *condition, storage::Cell value) {
        sql += std::string(" AND ") + condition;
        values.push_back(std::move(value));
    };
    if (!query.olt.empty()) where("olt = ?", query.olt);
    if (query.port) where("port = ?", int64_t{*query.port});
    // Of an ONU are also the events in which several are told of together, and which have ids in place of addresses.
    if (!query.mac.empty()) where(query.onu_id ? "(count > 1 OR mac = ?)" : "mac = ?", query.mac);
    if (query.mac.empty() && query.onu_id) where("(count > 1 OR onu_id = ?)", int64_t{*query.onu_id});
    if (query.from) where("at >= ?", *query.from);
    if (query.to) where("at <= ?", *query.to);
    if (query.before) where("id < ?", static_cast<int64_t>(std::min<uint64_t>(*query.before, INT64_MAX)));
    if (query.after) where("id > ?", static_cast<int64_t>(std::min<uint64_t>(*query.after, INT64_MAX)));
    if (!query.kinds.empty()) {
        sql += " AND kind IN (";
        for (size_t number = 0; number < query.kinds.size(); ++number) {
            sql += number > 0 ? ", ?" : "?";
            values.push_back(std::string(name_of(query.kinds[number])));
        }
        sql += ")";
    }
    sql += " ORDER BY id DESC LIMIT ?";
    values.push_back(static_cast<int64_t>(most_events));

    const std::lock_guard lock(guard);
    Statement select(db.get(), sql);
    for (const storage::Cell &value : values)
        select.bind_cell(value);
    std::vector<Event> found;
    while (select.row())
        if (std::optional<Event> event = event_in(select); event && is_about(*event, query))
            found.push_back(std::move(*event));
    return found;
}

std::pair<uint64_t, uint64_t> History::bounds() const
{
    const std::lock_guard lock(guard);
    Statement select(db.get(), "SELECT coalesce(min(id), 0), coalesce(max(id), 0) FROM event");
    if (!select.row()) return {};
    return {static_cast<uint64_t>(select.number(0)), static_cast<uint64_t>(select.number(1))};
}

void History::keep_light(const std::string &olt, UnixTime at, std::span<const view::onu_optics_table> table)
{
    const std::vector<uint8_t> block = light_block(table);
    const std::lock_guard lock(guard);
    Statement last(db.get(), "SELECT max(at) FROM light WHERE olt = ?");
    last.bind(olt);
    const bool any = last.row() && !last.is_null(0);
    const UnixTime before = any ? last.number(0) : 0;
    // A clock that was set back must not stop this for good.
    if (any && at >= before && at - before < light_step * 9 / 10) return;
    Statement keep(db.get(), "INSERT OR REPLACE INTO light VALUES(?, ?, ?, ?)");
    keep.bind(olt).bind(at).bind(int64_t{!any || before / light_hour != at / light_hour}).bind(std::span(block)).run();
    Statement drop(db.get(), "DELETE FROM light WHERE olt = ? AND (at < ? OR (at < ? AND hourly = 0) OR at > ?)");
    drop.bind(olt).bind(at - most.hourly).bind(at - most.light).bind(at).run();
}

std::vector<LightSample> History::light_of(const std::string &olt, uint32_t port, const view::Mac &mac, UnixTime from,
                                           UnixTime to) const
{
    const std::lock_guard lock(guard);
    Statement select(db.get(), "SELECT at, block FROM light WHERE olt = ? AND at BETWEEN ? AND ? ORDER BY at");
    select.bind(olt).bind(from).bind(to);
    std::vector<LightSample> samples;
    while (select.row()) {
        std::optional<LightSample> sample = sample_in(select.bytes(1), port, mac);
        if (!sample) continue;
        sample->at = select.number(0);
        samples.push_back(*sample);
    }
    return samples;
}

} // namespace front
