// These tests read rows of values with commas between them.
#include "text/csv.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace
{

using Cells = std::vector<std::string>;

TEST(Csv, HasRowsOfCells)
{
    const auto rows = text::read_csv("a,b\r\n1,\n\n,2");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].cells, (Cells{"a", "b"}));
    EXPECT_EQ(rows[1].cells, (Cells{"1", ""}));
    EXPECT_EQ(rows[2].cells, (Cells{"", "2"}));
    EXPECT_EQ(rows[2].line, 4u);
}

TEST(Csv, HasAnythingInQuotes)
{
    const auto rows = text::read_csv("\"a, \"\"b\"\"\nc\",d\ne");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].cells, (Cells{"a, \"b\"\nc", "d"}));
    EXPECT_EQ(rows[1].line, 3u);
}

TEST(Csv, PassesOverAByteOrderMark)
{
    EXPECT_EQ(text::read_csv("\xef\xbb\xbf"
                             "a")
                  .at(0)
                  .cells,
              Cells{"a"});
}

TEST(Csv, IsRefusedWithTheLine)
{
    for (const char *wrong : {"a\n\"b", "a\nb\"c", "a\n\"b\"c"})
        try {
            text::read_csv(wrong);
            ADD_FAILURE() << wrong;
        } catch (const std::runtime_error &error) {
            EXPECT_TRUE(std::string(error.what()).starts_with("line 2: ")) << error.what();
        }
}

} // namespace
