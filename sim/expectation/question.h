// A Question is what a client asks of an OLT: the rows of a view, or the fields of an answer, which are one row.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "catalogue.h"
#include "model/olt/olt.h"

namespace ponsim
{

enum class CellKind : uint32_t { flag, number, text };

// A CellValue holds what a row has in a column. It is null where the column does not apply to the row.
using CellValue = std::variant<std::monostate, bool, double, std::string>;

// Writes the cell as a scenario writes it. A null cell is written as "null".
std::string cell_text(const CellValue &cell);

struct AskedColumn {
    std::string_view name;
    CellKind kind;
    const catalogue::Field *field; // of an answer; null: the column of a view
};

// An AskedView is a view of the catalogue, or the layout of an answer that only reads.
struct AskedView {
    std::string_view name;
    const catalogue::Command *command;
    const catalogue::Record *record;
    bool of_answer;
    std::vector<AskedColumn> columns;

    std::optional<size_t> column(std::string_view column) const;
    // Returns whether its requests or its rows say which ONU is meant.
    bool tells_onus_apart() const;
};

// Returns all views in the order of the catalogue.
const std::vector<AskedView> &asked_views();
// Returns null when there is no such view.
const AskedView *find_asked_view(std::string_view name);

struct Question {
    const AskedView *view;
    uint32_t port = 0;           // 0: all ports
    std::optional<Mac> onu = {}; // at that port
    uint32_t uni = 0;
};

struct Rows {
    uint32_t status; // of the answer
    std::vector<std::vector<CellValue>> rows;
};

// Returns the rows that concern what the question names. Nothing becomes different by asking.
Rows ask(const Olt &olt, const Question &question);

} // namespace ponsim
