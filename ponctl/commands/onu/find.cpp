// ponctl onu find looks for ONUs on all ports by whatever somebody knows of them.
#include <algorithm>
#include <array>
#include <map>

#include "board/datastore.h"
#include "call/invocation.h"
#include "call/json.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/listing.h"
#include "results/operands.h"
#include "text/hex.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::Column;
using catalogue::ColumnType;

// These are the columns of what was found, in order.
constexpr std::array<Column, 9> found_columns{
    {{"pon_port", "PORT", ColumnType::u32, false, {}, "PON port number"},
     {"onu_id", "ID", ColumnType::u32, true, {}, "ONU id; null while the ONU waits"},
     {"mac", "MAC", ColumnType::mac, true, {}, "MAC address; null of a LOID that no ONU has shown"},
     {"state", "STATE", ColumnType::text, true, {}, "state of the ONU"},
     {"found_by", "FOUND BY", ColumnType::text, false, {}, "what has the text"},
     {"loid", "LOID", ColumnType::text, true, {}, "its LOID"},
     {"serial", "SERIAL", ColumnType::text, true, {}, "its serial number"},
     {"description", "DESCRIPTION", ColumnType::text, true, {}, "its description"},
     {"text_a", "TEXT A", ColumnType::text, true, {}, "first bind text"}}};

const catalogue::View &found_view()
{
    static const catalogue::View view{"found_onus", {}, found_columns, "A row an ONU in which the text was found."};
    return view;
}

std::string cell_of(const db_handle *database, uint32_t row, const char *column)
{
    const char *text = db_get_text(database, row, column);
    return text ? text : "";
}

// Returns the digits of a text that is a MAC address or its beginning, in any spelling, and otherwise nothing.
std::string mac_digits(const std::string &text)
{
    std::string digits = text::lower_case(text);
    std::erase_if(digits, [](char c) { return c == ':' || c == '-' || c == '.'; });
    return digits.find_first_not_of("0123456789abcdef") == digits.npos ? digits : std::string();
}

// An Entry is all that is known of an ONU, by the names of the columns.
using Entry = std::map<std::string_view, std::string>;

// Returns what has the text, or an empty text when nothing has it.
std::string found_by(const Entry &entry, const std::string &wanted)
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

// A Search asks for all that is known of ONUs. It stays good until a question fails.
class Search
{
public:
    explicit Search(std::string text) : wanted(std::move(text)) {}

    ExitCode run(const Output &output)
    {
        const Invocation onus("bsp_pon_exec_get_json_",
                              words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", "0"}}), consent());
        if (!onus.good()) return report(onus);
        expect_answer(onus);
        const Invocation kinds("bsp_pon_exec_get_json_",
                               words_of({{"cmd", "BSP_CMD_VIEW_ONU_CAP_SNMP"}, {"pon_port", "0"}}), consent());
        const Invocation records("bsp_pon_get_onu_loidlist", {"pon_port=0"}, consent());
        read_vendors(kinds.good() ? kinds.database() : nullptr);
        read_loids(records.good() ? records.database() : nullptr);
        read_onus(onus.database());
        const std::string document = found();
        if (!document.empty()) {
            const Database rows(db_from_string(document.c_str()));
            print_listing(output, rows.get(), &found_view());
        }
        const ExitCode code = std::max(report(kinds), report(records));
        if (!document.empty() || code != exit_success) return code;
        complain("no ONU has '" + wanted + "' in its MAC address, LOID, serial number, description or bind texts");
        return exit_status;
    }

private:
    void read_vendors(const db_handle *kinds)
    {
        for (uint32_t row = 0; row < db_rows(kinds); ++row)
            vendors[cell_of(kinds, row, "mac")] = cell_of(kinds, row, "vendor");
    }

    // A record knows the ONU that has its LOID, also while the ONU is offline. One that no ONU has shown is an entry of
    // its own.
    void read_loids(const db_handle *records)
    {
        for (uint32_t row = 0; row < db_rows(records); ++row) {
            const std::string mac = cell_of(records, row, "mac"), loid = cell_of(records, row, "loid");
            const std::string port = cell_of(records, row, "pon_port"), id = cell_of(records, row, "onu_id");
            if (mac.empty() && !id.empty())
                loids[port + "/" + id] = loid;
            else if (mac.empty())
                entries.push_back({{"pon_port", port}, {"loid", loid}});
            else
                loids[mac] = loid;
        }
    }

    void read_onus(const db_handle *onus)
    {
        std::vector<Entry> known;
        for (uint32_t row = 0; row < db_rows(onus); ++row) {
            Entry entry;
            for (const char *name :
                 {"pon_port", "onu_id", "mac", "state", "loid", "description", "text_a", "text_b", "text_c"})
                entry[name] = cell_of(onus, row, name);
            const std::string mac = entry["mac"];
            for (const std::string &key : {mac, entry["pon_port"] + "/" + entry["onu_id"]})
                if (entry["loid"].empty() && loids.contains(key)) entry["loid"] = loids[key];
            entry["serial"] = serial_of(mac);
            known.push_back(std::move(entry));
        }
        entries.insert(entries.begin(), known.begin(), known.end());
    }

    // Returns the serial number: the vendor, and the last four bytes of the MAC address.
    std::string serial_of(const std::string &mac) const
    {
        const auto vendor = vendors.find(mac);
        if (vendor == vendors.end() || vendor->second.empty()) return {};
        return vendor->second + text::upper_case(mac_digits(mac).substr(4));
    }

    // Returns the document of the entries that have the text, or an empty text when there are none.
    std::string found()
    {
        JsonText json;
        json->StartArray();
        bool any = false;
        for (Entry &entry : entries) {
            entry["found_by"] = found_by(entry, wanted);
            if (entry["found_by"].empty()) continue;
            any = true;
            json->StartObject();
            for (const Column &column : found_columns) {
                const std::string &cell = entry[column.name];
                json.key(column.name);
                if (cell.empty() && column.nullable)
                    json->Null();
                else if (column.type == ColumnType::u32)
                    json.number(cell);
                else
                    json.text(cell);
            }
            json->EndObject();
        }
        json->EndArray();
        return any ? json.written() : std::string();
    }

    const std::string wanted;
    std::map<std::string, std::string> vendors; // by MAC address
    std::map<std::string, std::string> loids;   // by MAC address, or by port and id
    std::vector<Entry> entries;
};

ExitCode run_onu_find(const Output &output, const std::string &text)
{
    if (text.empty()) throw UsageError("TEXT: empty");
    return Search(text).run(output);
}

} // namespace

void add_find(Command &onu)
{
    Command &find = onu.add("find", "Finds ONUs on all ports by what is known of them");
    std::string &text = find.runs(run_onu_find);
    find.argument("TEXT", &text,
                  "a MAC address or its beginning in any spelling, or a part of a LOID, serial number, description or "
                  "bind text, in capital letters or not")
        .is_required();
}

} // namespace ponctl
