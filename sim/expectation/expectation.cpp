#include "expectation/expectation.h"

#include <algorithm>

#include "bsp_pon.h"

namespace ponsim
{
namespace
{

// Writes which row it is, by the columns that tell rows apart.
std::string row_text(const AskedView &view, const std::vector<CellValue> &row)
{
    std::string text;
    for (const char *name : {"pon_port", "onu_id", "uni", "mac"})
        if (const std::optional<size_t> column = view.column(name))
            text += (text.empty() ? "" : " ") + std::string(name) + '=' + cell_text(row[*column]);
    return text;
}

std::string status_text(uint32_t status)
{
    const catalogue::Status *known = catalogue::find_status(status);
    return known ? "no answer: " + std::string(known->brief) : "status " + std::to_string(status);
}

} // namespace

bool compares(Comparison comparison, CellKind kind)
{
    switch (comparison) {
    case Comparison::at_least:
    case Comparison::at_most:
        return kind == CellKind::number;
    case Comparison::contains:
    case Comparison::matches:
        return kind == CellKind::text;
    case Comparison::equals:
    case Comparison::differs:
    case Comparison::null:
        break;
    }
    return true;
}

bool Condition::holds(const CellValue &cell) const
{
    const bool is_null = std::holds_alternative<std::monostate>(cell);
    switch (comparison) {
    case Comparison::equals:
        return cell == value;
    case Comparison::differs:
        return cell != value;
    case Comparison::null:
        return is_null == std::get<bool>(value);
    case Comparison::at_least:
        return !is_null && std::get<double>(cell) >= std::get<double>(value);
    case Comparison::at_most:
        return !is_null && std::get<double>(cell) <= std::get<double>(value);
    case Comparison::contains:
        return !is_null && std::get<std::string>(cell).find(std::get<std::string>(value)) != std::string::npos;
    case Comparison::matches:
        break;
    }
    return !is_null && std::regex_match(std::get<std::string>(cell), *pattern);
}

std::optional<std::string> Expectation::objection(const Olt &olt) const
{
    Rows found = ask(olt, question);
    if (found.status != BSP_OK) return status_text(found.status);
    std::erase_if(found.rows, [&](const std::vector<CellValue> &row) {
        return std::ranges::any_of(filters, [&](const Filter &filter) { return row[filter.column] != filter.value; });
    });
    const auto fulfils = [&](const CellValue &cell) {
        return std::ranges::all_of(conditions, [&](const Condition &condition) { return condition.holds(cell); });
    };
    if (!column) {
        const CellValue count = static_cast<double>(found.rows.size());
        if (fulfils(count)) return std::nullopt;
        return cell_text(count);
    }
    if (found.rows.empty()) return "no row";
    const auto bad = [&](const std::vector<CellValue> &row) { return !fulfils(row[*column]); };
    const auto first = std::ranges::find_if(found.rows, bad);
    if (first == found.rows.end()) return std::nullopt;
    std::string cell = cell_text((*first)[*column]);
    if (found.rows.size() > 1)
        cell += " at " + row_text(*question.view, *first) + ", one of " +
                std::to_string(std::ranges::count_if(found.rows, bad)) + " such rows among " +
                std::to_string(found.rows.size());
    return cell;
}

} // namespace ponsim
