// These tests read result databases.
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "board/datastore.h"
#include "support.h"

namespace
{

const TestEnvironment environment;

struct Release {
    void operator()(db_handle *db) const { db_free(db); }
};
using Database = std::unique_ptr<db_handle, Release>;

Database read(const std::string &json)
{
    return Database(db_from_string(json.c_str()));
}

std::string text(const Database &db, uint32_t row, const char *column)
{
    const char *value = db_get_text(db.get(), row, column);
    return value ? value : "(none)";
}

int64_t integer(const Database &db, uint32_t row, const char *column)
{
    int64_t value = -4242;
    db_get_integer(db.get(), row, column, &value);
    return value;
}

double real(const Database &db, uint32_t row, const char *column)
{
    double value = -42.42;
    db_get_real(db.get(), row, column, &value);
    return value;
}

TEST(Datastore, an_array_of_objects_is_a_table)
{
    const auto db = read(R"([{"onu":1,"mac":"a0"}, {"onu":2,"mac":"b1"}])");
    EXPECT_EQ(db_rows(db.get()), 2u);
    EXPECT_EQ(db_columns(db.get()), 2u);
    EXPECT_STREQ(db_column_name(db.get(), 0), "onu");
    EXPECT_STREQ(db_column_name(db.get(), 1), "mac");
    EXPECT_EQ(db_column_name(db.get(), 2), nullptr);
    EXPECT_EQ(integer(db, 1, "onu"), 2);
    EXPECT_EQ(text(db, 0, "mac"), "a0");
}

TEST(Datastore, an_object_is_a_table_of_one_row)
{
    const auto db = read(R"({"temperature": 36.5})");
    EXPECT_EQ(db_rows(db.get()), 1u);
    EXPECT_EQ(db_columns(db.get()), 1u);
    EXPECT_EQ(real(db, 0, "temperature"), 36.5);
}

TEST(Datastore, an_empty_array_has_no_rows_and_an_empty_object_no_columns)
{
    EXPECT_EQ(db_rows(read("[]").get()), 0u);
    EXPECT_EQ(db_columns(read("[]").get()), 0u);
    EXPECT_EQ(db_rows(read("{}").get()), 1u);
    EXPECT_EQ(db_columns(read("{}").get()), 0u);
    EXPECT_EQ(db_rows(read("[{},{}]").get()), 2u);
}

TEST(Datastore, any_other_text_has_no_rows_and_is_given_as_it_came)
{
    for (const char *other :
         {"", "  ", "17", "\"text\"", "null", "[1,2]", "[[{\"a\":1}]]", "[{\"a\":1},2]", "{\"a\":", "{} {}",
          "[{\"a\":1},]", "{\"a\":1e999}", "not JSON at all", "{\"a\":01}", "{\"\\ud800\":1}"}) {
        const auto db = read(other);
        ASSERT_NE(db, nullptr) << other;
        EXPECT_EQ(db_rows(db.get()), 0u) << other;
        EXPECT_EQ(db_columns(db.get()), 0u) << other;
        EXPECT_EQ(text(db, 0, "a"), "(none)") << other;
        uint32_t length = 99;
        EXPECT_STREQ(db_text(db.get(), &length), other);
        EXPECT_EQ(length, std::string(other).size());
    }
}

TEST(Datastore, every_cell_has_its_type_and_converts_to_no_other)
{
    const auto db = read(R"([{"none":null,"yes":true,"no":false,"whole":-7,"real":2.5e3,"text":"12","list":[1],
                              "object":{}}])");
    const std::pair<const char *, db_type> types[] = {{"none", DB_NONE}, {"absent", DB_NONE},   {"yes", DB_BOOL},
                                                      {"no", DB_BOOL},   {"whole", DB_INTEGER}, {"real", DB_REAL},
                                                      {"text", DB_TEXT}, {"list", DB_NESTED},   {"object", DB_NESTED}};
    for (const auto &[column, type] : types) {
        EXPECT_EQ(db_get_type(db.get(), 0, column), type) << column;
        int64_t whole = 1;
        double number = 1;
        int truth = 7;
        EXPECT_EQ(db_get_integer(db.get(), 0, column, &whole), type == DB_INTEGER ? 0 : -1) << column;
        EXPECT_EQ(whole, type == DB_INTEGER ? -7 : 1) << column;
        EXPECT_EQ(db_get_real(db.get(), 0, column, &number), type == DB_INTEGER || type == DB_REAL ? 0 : -1) << column;
        EXPECT_EQ(number, type == DB_INTEGER ? -7 : type == DB_REAL ? 2500 : 1) << column;
        EXPECT_EQ(db_get_bool(db.get(), 0, column, &truth), type == DB_BOOL ? 0 : -1) << column;
        EXPECT_EQ(truth, type != DB_BOOL ? 7 : std::string(column) == "yes") << column;
    }
}

