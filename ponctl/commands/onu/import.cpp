// ponctl onu import brings many ONUs into service from a table, and ponctl onu export writes such a table.
#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>

#include "board/datastore.h"
#include "call/invocation.h"
#include "call/json.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "output/consent.h"
#include "output/csv.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/table.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/preview.h"
#include "results/sla.h"
#include "text/csv.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// These are the columns of the table, as export writes them. Import takes them in any order, and needs the port and the
// MAC address.
constexpr std::array<std::string_view, 16> columns{
    "pon_port", "onu_id",   "mac",       "mode",        "text_a",      "text_b",       "text_c",     "description",
    "loid",     "password", "sla_fixed", "sla_assured", "sla_maximum", "sla_priority", "sla_weight", "sla_down"};

constexpr size_t longest_text = 127, longest_short_text = 63, longest_loid = 24, longest_password = 12;

// A Line is what a line of the table wants of one ONU, by the names of the columns. Empty texts want nothing.
struct Line {
    size_t number;
    std::map<std::string_view, std::string> cells;
    std::optional<Onu> onu; // where it is, or will be; nothing until the service chose an id
    bool bind = true, describe = false, add_loid = false, set_sla = false;
    Hit hit = {}; // the ONU as it is now, and what becomes different of it

    const std::string &at(std::string_view name) const { return cells.at(name); }
    std::string place() const { return at("pon_port") + "/" + (onu ? std::to_string(onu->id) : "?"); }
    Sla sla() const
    {
        return {at("sla_fixed"),    at("sla_assured"), at("sla_maximum"),
                at("sla_priority"), at("sla_weight"),  at("sla_down")};
    }
    // Returns what is to be done, for people.
    std::string work() const
    {
        std::vector<std::string> words;
        for (const auto &[wanted, word] :
             {std::pair{bind, "bind"}, {describe, "description"}, {add_loid, "LOID"}, {set_sla, "SLA"}})
            if (wanted) words.emplace_back(word);
        return words.empty() ? "nothing" : text::join(words);
    }
};

// A Problems collects what is wrong with a table, so that all of it is said at once.
class Problems
{
public:
    void add(size_t line, const std::string &what) { said.push_back("line " + std::to_string(line) + ": " + what); }
    // Throws a UsageError with all problems, if there are some.
    void refuse(const std::string &file) const
    {
        if (!said.empty()) throw UsageError(file + ": nothing was done:\n  " + text::join(said, "\n  "));
    }

private:
    std::vector<std::string> said;
};

// Takes away what export put before a text that a spreadsheet would take for a formula.
std::string without_guard(const std::string &cell)
{
    return cell.size() > 1 && cell[0] == '\'' && std::string_view("=+-@").find(cell[1]) != std::string_view::npos
               ? cell.substr(1)
               : cell;
}

