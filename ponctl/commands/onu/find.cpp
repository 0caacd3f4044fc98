// ponctl onu find looks for ONUs on all ports by whatever somebody knows of them.
#include <array>

#include "board/datastore.h"
#include "call/json.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "commands/onu/search.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/listing.h"

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

// Returns the document of what was found.
std::string rows_of(const std::vector<FoundOnu> &found)
{
    JsonText json;
    json->StartArray();
    for (const FoundOnu &onu : found) {
        json->StartObject();
        for (const Column &column : found_columns) {
            const auto cell = onu.find(column.name);
            const bool empty = cell == onu.end() || cell->second.empty();
            json.key(column.name);
            if (empty && column.nullable)
                json->Null();
            else if (column.type == ColumnType::u32)
                json.number(cell->second);
            else
                json.text(cell->second);
        }
        json->EndObject();
    }
    json->EndArray();
    return json.written();
}

ExitCode run_onu_find(const Output &output, const std::string &text)
{
    Search search(text);
    const ExitCode code = search.run();
    if (!search.found().empty()) {
        const Database rows(db_from_string(rows_of(search.found()).c_str()));
        print_listing(output, rows.get(), &found_view());
    }
    if (!search.found().empty() || code != exit_success) return code;
    complain(search.nothing_found());
    return exit_status;
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
