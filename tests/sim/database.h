// Tests open a state file directly as a database.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <sqlite3.h>

#include <gtest/gtest.h>

namespace ponsim
{

// A Database is used through its SQL.
class Database
{
public:
    explicit Database(const std::string &file) { EXPECT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK); }
    ~Database() { sqlite3_close(db); }
    Database(const Database &) = delete;

    sqlite3 *handle() const { return db; }

    void run(const std::string &sql)
    {
        char *error = nullptr;
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK) << (error ? error : "");
        sqlite3_free(error);
    }
    // Returns the first column of all rows.
    std::vector<std::string> column(const std::string &sql)
    {
        std::vector<std::string> values;
        const auto add = [](void *to, int, char **cells, char **) {
            static_cast<std::vector<std::string> *>(to)->emplace_back(cells[0]);
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), add, &values, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
        return values;
    }
    std::vector<std::string> tables()
    {
        return column("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name");
    }
    // Returns the rows with their values as SQL writes them.
    std::vector<std::string> rows(const std::string &table)
    {
        std::string values;
        for (const std::string &name : column("SELECT name FROM pragma_table_info('" + table + "')"))
            values.append(values.empty() ? "quote(" : " || ',' || quote(").append(name).append(")");
        return column("SELECT " + values + " FROM " + table);
    }
    std::string schema()
    {
        std::string text;
        for (const std::string &sql : column("SELECT sql FROM sqlite_schema WHERE type = 'table' ORDER BY name"))
            text += sql + ";\n";
        return text;
    }
    // Returns the SQL that makes a database of the same content.
    std::string dump()
    {
        std::string text = "BEGIN;\n";
        for (const char *number : {"application_id", "user_version"})
            text += std::string("PRAGMA ") + number + " = " + column(std::string("PRAGMA ") + number).at(0) + ";\n";
        text += schema();
        for (const std::string &table : tables())
            for (const std::string &row : rows(table))
                text += "INSERT INTO " + table + " VALUES(" + row + ");\n";
        return text + "COMMIT;\n";
    }

private:
    sqlite3 *db = nullptr;
};

inline std::string content_of(const std::filesystem::path &file)
{
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in) << file;
    return {std::istreambuf_iterator<char>(in), {}};
}

// Makes a state file from SQL that was kept of one.
inline void restore(const std::string &sql, const std::string &file)
{
    Database(file).run(content_of(sql));
}

} // namespace ponsim
