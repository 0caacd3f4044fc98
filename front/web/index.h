// What is known of single ONUs and ports, found in the tables of a state.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "web/json.h"
#include "web/olt_state.h"

namespace front
{

using OnuPlace = std::pair<uint32_t, uint32_t>; // port and id

// Returns the row of an ONU in a table, or null.
template <class Row>
const Row *row_of(const std::shared_ptr<const Rows<Row>> &table, const OnuPlace &onu)
{
    for (const Row &row : rows_of(table))
        if (row.pon_port == onu.first && row.onu_id == onu.second) return &row;
    return nullptr;
}

// Returns the rows of a table by port and id. Rows without an id are left out.
template <class Row>
std::map<OnuPlace, const Row *> by_place(const std::shared_ptr<const Rows<Row>> &table)
{
    std::map<OnuPlace, const Row *> found;
    for (const Row &row : rows_of(table))
        if (const std::optional<uint32_t> id = row.onu_id) found.emplace(OnuPlace{row.pon_port, *id}, &row);
    return found;
}

// Counts active alarms by how bad they are.
struct AlarmCounts {
    uint32_t critical = 0, major = 0, minor = 0;

    void add(std::string_view severity);
    uint32_t all() const { return critical + major + minor; }
    // Returns the worst that there is, or an empty text.
    std::string_view worst() const;
};
void write(Json &json, const AlarmCounts &counts);

// Returns the serial number of an ONU: the vendor, and the last four bytes of the MAC address.
std::string serial_of(std::string_view vendor, const view::Mac &mac);
// Returns "low" when light of the ONU is low on either side, "well" when it is measured and is not, or an empty text.
std::string_view light_of(const OltState &state, uint32_t port, const std::string &mac);
// Returns since when and why an ONU is in its state, or null where the alarms that tell it have not been read yet.
const Fact *fact_of(const OltState &state, const view::onu_info &onu);
// Writes "since", or null where it is not known since when a fact is so.
void write_since(Json &json, const Fact *fact);
// Writes an alarm as an object: its columns, and since when it is known.
void write_alarm(Json &json, const OltState &state, const view::onu_alarm &alarm);

} // namespace front
