// This file declares and writes the tables of a family.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "model/kept/family.h"
#include "store/cells.h"
#include "store/stored.h"

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

// Adds the name of each table of a family, with the SQL that creates it.
template <class Record>
void add_tables(auto &tables)
{
    const auto add = [&tables](const TableForm &form) { tables.emplace_back(form.name, form.create()); };
    add(form_of<Record>());
    for_each_column(parts_of<Record>(), [&](const auto &part) { add(form_of<Record>(part)); });
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
            CellWriter row;
            for_each_column(Family<Record>::key, [&](const auto &column) { column.put(row, key); });
            if (value) for_each_column(columns, [&](const auto &column) { column.put(row, *value); });
            for (const Cell &cell : row.cells)
                statement.bind_cell(cell);
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

} // namespace ponsim