TEST(Datastore, every_cell_but_null_reads_as_text)
{
    const auto db = read(R"({ "none" : null , "yes" : true , "no":false,"whole":-7,"real" :2.50E3, "text":"a\tb" })");
    EXPECT_EQ(text(db, 0, "none"), "(none)");
    EXPECT_EQ(text(db, 0, "absent"), "(none)");
    EXPECT_EQ(text(db, 0, "yes"), "true");
    EXPECT_EQ(text(db, 0, "no"), "false");
    EXPECT_EQ(text(db, 0, "whole"), "-7");
    EXPECT_EQ(text(db, 0, "real"), "2.50E3");
    EXPECT_EQ(text(db, 0, "text"), "a\tb");
}

TEST(Datastore, nested_values_are_cells_with_their_own_text)
{
    const auto db = read(R"([{"a":{"deep":[1,"\u0041\n",{"x":null}]},"b":[{"c":1}, 2],"c":3}])");
    EXPECT_EQ(text(db, 0, "a"), R"({"deep":[1,"\u0041\n",{"x":null}]})");
    EXPECT_EQ(text(db, 0, "b"), R"([{"c":1}, 2])");
    EXPECT_EQ(integer(db, 0, "c"), 3);
    EXPECT_EQ(text(db, 0, "deep"), "(none)");
    EXPECT_EQ(db_columns(db.get()), 3u);
    EXPECT_EQ(db_rows(db.get()), 1u);
}

TEST(Datastore, whole_numbers_keep_every_digit)
{
    const auto db = read(R"({"max":9223372036854775807,"min":-9223372036854775808,"more":9223372036854775808,
                             "counter":18446744073709551615})");
    EXPECT_EQ(integer(db, 0, "max"), INT64_MAX);
    EXPECT_EQ(integer(db, 0, "min"), INT64_MIN);
    EXPECT_EQ(db_get_type(db.get(), 0, "more"), DB_REAL);
    EXPECT_EQ(text(db, 0, "counter"), "18446744073709551615");
    EXPECT_EQ(real(db, 0, "counter"), 18446744073709551616.0);
}

TEST(Datastore, a_real_too_small_for_a_double_reads_as_0)
{
    EXPECT_EQ(real(read(R"({"tiny":1e-999})"), 0, "tiny"), 0.0);
}

TEST(Datastore, texts_are_utf8_whatever_the_document_escapes)
{
    const auto db = read("{\"na\\u00efve\":\"\\u20ac \\ud83d\\ude00 \xc3\xa9\"}");
    EXPECT_STREQ(db_column_name(db.get(), 0), "na\xc3\xafve");
    EXPECT_EQ(text(db, 0, "na\xc3\xafve"), "\xe2\x82\xac \xf0\x9f\x98\x80 \xc3\xa9");
}

TEST(Datastore, of_columns_of_one_name_the_last_holds)
{
    const auto db = read(R"([{"a":1,"b":2,"a":3}])");
    EXPECT_EQ(integer(db, 0, "a"), 3);
    EXPECT_EQ(db_columns(db.get()), 2u);
}

TEST(Datastore, rows_may_differ_in_their_columns)
{
    const auto db = read(R"([{"a":1},{"b":2,"a":3},{}])");
    EXPECT_EQ(db_columns(db.get()), 1u);
    EXPECT_EQ(integer(db, 1, "b"), 2);
    EXPECT_EQ(integer(db, 1, "a"), 3);
    EXPECT_EQ(text(db, 2, "a"), "(none)");
    EXPECT_EQ(text(db, 3, "a"), "(none)");
    EXPECT_EQ(db_get_type(db.get(), 0, nullptr), DB_NONE);
}

TEST(Datastore, reading_leaves_the_document_as_it_came)
{
    const char *document = R"([{"a":"\u0041","b":[ 1 ]}])";
    const auto db = read(document);
    EXPECT_EQ(text(db, 0, "a"), "A");
    EXPECT_STREQ(db_text(db.get(), nullptr), document);
}

