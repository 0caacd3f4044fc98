#include "scenario/expectations.h"

#include <algorithm>

#include "scenario/timeline.h"
#include "text/hex.h"

namespace ponsim
{
namespace
{

constexpr size_t longest_text = 1000; // bytes

std::string kind_text(CellKind kind)
{
    static constexpr const char *texts[] = {"true or false", "a number", "a text"};
    return texts[static_cast<size_t>(kind)];
}

// Returns the value as a cell of that kind. Returns nothing when it is of another kind.
std::optional<CellValue> cell_of(const toml_file::Value &value, CellKind kind)
{
    const auto *flag = std::get_if<bool>(&value.value);
    if (flag && kind == CellKind::flag) return *flag;
    const auto *whole = std::get_if<int64_t>(&value.value);
    if (whole && kind == CellKind::number) return static_cast<double>(*whole);
    const auto *real = std::get_if<double>(&value.value);
    if (real && kind == CellKind::number) return *real;
    const auto *text = std::get_if<std::string>(&value.value);
    if (text && kind == CellKind::text && text->size() <= longest_text) return *text;
    return std::nullopt;
}

template <class Named, class Name>
std::vector<std::string> names_of(const std::vector<Named> &all, Name Named::*name)
{
    std::vector<std::string> names;
    for (const Named &each : all)
        names.emplace_back(each.*name);
    return names;
}

const AskedView &read_view(const toml_file::Section &section)
{
    const std::string name = section.needed_name("view");
    const AskedView *view = find_asked_view(name);
    if (!view) section.fail_unknown("view", "view", name, names_of(asked_views(), &AskedView::name));
    return *view;
}

std::optional<size_t> read_column(const toml_file::Section &section, const AskedView &view)
{
    const std::optional<std::string> name = section.name("column");
    if (!name) return std::nullopt;
    const std::optional<size_t> column = view.column(*name);
    if (!column) section.fail_unknown("column", "column", *name, names_of(view.columns, &AskedColumn::name));
    return column;
}

std::vector<Filter> read_filters(const toml_file::Section &section, const AskedView &view)
{
    std::vector<Filter> filters;
    for (const auto &[name, value] : section.members("where")) {
        const std::optional<size_t> column = view.column(name);
        if (!column)
            fail_at(value, "where: there is no column " + name +
                               toml_file::hint(name, names_of(view.columns, &AskedColumn::name)));
        const CellKind kind = view.columns[*column].kind;
        const std::optional<CellValue> cell = cell_of(value, kind);
        if (!cell) fail_at(value, "where: " + name + ": expected " + kind_text(kind) + ", found " + describe(value));
        filters.push_back({*column, *cell});
    }
    return filters;
}

std::regex read_pattern(const toml_file::Section &section, const std::string &key, const std::string &pattern)
{
    try {
        return std::regex(pattern, std::regex::ECMAScript);
    } catch (const std::regex_error &) {
        section.fail_expected(key, "a regular expression");
    }
}

// Reads the conditions that values of that kind are to fulfil.
std::vector<Condition> read_conditions(const toml_file::Section &section, CellKind kind)
{
    std::vector<Condition> conditions;
    for (size_t index = 0; index < std::size(comparison_words); ++index) {
        const std::string key(comparison_words[index]);
        const toml_file::Value *value = section.written(key);
        if (!value) continue;
        Condition condition{static_cast<Comparison>(index), {}};
        if (!compares(condition.comparison, kind))
            section.fail(key, "this compares " +
                                  std::string(condition.comparison < Comparison::contains ? "numbers" : "texts") +
                                  ", and what is looked at is " + kind_text(kind));
        const CellKind compared = condition.comparison == Comparison::null ? CellKind::flag : kind;
        const std::optional<CellValue> cell = cell_of(*value, compared);
        if (!cell) section.fail_expected(key, kind_text(compared));
        condition.value = *cell;
        if (condition.comparison == Comparison::matches)
            condition.pattern = read_pattern(section, key, std::get<std::string>(*cell));
        conditions.push_back(std::move(condition));
    }
    if (conditions.empty())
        section.fail("equals", "expected at least one of equals, not, at_least, at_most, contains, matches and null");
    return conditions;
}

Mac read_onu(const toml_file::Section &section, const PortPopulation &port, uint32_t number)
{
    const std::string name = section.text("onu", 1, 32).value_or("");
    const auto named = std::ranges::find(port.arrivals, name, &Arrival::name);
    if (named != port.arrivals.end()) return named->mac;
    if (const std::optional<Mac> mac = text::to_mac(name)) return *mac;
    section.fail_unknown("onu", "ONU at PON port " + std::to_string(number) + " with the name", name,
                         names_of(port.arrivals, &Arrival::name));
}

// Reads which port and which ONU of the OLT are meant.
Question read_question(const toml_file::Section &section, const AskedView &view, const OltScenario &olt)
{
    Question question{&view};
    question.port = section.number_or("port", 1, olt.settings.ports, 0);
    question.uni = section.number_or("uni", 1, max_unis, 0);
    if (!section.has("onu")) return question;
    if (!section.has("port")) section.fail("onu", "expected with the port at which it is");
    if (!view.tells_onus_apart())
        section.fail("onu", "expected without it: the view " + std::string(view.name) + " does not tell ONUs apart");
    question.onu = read_onu(section, olt.settings.topology->ports[question.port - 1], question.port);
    return question;
}

// Writes what is expected, in the order in which a scenario has it.
std::string text_of(const toml_file::Section &section, const Expectation &expectation)
{
    const AskedView &view = *expectation.question.view;
    std::string text(view.name);
    for (const char *key : {"port", "onu", "uni"})
        if (const toml_file::Value *value = section.written(key))
            text += std::string(" ") + key + '=' + describe(*value);
    for (const Filter &filter : expectation.filters)
        text += " where " + std::string(view.columns[filter.column].name) + '=' + cell_text(filter.value);
    text += expectation.column ? " column " + std::string(view.columns[*expectation.column].name) : " rows";
    for (const Condition &condition : expectation.conditions)
        text += ' ' + std::string(comparison_words[static_cast<size_t>(condition.comparison)]) + ' ' +
                cell_text(condition.value);
    return text;
}

// The part of an expectation that is the same at all OLTs.
Expectation read_expectation(const toml_file::Section &section)
{
    Expectation expectation{.file = section.file_name(),
                            .line = section.line(),
                            .text = {},
                            .question = {&read_view(section)},
                            .filters = {},
                            .column = {},
                            .conditions = {}};
    const AskedView &view = *expectation.question.view;
    expectation.column = read_column(section, view);
    expectation.filters = read_filters(section, view);
    const CellKind kind = expectation.column ? view.columns[*expectation.column].kind : CellKind::number;
    expectation.conditions = read_conditions(section, kind);
    expectation.text = text_of(section, expectation);
    return expectation;
}

} // namespace

void read_expectations(const toml_file::Section &root, Scenario &scenario)
{
    for (const toml_file::Section &section : root.tables("expect")) {
        const std::optional<std::string> name = read_olt_name(section, scenario);
        const std::vector<ModelTime> times = read_times(section);
        const Expectation general = read_expectation(section);
        for (OltScenario &olt : scenario.olts) {
            if (name && *name != olt.name) continue;
            const auto expectation = std::make_shared<Expectation>(general);
            expectation->question = read_question(section, *general.question.view, olt);
            for (const ModelTime at : times)
                olt.checks.push_back({at, expectation});
            if (olt.checks.size() > max_events)
                section.fail("times", "expected at most " + std::to_string(max_events) + " checks of an OLT");
        }
    }
    for (OltScenario &olt : scenario.olts)
        std::ranges::stable_sort(olt.checks, {}, &Check::at);
}

} // namespace ponsim
