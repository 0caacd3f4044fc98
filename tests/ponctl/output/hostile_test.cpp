// These tests let a service deliver what a terminal or a spreadsheet would obey, what is many times as long when it is
// printed, and what is no result at all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::Each;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

constexpr uint32_t base_view = 386, onu_view = 384;

// Returns whether a terminal could obey any of these bytes. They may be lines.
bool is_harmful(const std::string &written)
{
    for (const char *harmful :
         {"\033", "\x7f", "\r", "\x08", "\xc2\x9b", "\xe2\x80\xae", "\xe2\x81\xa6", "\xe2\x80\x8f", "\xd8\x9c", "\xff"})
        if (written.find(harmful) != written.npos) return true;
    return false;
}

// This text clears a terminal with a sequence of 7 and of 8 bits, turns what follows round, and is a formula.
constexpr const char *hostile_json =
    R"json("=HYPERLINK(\u001b[2J\u009b2J\u202e\u2066\u200f\u061c\u007f\u0008\r\n)")json";

TEST(HostileText, IsHarmlessInEveryForm)
{
    const FakeService service(rows(
        onu_view, std::string(R"([{"pon_port":1,"onu_id":5,"state":"online","description":)") + hostile_json + "}]"));
    for (const char *format : {"table", "csv", "json", "hex"}) {
        const Finished finished = service.ponctl({"onu", "list", "1", "-o", format});
        EXPECT_EQ(finished.code, 0) << format;
        EXPECT_FALSE(is_harmful(finished.out)) << format << testing::PrintToString(finished.out);
        EXPECT_FALSE(is_harmful(finished.err)) << format;
    }
    EXPECT_THAT(service.ponctl({"onu", "list", "1"}).out, HasSubstr("=HYPERLINK(\\x1b[2J\\xc2\\x9b2J\\xe2\\x80\\xae"));
    EXPECT_THAT(service.ponctl({"onu", "list", "1", "-o", "csv"}).out, HasSubstr(",'=HYPERLINK(\\x1b[2J"));
    const std::string json = service.ponctl({"onu", "list", "1", "-o", "json"}).out;
    EXPECT_THAT(json, HasSubstr("\\u001B[2J\\u009b2J\\u202e\\u2066\\u200f\\u061c\\u007f"));
    EXPECT_STREQ(parsed(json)[0]["description"].GetString(), parsed(hostile_json).GetString());
}

TEST(HostileText, IsHarmlessOnATerminal)
{
    const FakeService service(rows(
        onu_view, std::string(R"([{"pon_port":1,"onu_id":5,"state":"online","description":)") + hostile_json + "}]"));
    Terminal terminal(400);
    EXPECT_EQ(service.ponctl({"onu", "list", "1", "--color", "never"}, terminal.descriptor()).code, 0);
    std::string text = terminal.text();
    std::erase(text, '\r'); // the terminal writes it before each newline
    EXPECT_FALSE(is_harmful(text)) << testing::PrintToString(text);
    EXPECT_THAT(text, HasSubstr("\\xc2\\x9b2J"));
}

TEST(HostileText, IsHarmlessInTheNameOfAColumn)
{
    const FakeService service(result(base_view, R"([{"\u001b[2J\u009b":1}])"));
    for (const char *format : {"table", "csv", "json"}) {
        const Finished finished = service.ponctl({"port", "list", "-o", format});
        EXPECT_EQ(finished.code, 3) << format;
        EXPECT_FALSE(is_harmful(finished.out + finished.err)) << format;
        const Finished called =
            service.ponctl({"call", "bsp_pon_exec_get_json_", "cmd=386", "pon_port=0", "-o", format});
        EXPECT_EQ(called.code, 3) << format;
        EXPECT_FALSE(is_harmful(called.out + called.err)) << format;
    }
}

TEST(HostileText, ThatIsNotUtf8IsHarmless)
{
    const std::string row = whole_rows(onu_view, R"([{"pon_port":1,"description":"X"}])");
    const FakeService service(result(onu_view, std::string(row).replace(row.find("\"X\""), 3, "\"\x9b\xff\"")));
    for (const char *format : {"table", "csv", "json"}) {
        const Finished finished = service.ponctl({"onu", "list", "1", "-o", format});
        EXPECT_EQ(finished.code, 3) << format;
        EXPECT_FALSE(is_harmful(finished.out + finished.err)) << format;
    }
}

TEST(HostileText, OfTheCommandLineIsHarmlessInAnError)
{
    for (const Words &words : {Words{"onu", "list", "\033[2J\xc2\x9b"}, Words{"\033[2J"}, Words{"call", "\xe2\x80\xae"},
                               Words{"onu", "vlan", "\xff/1"}, Words{"onu", "list", "--\033[2J"}}) {
        const Finished finished = ponctl(words);
        EXPECT_EQ(finished.code, 2);
        EXPECT_FALSE(is_harmful(finished.err)) << testing::PrintToString(finished.err);
    }
}

// Returns the document of a result that is nested so deeply.
std::string nested(size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(HostileResult, ThatIsNestedDeeplyIsNotMadeLonger)
{
    const FakeService service(result(base_view, nested(500000)));
    for (const char *format : {"table", "csv", "json"}) {
        for (const Words &words : {Words{"port", "list", "-o", format},
                                   Words{"call", "bsp_pon_exec_get_json_", "cmd=386", "pon_port=0", "-o", format},
                                   Words{"raw", "BSP_MSG_PON", "get", "cmd=386", "-o", format}}) {
            const Finished finished = service.ponctl(words);
            EXPECT_EQ(finished.code, 3) << format;
            EXPECT_LT(finished.out.size(), 1100000u) << format;
            EXPECT_THAT(finished.err, HasSubstr("nested more than 16 levels deep")) << format;
        }
    }
}

TEST(HostileResult, WithManyColumnsIsNoTable)
{
    std::string row;
    for (int column = 0; column < 85000; ++column)
        row += (row.empty() ? "\"c" : ",\"c") + std::to_string(column) + "\":1";
    const FakeService service(result(base_view, "[{" + row + "}]"));
    for (const char *format : {"table", "csv", "json"}) {
        const Finished finished =
            service.ponctl({"call", "bsp_pon_exec_get_json_", "cmd=386", "pon_port=0", "-o", format});
        EXPECT_EQ(finished.code, 3) << format;
        EXPECT_LT(finished.out.size(), 8000000u) << format;
        EXPECT_THAT(finished.err, HasSubstr("the result has more than the 256 columns that there can be")) << format;
    }
}

TEST(HostileResult, ThatMakesATableOfGigabytesIsNotPrinted)
{
    std::string table;
    for (int row = 0; row < 5000; ++row)
        table += R"(,{"a":1,"b":2})";
    // No view describes the rows of this command.
    const FakeService service(result(1, "[{\"a\":\"" + std::string(500000, 'x') + "\"}" + table + "]"));
    const Words call{"call", "bsp_pon_exec_get_json_", "cmd=1", "pon_port=0"};
    const Finished finished = service.ponctl(call);
    EXPECT_EQ(finished.code, 4);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("the table has 5001 lines of 500001 characters, too many to be printed"));
}

struct Wrong {
    const char *what;
    std::string document;
    const char *message;
};

TEST(WrongResult, FailsAndSaysWhatIsWrong)
{
    const std::string good = whole_rows(base_view, R"([{"pon_port":1}])");
    const auto with = [&good](const std::string &what, const std::string &by) {
        std::string changed = good;
        return changed.replace(changed.find(what), what.size(), by);
    };
    for (const auto &[what, document, message] :
         {Wrong{"cut", good.substr(0, good.size() / 2), "is not JSON, is cut, or"},
          Wrong{"no JSON", "garbage", "is not JSON"}, Wrong{"empty", " ", "is not JSON"},
          Wrong{"no table", "5", "the result is not a table"},
          Wrong{"a list of numbers", "[1,2]", "the result is not a table"},
          Wrong{"without a column", with("\"bound\"", "\"bond\""),
                "the result lacks the column bound and has beyond its view the column bond"},
          Wrong{"with another column", with("{", "{\"more\":1,"), "the result has beyond its view the column more"},
          Wrong{"a text for a number", with("\"bound\":0", "\"bound\":\"many\""),
                "the result is wrong in row 1: bound is 'many', not a number of 32 bits"},
          Wrong{"a number too large", with("\"bound\":0", "\"bound\":4294967296"),
                "bound is '4294967296', not a number"},
          Wrong{"null", with("\"bound\":0", "\"bound\":null"), "row 1: bound is missing, not a number of 32 bits"}}) {
        const FakeService service(result(base_view, document));
        for (const char *format : {"table", "csv", "json"}) {
            const Finished finished = service.ponctl({"port", "list", "-o", format});
            EXPECT_EQ(finished.code, 3) << what;
            EXPECT_THAT(finished.err, HasSubstr(message)) << what;
        }
    }
    const FakeService service(result(base_view, good));
    EXPECT_EQ(service.ponctl({"port", "list"}).code, 0);
}

TEST(WrongResult, ThatIsMissingFails)
{
    const FakeService service;
    for (const Words &words : {Words{"onu", "list", "1"}, Words{"alarm", "list"}, Words{"port", "show", "1"},
                               Words{"onu", "vlan", "1/1-2"}, Words{"fdb", "show"}, Words{"onu", "show", "1/5"}}) {
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 3) << words[0];
        EXPECT_EQ(finished.out, "") << words[0];
        EXPECT_THAT(finished.err, HasSubstr("the service left no result database")) << words[0];
    }
}

} // namespace
