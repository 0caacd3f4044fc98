// These tests check what the tool writes to something that is not a terminal.
#include "output/bytes.h"
#include "output/database.h"
#include "output/exchanges.h"
#include "output/json.h"
#include "output/output.h"
#include "output/table.h"
#include "output/text.h"

#include <gtest/gtest.h>

#include "written.h"

namespace
{

using namespace ponctl;

std::string table_of(const char *document, const catalogue::View *view, Format format = Format::table)
{
    db_handle *database = db_from_string(document);
    EXPECT_NE(database, nullptr);
    const std::string text = written([&](std::FILE *stream) {
        print_database({stream, format, true}, database, view);
    });
    db_free(database);
    return text;
}

TEST(Table, HasPlainHeadingsAndWholeCells)
{
    const std::string text = written([](std::FILE *stream) {
        Table table({{"NAME"}, {"SIZE", Table::Fit::right}});
        table.add({"a", "1"});
        table.add({std::string(200, 'x'), "22"});
        table.print({stream});
    });
    EXPECT_EQ(text, "NAME" + std::string(197, ' ') + "SIZE\na" + std::string(203, ' ') + "1\n" + std::string(200, 'x') +
                        "   22\n");
}

TEST(Table, GoesWithoutHeadings)
{
    const std::string text = written([](std::FILE *stream) {
        Table table({{"NAME"}});
        table.add({"a"});
        table.print({stream, Format::table, false});
    });
    EXPECT_EQ(text, "a\n");
}

TEST(Table, LetsNoControlCharacterThrough)
{
    const std::string text = written([](std::FILE *stream) {
        Table table({{"NAME"}});
        table.add({"a\033[2J"});
        table.print({stream, Format::table, false});
    });
    EXPECT_EQ(text, "a\\x1b[2J\n");
}

TEST(Database, ColumnsStandInTheOrderOfTheViewWithTheirUnits)
{
    const catalogue::View *view = catalogue::find_view(*catalogue::find_command("BSP_CMD_VIEW_BASE_INFO_WEB"));
    EXPECT_EQ(table_of(R"([{"own":true,"max_distance":20000,"min_distance":0,"bound":3,"online":2,"waiting":1,
                            "pon_port":1},{"pon_port":16,"bound":null}])",
                       view),
              "PORT BOUND ONLINE WAITING MIN (m) MAX (m) own\n"
              "   1     3      2       1       0   20000 yes\n"
              "  16     -      -       -       -       - -\n");
}

TEST(Database, WithoutAViewHasTheColumnsThatItBrings)
{
    EXPECT_EQ(table_of(R"([{"b":1,"a":"two"},{"b":3.5,"a":[1]}])", nullptr), "b   a\n1   two\n3.5 [1]\n");
}

TEST(Database, ThatIsNoTableIsShownAsItIs)
{
    EXPECT_EQ(table_of("\"a text\"", nullptr), "\"a text\"\n");
    EXPECT_EQ(table_of("[]", nullptr), "");
}

TEST(Database, InHexIsItsText)
{
    EXPECT_EQ(table_of("[]", nullptr, Format::hex), "    0  5b 5d                                            []\n");
}

TEST(Bytes, AreShownByFieldWithRunsOfZerosFolded)
{
    const catalogue::Channel &pon = *catalogue::find_channel("BSP_MSG_PON");
    Bytes record(944);
    set_fields(*pon.record, {&pon, catalogue::Call::set},
               std::vector<Assignment>{{"cmd", "367"}, {"onu_mac", "00:11:22:33:44:55"}, {"onu_set", "0"}}, false, "",
               record);
    const Reading reading = read_record(*pon.record, {&pon, catalogue::Call::set}, record);
    const std::string text = written([&](std::FILE *stream) {
        print_bytes({stream, Format::hex, true}, record, &reading);
    });
    EXPECT_NE(text.find("   17  00 11 22 33 44 55                                ..\"3DU            onu_mac\n"
                        "   23  00 00 00 00 00 00 00 00 00 00 00 00 00           .............\n"
                        "   36  00 00 00 00                                      ....              arg_word36\n"),
              text.npos);
    EXPECT_NE(text.find("  109  00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00  ................  text109\n"
                        "    *\n"
                        "  173  "),
              text.npos);
    EXPECT_NE(text.find("  429  00 00 00                                         ...               data429\n"),
              text.npos);
    EXPECT_NE(text.find("  448  00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00  ................\n    *\n"),
              text.npos);
}

TEST(Json, TextsThatAreNotUtf8BecomeIt)
{
    const std::string text = written([](std::FILE *stream) {
        Json json(stream);
        json->StartArray();
        json.text("h\xc3\xa4llo");
        json.text("h\xe4llo\x01");
        json->EndArray();
    });
    EXPECT_EQ(text, "[\n  \"h\xc3\xa4llo\",\n  \"h\xc3\xa4llo\\u0001\"\n]\n");
}

TEST(Json, DocumentsPassWithTheirNumbersUnchanged)
{
    const std::string text =
        written([](std::FILE *stream) { Json(stream).document(R"({"a":1.10,"b":18446744073709551616,"c":[null]})"); });
    EXPECT_EQ(text, "{\n  \"a\": 1.10,\n  \"b\": 18446744073709551616,\n  \"c\": [\n    null\n  ]\n}\n");
}

TEST(Json, DocumentThatIsNoneIsAText)
{
    EXPECT_EQ(written([](std::FILE *stream) { Json(stream).document("{\"a\":"); }), "\"{\\\"a\\\":\"\n");
}

} // namespace