std::string content_of(const std::string &file)
{
    if (file == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
    std::ifstream in(file, std::ios::binary);
    if (!in) throw UsageError("FILE: cannot read '" + file + "'");
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string_view> heading_of(const text::CsvRow &row)
{
    std::vector<std::string_view> heading;
    for (const std::string &cell : row.cells) {
        const auto known = std::ranges::find(columns, cell);
        if (known == columns.end())
            throw UsageError("FILE: line " + std::to_string(row.line) + ": '" + cell + "' is not a column" +
                             text::suggestion(cell, columns) + " (known are " + text::join(columns) + ")");
        if (std::ranges::find(heading, *known) != heading.end())
            throw UsageError("FILE: line " + std::to_string(row.line) + ": two columns " + cell);
        heading.push_back(*known);
    }
    for (const std::string_view needed : {"pon_port", "mac"})
        if (std::ranges::find(heading, needed) == heading.end())
            throw UsageError("FILE: line " + std::to_string(row.line) + ": no column " + std::string(needed));
    return heading;
}

void check_number(const Line &line, std::string_view column, uint32_t least, uint32_t greatest)
{
    const std::string &cell = line.at(column);
    if (cell.empty()) return;
    const uint32_t number = parse_number(column, cell, greatest);
    if (number < least)
        throw UsageError(std::string(column) + ": '" + cell + "' is not a number from " + std::to_string(least) +
                         " to " + std::to_string(greatest));
}

// Reads the values of a line. Throws a UsageError that names the column.
void check_line(Line &line)
{
    if (line.at("pon_port").empty()) throw UsageError("pon_port: missing");
    check_number(line, "pon_port", 1, UINT32_MAX);
    check_number(line, "onu_id", 0, max_onu_id);
    check_number(line, "mode", 0, UINT32_MAX);
    check_sla(line.sla(), {"sla_fixed", "sla_assured", "sla_maximum", "sla_priority", "sla_weight", "sla_down"});
    for (const char *column : {"text_a", "description"})
        check_text(column, line.at(column), longest_text);
    for (const char *column : {"text_b", "text_c"})
        check_text(column, line.at(column), longest_short_text);
    check_text("loid", line.at("loid"), longest_loid);
    check_text("password", line.at("password"), longest_password);
    if (line.at("loid").empty() && !line.at("password").empty())
        throw UsageError("password: goes with a loid, whose password it is");
    line.cells["mac"] = text::mac_text(parse_mac("mac", line.at("mac")));
    const uint32_t port = parse_number("pon_port", line.at("pon_port"));
    line.cells["pon_port"] = std::to_string(port);
    if (!line.at("onu_id").empty()) line.onu = Onu{port, parse_number("onu_id", line.at("onu_id"))};
}

// Refuses lines that name one ONU, or one id, twice.
void check_twice(const std::vector<Line> &lines, Problems &problems)
{
    std::map<std::string, size_t> seen;
    for (const Line &line : lines)
        for (const std::string &name : {line.at("mac"), line.onu ? line.onu->name() : std::string()})
            if (!name.empty() && !seen.emplace(name, line.number).second)
                problems.add(line.number, name + " is on line " + std::to_string(seen[name]) + " already");
}

std::vector<Line> read_lines(const std::string &file, Problems &problems)
{
    const std::string content = content_of(file);
    std::vector<text::CsvRow> rows;
    try {
        rows = text::read_csv(content);
    } catch (const std::runtime_error &wrong) {
        throw UsageError("FILE: " + std::string(wrong.what()));
    }
    if (rows.empty()) throw UsageError("FILE: '" + file + "' is empty");
    const std::vector<std::string_view> heading = heading_of(rows.front());
    std::vector<Line> lines;
    for (size_t index = 1; index < rows.size(); ++index) {
        const text::CsvRow &row = rows[index];
        Line line{row.line, {}, {}};
        for (const std::string_view column : columns)
            line.cells[column];
        if (row.cells.size() > heading.size()) {
            problems.add(row.line, std::to_string(row.cells.size()) + " cells, but there are " +
                                       std::to_string(heading.size()) + " columns");
            continue;
        }
        for (size_t column = 0; column < row.cells.size(); ++column)
            line.cells[heading[column]] = without_guard(row.cells[column]);
        try {
            check_line(line);
            lines.push_back(std::move(line));
        } catch (const UsageError &wrong) {
            problems.add(row.line, wrong.what());
        }
    }
    check_twice(lines, problems);
    return lines;
}

// The Present is what the OLT has of all ONUs, by the names of the columns.
class Present
{
public:
    using Row = std::map<std::string, std::string>;

    // Reads it of all ports. With a port, reads it of that one alone. Returns the exit code of the first call that
    // failed.
    ExitCode read(const std::string &port = "0")
    {
        if (const ExitCode code = read_onus(port); code != exit_success) return code;
        if (const ExitCode code = read_loids(port); code != exit_success) return code;
        for (const std::string &one : ports())
            if (const ExitCode code = read_slas(one); code != exit_success) return code;
        return exit_success;
    }

    const std::vector<Row> &rows() const { return onus; }
    const Row *find(std::string_view column, const std::string &value, const std::string &port = {}) const
    {
        for (const Row &onu : onus)
            if (onu.at(std::string(column)) == value && (port.empty() || onu.at("pon_port") == port)) return &onu;
        return nullptr;
    }
    bool has_loid(const std::string &port, const std::string &loid) const
    {
        return std::ranges::find(loids, std::pair{port, loid}) != loids.end();
    }

private:
    static std::string cell_of(const db_handle *database, uint32_t row, const char *column)
    {
        const char *text = db_get_text(database, row, column);
        return text ? text : "";
    }

    ExitCode read_onus(const std::string &port)
    {
        const Invocation listed("bsp_pon_exec_get_json_",
                                words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", port}}), looking());
        if (!listed.good()) return report(listed);
        for (uint32_t row = 0; row < db_rows(listed.database()); ++row) {
            if (cell_of(listed.database(), row, "onu_id").empty()) continue;
            Row &onu = onus.emplace_back();
            for (const std::string_view column : columns)
                onu[std::string(column)];
            for (const char *column :
                 {"pon_port", "onu_id", "mac", "state", "mode", "text_a", "text_b", "text_c", "description"})
                onu[column] = cell_of(listed.database(), row, column);
        }
        return exit_success;
    }

    ExitCode read_loids(const std::string &port)
    {
        const Invocation listed("bsp_pon_get_onu_loidlist", {"pon_port=" + port}, looking());
        if (!listed.good()) return report(listed);
        for (uint32_t row = 0; row < db_rows(listed.database()); ++row) {
            const std::string at = cell_of(listed.database(), row, "pon_port");
            const std::string id = cell_of(listed.database(), row, "onu_id");
            const std::string loid = cell_of(listed.database(), row, "loid");
            loids.emplace_back(at, loid);
            if (Row *onu = id.empty() ? nullptr : bound(at, id)) (*onu)["loid"] = loid;
        }
        return exit_success;
    }

    ExitCode read_slas(const std::string &port)
    {
        constexpr std::array<std::pair<const char *, const char *>, 5> up_columns{{{"fixed", "sla_fixed"},
                                                                                   {"assured", "sla_assured"},
                                                                                   {"max", "sla_maximum"},
                                                                                   {"prio", "sla_priority"},
                                                                                   {"wt", "sla_weight"}}};
        const Invocation up("bsp_pon_onu_sla_get_web", {"pon_port=" + port}, looking());
        if (!up.good()) return report(up);
        const Invocation down("bsp_pon_onu_sla_down_get_web", {"pon_port=" + port}, looking());
        if (!down.good()) return report(down);
        for (uint32_t row = 0; row < db_rows(up.database()); ++row)
            if (Row *onu = bound(port, cell_of(up.database(), row, "onu_id")))
                for (const auto &[from, to] : up_columns)
                    (*onu)[to] = cell_of(up.database(), row, from);
        for (uint32_t row = 0; row < db_rows(down.database()); ++row)
            if (Row *onu = bound(port, cell_of(down.database(), row, "onu_id")))
                (*onu)["sla_down"] = cell_of(down.database(), row, "max");
        return exit_success;
    }

    std::vector<std::string> ports() const
    {
        std::vector<std::string> found;
        for (const Row &onu : onus)
            if (found.empty() || found.back() != onu.at("pon_port")) found.push_back(onu.at("pon_port"));
        return found;
    }

    Row *bound(const std::string &port, const std::string &id)
    {
        for (Row &onu : onus)
            if (onu["pon_port"] == port && onu["onu_id"] == id) return &onu;
        return nullptr;
    }

    std::vector<Row> onus;
    std::vector<std::pair<std::string, std::string>> loids; // ports and LOIDs
};

// Says what a line has to do, beside what the OLT has already. Throws a UsageError when it cannot be done.
void plan(Line &line, const Present &present)
{
    const Present::Row *known = present.find("mac", line.at("mac"));
    const Present::Row *owner =
        line.onu ? present.find("onu_id", std::to_string(line.onu->id), line.at("pon_port")) : nullptr;
    if (owner && owner != known) throw UsageError("onu_id: " + line.onu->name() + " is bound to " + owner->at("mac"));
    if (known) {
        const Onu at{parse_number("pon_port", known->at("pon_port")), parse_number("onu_id", known->at("onu_id"))};
        if (known->at("pon_port") != line.at("pon_port") || (line.onu && line.onu->id != at.id))
            throw UsageError("mac: " + line.at("mac") + " is bound as " + at.name());
        for (const char *column : {"mode", "text_a", "text_b", "text_c"})
            if (!line.at(column).empty() && line.at(column) != known->at(column))
                throw UsageError(std::string(column) + ": " + at.name() + " is bound with '" + known->at(column) +
                                 "'; release it first");
        line.onu = at;
        line.bind = false;
    }
    line.hit.port = parse_number("pon_port", line.at("pon_port"));
    if (line.onu) line.hit.id = line.onu->id;
    line.hit.mac = line.at("mac");
    if (known) {
        line.hit.state = known->at("state");
        line.hit.description = known->at("description");
    }
    if (line.bind) line.hit.changes.push_back({"bound", "no", "yes"});
    const auto differs = [&](const char *column) {
        const std::string before = known ? known->at(column) : std::string();
        if (line.at(column).empty() || (known && before == line.at(column))) return false;
        line.hit.changes.push_back({column, before, line.at(column)});
        return true;
    };
    line.describe = differs("description");
    line.add_loid = !line.at("loid").empty() &&
                    (!line.at("password").empty() || !present.has_loid(line.at("pon_port"), line.at("loid")));
    if (line.add_loid) line.hit.changes.push_back({"loid", known ? known->at("loid") : "", line.at("loid")});
    for (const char *column : {"sla_fixed", "sla_assured", "sla_maximum", "sla_priority", "sla_weight", "sla_down"})
        if (differs(column)) line.set_sla = true;
}

std::string plan_text(const std::vector<Line> &lines)
{
    Table table({{"LINE", Table::Fit::right}, {"ONU"}, {"MAC"}, {"DESCRIPTION", Table::Fit::wrap}, {"TO DO"}});
    for (const Line &line : lines)
        table.add({std::to_string(line.number), line.place(), line.at("mac"),
                   line.at("description").empty() ? "-" : line.at("description"), line.work()});
    return table_text(table);
}

// Binds the ONU of a line. Returns false when that failed, or when its id is not known.
bool bind(Line &line, std::deque<Invocation> &calls)
{
    const std::string mode = line.at("mode").empty() ? "0" : line.at("mode");
    const Invocation &bound = calls.emplace_back(line.onu ? "bsp_pon_bind_onu_spec_id" : "bsp_pon_bind_onu_auto_id",
                                                 words_of({{"pon_port", line.at("pon_port")},
                                                           {"onu_id", line.onu ? std::to_string(line.onu->id) : ""},
                                                           {"mac", line.at("mac")},
                                                           {"text_a", line.at("text_a")},
                                                           {"text_b", line.at("text_b")},
                                                           {"value", mode},
                                                           {"text_c", line.at("text_c")}}),
                                                 consent());
    if (!bound.good() || line.onu) return bound.good();
    if (bound.exchange().kept_back) return false;
    const Invocation &found = calls.emplace_back(
        "bsp_pon_get_w_onu_by_mac", words_of({{"pon_port", line.at("pon_port")}, {"mac", line.at("mac")}}), looking());
    if (!found.good()) return false;
    const Reading reading = found.response();
    const catalogue::Field &id = *catalogue::find_field(reading.record->fields, "onu_id");
    line.onu = Onu{parse_number("pon_port", line.at("pon_port")), load_word(field_bytes(id, reading.bytes).data())};
    return true;
}

// Does what a line wants. The calls stay in `calls`, and the last of them is the one that failed, if one did.
void carry_out(Line &line, std::deque<Invocation> &calls)
{
    if (line.bind && !bind(line, calls)) return;
    if (line.describe && !calls
                              .emplace_back("bsp_pon_onu_description",
                                            words_of({{"pon_port", line.at("pon_port")},
                                                      {"onu_id", std::to_string(line.onu->id)},
                                                      {"text", line.at("description")}}),
                                            consent())
                              .good())
        return;
    if (line.add_loid && !calls
                              .emplace_back("bsp_pon_onu_ctc_add_loid",
                                            words_of({{"rec.pon_port", line.at("pon_port")},
                                                      {"rec.text45", line.at("loid")},
                                                      {"rec.text109", line.at("password")}}),
                                            consent())
                              .good())
        return;
    // Of an ONU that a dry run has not bound, nobody can say how its bandwidth stands.
    if (line.set_sla && !(line.bind && mode().dry_run)) set_sla(*line.onu, line.sla(), calls);
}

// A Result is what became of a line.
struct Result {
    const Line *line;
    std::deque<Invocation> calls;

    const Invocation *failed() const { return calls.empty() || calls.back().good() ? nullptr : &calls.back(); }
};

void print_results(const Output &output, const std::deque<Result> &results)
{
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const Result &result : results) {
            json->StartObject();
            json.member("line", static_cast<uint32_t>(result.line->number));
            json.member("onu", result.line->place());
            json.member("mac", result.line->at("mac"));
            json.member("work", result.line->work());
            json.member("failed", result.failed() ? result.failed()->operation().name : std::string_view());
            json.status(result.failed() ? result.failed()->status() : 0);
            json->EndObject();
        }
        json->EndArray();
        return;
    }
    Table table({{"LINE", Table::Fit::right}, {"ONU"}, {"MAC"}, {"WORK"}, {"RESULT", Table::Fit::wrap}});
    for (const Result &result : results)
        table.add({std::to_string(result.line->number), result.line->place(), result.line->at("mac"),
                   result.line->work(),
                   result.failed() ? "failed: " + std::string(result.failed()->operation().brief) : "done"});
    table.print(output);
}

void refuse_bytes(const Output &output)
{
    if (output.format == Format::hex)
        throw UsageError("--output: a table of ONUs has no bytes to show; take table, csv or json");
}

ExitCode run_onu_import(const Output &output, const std::string &file)
{
    if (!mode().dry_run) refuse_bytes(output);
    Problems problems;
    std::vector<Line> lines = read_lines(file, problems);
    problems.refuse("FILE");
    Present present;
    if (const ExitCode code = present.read(); code != exit_success) return code;
    for (Line &line : lines) {
        try {
            plan(line, present);
        } catch (const UsageError &wrong) {
            problems.add(line.number, wrong.what());
        }
    }
    problems.refuse("FILE");
    const auto busy = std::ranges::count_if(lines, [](const Line &line) { return line.work() != "nothing"; });
    if (busy > 0 || mode().dry_run)
        ask_before("bsp_pon_bind_onu_spec_id",
                   "importing " + std::to_string(busy) + (busy == 1 ? " ONU" : " ONUs") + ", of " +
                       std::to_string(lines.size()) + (lines.size() == 1 ? " line" : " lines"),
                   [&lines] {
                       return Preview{plan_text(lines), {}};
                   });
    std::deque<Result> results;
    for (Line &line : lines) {
        Result &result = results.emplace_back(&line);
        expect_hits({line.hit});
        carry_out(line, result.calls);
    }
    print_results(output, results);
    std::fflush(output.stream);
    ExitCode worst = exit_success;
    for (const Result &result : results)
        for (const Invocation &called : result.calls)
            worst = std::max(worst, report(called, "line " + std::to_string(result.line->number) + ": "));
    return worst;
}

ExitCode run_onu_export(const Output &output, const std::string &port)
{
    refuse_bytes(output);
    Present present;
    if (const ExitCode code = present.read(port_of(port)); code != exit_success) return code;
    const auto write = [&present](JsonText &json) {
        json->StartArray();
        for (const Present::Row &onu : present.rows()) {
            json->StartObject();
            for (const std::string_view column : columns)
                if (column != "password") json.member(column, onu.at(std::string(column)));
            json->EndObject();
        }
        json->EndArray();
    };
    if (output.format == Format::json) {
        Json json(output.stream);
        write(json);
        return exit_success;
    }
    JsonText json;
    write(json);
    std::string heading;
    print_csv(output, json.written(), heading);
    return exit_success;
}

} // namespace

void add_import(Command &onu)
{
    Command &import = onu.add("import", "Binds and sets up the ONUs of a CSV file, a line an ONU");
    std::string &file = import.runs(run_onu_import);
    import.argument("FILE", &file, "the file, as 'ponctl onu export' writes it; - is standard input").is_required();
    import.footer = "Columns: " + text::join(columns) +
                    ". pon_port and mac are needed; what is empty or missing stays as it is. All lines are checked "
                    "before the first one is carried out.";

    Command &table = onu.add("export", "Writes the bound ONUs as the CSV file that 'ponctl onu import' reads");
    std::string &port = table.runs(run_onu_export);
    table.argument("PORT", &port, "PON port number; all ports when left out");
}

} // namespace ponctl
