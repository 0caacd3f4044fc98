// This file declares, writes and reads the tables of a family.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "model/kept/family.h"
#include "store/cells.h"

struct sqlite3;

namespace ponsim
{

// A TableForm is a table with a key and the columns after the key.
struct TableForm {
    std::string_view name;
    Declaration key;
    Declaration value;
    std::string_view unique = {};

    // These return the SQL that creates the table, writes a row, and deletes a row.
    std::string create() const;
    std::string put() const;
    std::string drop() const;
    // Returns the SQL that reads whole rows in the order of their keys.
    std::string select() const;
    // Returns the SQL that reads the columns after a key.
    std::string select_one() const;
};

template <class Columns>
Declaration declaration_of(const Columns &columns)
{
    Declaration declaration;
    for_each_column(columns, [&](const auto &column) { column.declare(declaration); });
    return declaration;
}

template <class Record>
TableForm form_of()
{
    using Of = Family<Record>;
    TableForm form{Of::table, declaration_of(Of::key), declaration_of(Of::value)};
    if constexpr (requires { Of::unique; }) form.unique = Of::unique;
    return form;
}
template <class Record, class APart>
TableForm form_of(const APart &part)
{
    return {part.table, declaration_of(Family<Record>::key), declaration_of(part.value)};
}

// Returns the parts of a family, which are none when it declares none.
template <class Record>
constexpr auto parts_of()
{
    if constexpr (requires { Family<Record>::parts; })
        return Family<Record>::parts;
    else
        return std::tuple{};
}

// Returns the SQL that creates all tables of a family.
template <class Record>
std::string create_tables()
{
    std::string sql = form_of<Record>().create();
    for_each_column(parts_of<Record>(), [&](const auto &part) { sql += form_of<Record>(part).create(); });
    return sql;
}

// A Writer writes the records of a family and the records that are parts of them. It keeps its statements.
template <class Record>
class Writer
{
public:
    explicit Writer(sqlite3 *db) : own(db, form_of<Record>()), parts(make_parts(db, parts_of<Record>())) {}

    void write(const Entry<Record> &entry)
    {
        const Record *record = kept_record(entry);
        own.write(entry.key, record, Family<Record>::value);
        size_t index = 0;
        for_each_column(parts_of<Record>(), [&](const auto &part) {
            const auto *kept = record && record->*part.member ? &*(record->*part.member) : nullptr;
            parts[index++].write(entry.key, kept, part.value);
        });
    }

private:
    struct Statements {
        Statements(sqlite3 *db, const TableForm &form) : put(db, form.put()), drop(db, form.drop()) {}

        template <class Value, class Columns>
        void write(const typename Family<Record>::Key &key, const Value *value, const Columns &columns)
        {
            Statement &statement = value ? put : drop;
            Parameters parameters(statement);
            for_each_column(Family<Record>::key, [&](const auto &column) { column.put(parameters, key); });
            if (value) for_each_column(columns, [&](const auto &column) { column.put(parameters, *value); });
            statement.run();
        }

        Statement put;
        Statement drop;
    };

    template <class... Each>
    static std::array<Statements, sizeof...(Each)> make_parts(sqlite3 *db, const std::tuple<Each...> &all)
    {
        return std::apply(
            [db](const auto &...part) {
                return std::array<Statements, sizeof...(Each)>{Statements(db, form_of<Record>(part))...};
            },
            all);
    }

    Statements own;
    std::array<Statements, std::tuple_size_v<decltype(parts_of<Record>())>> parts;
};

// Returns the check for the rows of a family. A family without a Check has no condition.
template <class Record>
auto make_check()
{
    using Of = Family<Record>;
    if constexpr (requires { typename Of::Check; })
        return typename Of::Check{};
    else
        return [](uint32_t, const typename Of::Key &, const Record &) -> const char * { return nullptr; };
}

// Reads the records of a family in the order of their keys, for an OLT with so many PON ports, and visits their
// entries. Throws StoreError when records are not possible.
template <class Record, class Visit>
void read_records(sqlite3 *db, uint32_t ports, Visit visit)
{
    using Of = Family<Record>;
    auto problem_of = make_check<Record>();
    Statement select(db, form_of<Record>().select());
    while (select.row()) {
        Entry<Record> entry{{}, Record{}};
        Cells cells(select, ports);
        for_each_column(Of::key, [&](const auto &column) { column.get(cells, entry.key); });
        for_each_column(Of::value, [&](const auto &column) { column.get(cells, *entry.record); });
        for_each_column(parts_of<Record>(), [&](const auto &part) {
            Statement of_part(db, form_of<Record>(part).select_one());
            Parameters parameters(of_part);
            for_each_column(Of::key, [&](const auto &column) { column.put(parameters, entry.key); });
            if (!of_part.row()) return;
            auto &value = ((*entry.record).*part.member).emplace();
            Cells part_cells(of_part, ports);
            for_each_column(part.value, [&](const auto &column) { column.get(part_cells, value); });
        });
        if (const char *problem = problem_of(ports, entry.key, *entry.record)) throw StoreError(problem);
        visit(std::move(entry));
    }
}

} // namespace ponsim
