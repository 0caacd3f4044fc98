// These tests put rows of a listing in order, and choose its columns.
#include "selection/selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "usage_error.h"

namespace
{

using namespace ponctl;
using catalogue::ColumnType;
using testing::ElementsAre;

const std::vector<ListColumn> columns{{"id", "ID", ColumnType::u32, ""},
                                      {"rx_power", "RX", ColumnType::real, "dBm"},
                                      {"state", "STATE", ColumnType::text, ""}};
const std::vector<std::vector<ListCell>> rows{
    {"9", "-9.5", "online"}, {"10", "-27.5", "online"}, {"11", std::nullopt, "offline"}, {"100", "-9.5", "offline"}};

Selected selected(const Selection &selection)
{
    return select(selection, columns, rows, [] { return 0.0; });
}

TEST(Selection, SortsNumbersAsNumbersWithEmptyCellsLast)
{
    EXPECT_THAT(selected({.sort = "rx_power"}).rows, ElementsAre(1, 0, 3, 2));
    EXPECT_THAT(selected({.sort = "-rx"}).rows, ElementsAre(0, 3, 1, 2));
    EXPECT_THAT(selected({.sort = "-id"}).rows, ElementsAre(3, 2, 1, 0));
    EXPECT_THAT(selected({.sort = "state,-id"}).rows, ElementsAre(3, 2, 1, 0));
}

TEST(Selection, LimitsWhatTheConditionLeavesInItsOrder)
{
    EXPECT_THAT(selected({.where = "state=online", .sort = "-id", .limit = "1"}).rows, ElementsAre(1));
    EXPECT_THAT(selected({.limit = "0"}).rows, ElementsAre());
    EXPECT_THAT(selected({.limit = "50"}).rows, ElementsAre(0, 1, 2, 3));
}

TEST(Selection, HasColumnsInTheOrderInWhichTheyAreNamed)
{
    EXPECT_THAT(selected({}).columns, ElementsAre(0, 1, 2));
    EXPECT_THAT(selected({.columns = "state,RX"}).columns, ElementsAre(2, 1));
}

TEST(Selection, NamesTheOptionThatIsWrong)
{
    EXPECT_EQ(usage_error_of([] { selected({.sort = "ids"}); }),
              "--sort: 'ids' is not a column; did you mean id? (known are id, rx_power, state)");
    EXPECT_EQ(usage_error_of([] { selected({.columns = "id,"}); }),
              "--columns: '' is not a column (known are id, rx_power, state)");
    EXPECT_THAT(usage_error_of([] { selected({.limit = "all"}); }),
                testing::HasSubstr("--limit: 'all' is not a number"));
}

} // namespace
