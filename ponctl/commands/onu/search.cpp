#include "commands/onu/search.h"

#include <algorithm>

#include "call/invocation.h"
#include "diagnosis/facts.h"
#include "output/consent.h"
#include "output/report.h"
#include "results/operands.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// Returns the digits of a text that is a MAC address or its beginning, in any spelling, and otherwise nothing.
std::string mac_digits(const std::string &text)
{
    std::string digits = text::lower_case(text);
    std::erase_if(digits, [](char c) { return c == ':' || c == '-' || c == '.'; });
    return digits.find_first_not_of("0123456789abcdef") == digits.npos ? digits : std::string();
}

// Returns what has the text, or an empty text when nothing has it.
std::string found_by(const FoundOnu &entry, const std::string &wanted)
{
    const std::string digits = mac_digits(wanted), lower = text::lower_case(wanted);
    std::string names;
    const auto add = [&names](std::string_view name) { names.append(names.empty() ? "" : ", ").append(name); };
    for (const std::string_view name : {"mac", "loid", "serial", "description", "text_a", "text_b", "text_c"}) {
        const auto cell = entry.find(name);
        if (cell == entry.end() || cell->second.empty()) continue;
        const bool found = name == "mac" ? !digits.empty() && mac_digits(cell->second).starts_with(digits)
                                         : text::lower_case(cell->second).find(lower) != std::string::npos;
        if (found) add(name);
    }
    return names;
}

} // namespace

Search::Search(std::string text) : wanted(std::move(text))
{
    if (wanted.empty()) throw UsageError("TEXT: empty");
}

ExitCode Search::run()
{
    const Invocation onus("bsp_pon_exec_get_json_", words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", "0"}}),
                          consent());
    if (!onus.good()) return report(onus);
    expect_answer(onus);
    const Invocation kinds("bsp_pon_exec_get_json_",
                           words_of({{"cmd", "BSP_CMD_VIEW_ONU_CAP_SNMP"}, {"pon_port", "0"}}), consent());
    const Invocation records("bsp_pon_get_onu_loidlist", {"pon_port=0"}, consent());
    read_vendors(kinds.good() ? kinds.database() : nullptr);
    read_loids(records.good() ? records.database() : nullptr);
    read_onus(onus.database());
    for (FoundOnu &entry : entries)
        entry["found_by"] = found_by(entry, wanted);
    std::erase_if(entries, [](const FoundOnu &entry) { return entry.at("found_by").empty(); });
    return std::max(report(kinds), report(records));
}

std::string Search::nothing_found() const
{
    return "no ONU has '" + wanted + "' in its MAC address, LOID, serial number, description or bind texts";
}

void Search::read_vendors(const db_handle *kinds)
{
    for (uint32_t row = 0; row < db_rows(kinds); ++row)
        vendors[cell_text(kinds, row, "mac")] = cell_text(kinds, row, "vendor");
}

// A record knows the ONU that has its LOID, also while the ONU is offline. One that no ONU has shown is an entry of
// its own.
void Search::read_loids(const db_handle *records)
{
    for (uint32_t row = 0; row < db_rows(records); ++row) {
        const std::string mac = cell_text(records, row, "mac"), loid = cell_text(records, row, "loid");
        const std::string port = cell_text(records, row, "pon_port"), id = cell_text(records, row, "onu_id");
        if (mac.empty() && !id.empty())
            loids[port + "/" + id] = loid;
        else if (mac.empty())
            entries.push_back({{"pon_port", port}, {"loid", loid}});
        else
            loids[mac] = loid;
    }
}

void Search::read_onus(const db_handle *onus)
{
    std::vector<FoundOnu> known;
    for (uint32_t row = 0; row < db_rows(onus); ++row) {
        FoundOnu entry;
        for (const char *name :
             {"pon_port", "onu_id", "mac", "state", "loid", "description", "text_a", "text_b", "text_c"})
            entry[name] = cell_text(onus, row, name);
        const std::string mac = entry["mac"];
        for (const std::string &key : {mac, entry["pon_port"] + "/" + entry["onu_id"]})
            if (entry["loid"].empty() && loids.contains(key)) entry["loid"] = loids[key];
        entry["serial"] = serial_of(mac);
        known.push_back(std::move(entry));
    }
    entries.insert(entries.begin(), known.begin(), known.end());
}

// Returns the serial number: the vendor, and the last four bytes of the MAC address.
std::string Search::serial_of(const std::string &mac) const
{
    const auto vendor = vendors.find(mac);
    if (vendor == vendors.end() || vendor->second.empty()) return {};
    return vendor->second + text::upper_case(mac_digits(mac).substr(4));
}

} // namespace ponctl
