#include "store/table.h"

namespace ponsim
{
namespace
{

// Lists the columns one after the other, each as `text` writes it.
template <class Text>
std::string list(const Declaration &columns, std::string_view between, Text text)
{
    std::string listed;
    for (const Declaration::Declared &column : columns.columns())
        listed.append(listed.empty() ? "" : between).append(text(column));
    return listed;
}

std::string column_name(const Declaration::Declared &column)
{
    return std::string(column.name);
}

std::string declared(const Declaration::Declared &column)
{
    return column_name(column) + ' ' + std::string(column.type) + " NOT NULL";
}

std::string where(const Declaration &key)
{
    return " WHERE " + list(key, " AND ", [](const auto &column) { return column_name(column) + " = ?"; });
}

} // namespace

// A key of one column is declared in that column. When it is a number, it is the row's own number.
std::string TableForm::create() const
{
    const bool one_key = key.columns().size() == 1;
    std::string sql = "CREATE TABLE " + std::string(name) + '(';
    sql += list(key, ", ", [one_key](const auto &column) {
        return one_key ? column_name(column) + ' ' + std::string(column.type) + " PRIMARY KEY" : declared(column);
    });
    sql += ", " + list(value, ", ", declared);
    if (!one_key) sql += ", PRIMARY KEY(" + list(key, ", ", column_name) + ')';
    if (!unique.empty()) sql.append(", UNIQUE(").append(unique).append(")");
    return sql + ") STRICT" + (one_key && key.columns()[0].type == "INTEGER" ? ";" : ", WITHOUT ROWID;");
}

std::string TableForm::put() const
{
    const auto parameter = [](const auto &) { return std::string("?"); };
    return "REPLACE INTO " + std::string(name) + " VALUES(" + list(key, ", ", parameter) + ", " +
           list(value, ", ", parameter) + ')';
}

std::string TableForm::drop() const
{
    return "DELETE FROM " + std::string(name) + where(key);
}

} // namespace ponsim