// Returns a row with a value that makes the document so many levels deep.
std::string document_of(size_t levels)
{
    return "{\"deep\":" + std::string(levels - 1, '[') + std::string(levels - 1, ']') + "}";
}

TEST(Datastore, a_document_may_be_a_hundred_levels_deep_and_a_deeper_one_has_no_rows)
{
    EXPECT_EQ(text(read(document_of(100)), 0, "deep"), std::string(99, '[') + std::string(99, ']'));
    EXPECT_EQ(db_rows(read(document_of(101)).get()), 0u);
    EXPECT_EQ(db_rows(read(document_of(500000)).get()), 0u);
    EXPECT_EQ(db_rows(read(std::string(500000, '[')).get()), 0u);
}

TEST(Datastore, a_wide_row_has_all_its_columns)
{
    std::string json = "[{";
    for (int column = 0; column < 20000; ++column)
        json += (column ? ",\"" : "\"") + std::to_string(column) + "\":" + std::to_string(column);
    const auto db = read(json + "}]");
    EXPECT_EQ(db_columns(db.get()), 20000u);
    EXPECT_EQ(integer(db, 0, "19999"), 19999);
}

TEST(Datastore, several_threads_may_read_one_handle)
{
    const auto db = read(R"([{"a":1},{"a":2}])");
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader)
        readers.emplace_back([&] { EXPECT_EQ(integer(db, 1, "a"), 2); });
    for (std::thread &reader : readers)
        reader.join();
}

class DatastoreFile : public testing::Test
{
protected:
    DatastoreFile()
    {
        mkdir(board_ipc_directory(), 0755);
        std::fclose(std::fopen(name, "w"));
    }
    ~DatastoreFile() override { unlink(name); }

    const std::string path = board_ipc_directory() + std::string("/file");
    const char *const name = path.c_str();
};

TEST_F(DatastoreFile, becomes_a_database)
{
    std::FILE *file = std::fopen(name, "w");
    std::fputs(R"([{"a":"from a file"}])", file);
    std::fclose(file);
    const Database db(db_create_fromfile(name));
    ASSERT_NE(db, nullptr);
    EXPECT_EQ(text(db, 0, "a"), "from a file");
}

TEST_F(DatastoreFile, may_be_empty)
{
    const Database db(db_create_fromfile(name));
    ASSERT_NE(db, nullptr);
    EXPECT_EQ(db_rows(db.get()), 0u);
    EXPECT_STREQ(db_text(db.get(), nullptr), "");
}

TEST_F(DatastoreFile, that_is_missing_makes_none_and_is_logged)
{
    const std::string missing = path + "-missing";
    const std::string log = log_of([&] { EXPECT_EQ(db_create_fromfile(missing.c_str()), nullptr); });
    EXPECT_NE(log.find(missing + ": No such file or directory"), std::string::npos) << log;
}

TEST_F(DatastoreFile, that_is_a_folder_makes_none_and_is_logged)
{
    unlink(name);
    ASSERT_EQ(mkdir(name, 0700), 0);
    const std::string log = log_of([this] { EXPECT_EQ(db_create_fromfile(name), nullptr); });
    EXPECT_NE(log.find(path + ": not a file"), std::string::npos) << log;
    rmdir(name);
}

TEST_F(DatastoreFile, elsewhere_makes_none_and_is_logged)
{
    const std::string log = log_of([] { EXPECT_EQ(db_create_fromfile("/etc/hostname"), nullptr); });
    EXPECT_NE(log.find("/etc/hostname: not in the folder of sockets"), std::string::npos) << log;
}

TEST(Datastore, no_handle_reads_as_a_table_of_no_rows)
{
    uint32_t length = 1;
    EXPECT_STREQ(db_text(nullptr, &length), "");
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(db_rows(nullptr), 0u);
    EXPECT_EQ(db_columns(nullptr), 0u);
    EXPECT_EQ(db_column_name(nullptr, 0), nullptr);
    EXPECT_EQ(db_get_type(nullptr, 0, "a"), DB_NONE);
    EXPECT_EQ(db_get_text(nullptr, 0, "a"), nullptr);
}

TEST(Datastore, releasing_nothing_is_allowed)
{
    db_free(nullptr);
    EXPECT_EQ(db_from_string(nullptr), nullptr);
}

} // namespace
