// These tests write JSON documents as comma-separated values.
#include "output/csv.h"

#include <gtest/gtest.h>

#include "output/exit_code.h"
#include "text/words.h"
#include "written.h"

namespace
{

using namespace ponctl;

std::string csv_of(const char *document, std::string heading = {}, bool headings = true)
{
    return written([&](std::FILE *stream) { print_csv({stream, Format::csv, headings}, document, heading); });
}

TEST(Csv, OfAListIsARowEach)
{
    EXPECT_EQ(csv_of(R"([{"id":1,"name":"a"},{"id":2,"name":null}])"), "id,name\n1,a\n2,\n");
}

TEST(Csv, OfAnEmptyListIsNothing)
{
    EXPECT_EQ(csv_of("[]"), "");
}

TEST(Csv, OfAnObjectIsARowOfNameAndValueEach)
{
    EXPECT_EQ(csv_of(R"({"port":{"id":1,"up":true},"ids":[1,2],"rows":[{"a":1},{"a":2}]})"),
              "name,value\nport.id,1\nport.up,true\nids,1 2\nrows.0.a,1\nrows.1.a,2\n");
}

TEST(Csv, OfAListInEachObjectIsARowForEachThere)
{
    EXPECT_EQ(csv_of(R"([{"onu":"1/3","links":[{"uni":1},{"uni":2}]},{"onu":"1/4","links":null}])"),
              "onu,links.uni\n1/3,1\n1/3,2\n");
}

TEST(Csv, QuotesWhatMustBe)
{
    EXPECT_EQ(csv_of(R"([{"a":"one, two","b":"say \"no\"","c":"\u001b\r\n","d":"plain text"}])"),
              "a,b,c,d\n\"one, two\",\"say \"\"no\"\"\",\\x1b\\x0d\\x0a,plain text\n");
}

TEST(Csv, TellsNeitherATerminalNorASpreadsheetAnything)
{
    EXPECT_EQ(
        csv_of(R"([{"=a":"=1+1","b":"+cmd","c":"-2+3","d":"@x","e":"\ta","f":"\r=b","g":"\u009b2J","h":"\u202ex"}])"),
        "'=a,b,c,d,e,f,g,h\n"
        "'=1+1,'+cmd,'-2+3,'@x,\\x09a,\\x0d=b,\\xc2\\x9b2J,\\xe2\\x80\\xaex\n");
    EXPECT_EQ(csv_of(R"([{"a":-3,"b":-1.5e3,"c":"-27.5"}])"), "a,b,c\n-3,-1.5e3,-27.5\n");
}

TEST(Csv, OfTooManyCellsIsNone)
{
    std::string rows;
    for (int row = 0; row < 1100; ++row)
        rows += (rows.empty() ? "{\"" : ",{\"") + std::to_string(row) + "\":1}";
    EXPECT_THROW(csv_of(("[" + rows + "]").c_str()), TooLarge);
}

TEST(Csv, OfLongNamesThatAreRepeatedIsNone)
{
    std::string members;
    for (int member = 0; member < 1000; ++member)
        members += (members.empty() ? "\"" : ",\"") + std::to_string(member) + "\":1";
    EXPECT_THROW(csv_of(("{\"" + std::string(100000, 'x') + "\":{" + members + "}}").c_str()), TooLarge);
    EXPECT_THROW(csv_of(("[{\"a\":\"" + std::string(1000000, 'x') + "\",\"l\":[{" + std::string(200, ' ') + "}" +
                         text::replaced(std::string(100, '.'), ".", ",{\"b\":1}") + "]}]")
                            .c_str()),
                 TooLarge);
}

TEST(Csv, HasNumbersAsTheyWereWritten)
{
    EXPECT_EQ(csv_of(R"([{"a":1.10,"b":18446744073709551616,"c":-3}])"), "a,b,c\n1.10,18446744073709551616,-3\n");
}

TEST(Csv, HasTheHeadingThatWasWrittenLastNotAgain)
{
    EXPECT_EQ(csv_of(R"([{"a":1}])", "a\n"), "1\n");
    EXPECT_EQ(csv_of(R"([{"b":1}])", "a\n"), "b\n1\n");
}

TEST(Csv, GoesWithoutHeading)
{
    EXPECT_EQ(csv_of(R"([{"a":1}])", "", false), "1\n");
}

TEST(Csv, OfATextIsOneValue)
{
    EXPECT_EQ(csv_of(R"("a text")"), "value\na text\n");
}

} // namespace
