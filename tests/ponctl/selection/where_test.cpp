// These tests choose rows of a listing with expressions.
#include "selection/where.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "usage_error.h"

namespace
{

using namespace ponctl;
using catalogue::ColumnType;
using Row = std::vector<ListCell>;

const std::vector<ListColumn> columns{
    {"mac", "MAC", ColumnType::mac, ""},           {"state", "STATE", ColumnType::text, ""},
    {"rx_power", "RX", ColumnType::real, "dBm"},   {"raised", "RAISED", ColumnType::u64, "ms"},
    {"fec", "FEC", ColumnType::boolean, ""},       {"load", "UP", ColumnType::real, "kbit/s"},
    {"distance", "DISTANCE", ColumnType::u32, "m"}};
const Row offline{"02:00:5e:10:00:01", "offline", std::nullopt, "5000", "false", "1500", "1940"};
const Row online{"02:00:5e:ab:00:02", "online", "-27.5", "90000000", "true", "20", "70"};

double three_days()
{
    return 3 * 86400;
}

bool wants(const std::string &text, const Row &row)
{
    return Where(text, columns, three_days).wants(row);
}

TEST(Where, ComparesTextsInAnyLetters)
{
    EXPECT_TRUE(wants("state=offline", offline));
    EXPECT_TRUE(wants("STATE = 'OffLine'", offline));
    EXPECT_FALSE(wants("state=off", offline));
    EXPECT_TRUE(wants("state!=online", offline));
    EXPECT_TRUE(wants("state~LINE", online));
    EXPECT_FALSE(wants("state~offl", online));
}

TEST(Where, ComparesNumbersAsNumbers)
{
    EXPECT_TRUE(wants("rx<-27", online));
    EXPECT_FALSE(wants("rx_power<-27.5", online));
    EXPECT_TRUE(wants("rx_power<=-27.5", online));
    EXPECT_TRUE(wants("rx = -27.50dBm", online));
    EXPECT_TRUE(wants("load>100", offline));
    EXPECT_FALSE(wants("load>100", online));
    EXPECT_TRUE(wants("load>=1.5Mbit/s", offline));
    EXPECT_TRUE(wants("distance>1.9km and distance<2000m", offline));
}

TEST(Where, ComparesTimesInAnyUnit)
{
    EXPECT_TRUE(wants("raised=5s", offline));
    EXPECT_TRUE(wants("raised>1d and raised<2d", online));
    EXPECT_TRUE(wants("raised<1d-ago", offline));
    EXPECT_TRUE(wants("raised<1d-ago", online));
    EXPECT_FALSE(wants("raised<47.5h-ago", online));
}

TEST(Where, FindsAMacInAnySpelling)
{
    for (const char *text :
         {"mac=02-00-5E-10-00-01", "mac=0200.5e10.0001", "mac~02:00:5e:1", "mac~5E10", "mac~'00-01'"})
        EXPECT_TRUE(wants(text, offline)) << text;
    EXPECT_FALSE(wants("mac~5e10", online));
}

TEST(Where, JoinsWithAndOrNotAndParentheses)
{
    EXPECT_TRUE(wants("state=online and fec=yes or state=offline", offline));
    EXPECT_FALSE(wants("state=online and (fec=yes or state=offline)", offline));
    EXPECT_TRUE(wants("not state=online AND not(fec=true)", offline));
    EXPECT_TRUE(wants("not (state=online or fec=yes)", offline));
    EXPECT_FALSE(wants("not not state=online", offline));
}

TEST(Where, MatchesNothingWhereACellIsEmpty)
{
    for (const char *text : {"rx<-27", "rx>=-27", "rx=0", "rx!=0", "not rx<-27", "not (rx<0 and state=offline)"})
        EXPECT_FALSE(wants(text, offline)) << text;
    EXPECT_TRUE(wants("rx<-27 or state=offline", offline));
    EXPECT_TRUE(wants("not (rx<0 and state=online)", offline));
}

TEST(Where, SaysWhatIsWrong)
{
    const std::pair<const char *, const char *> cases[] = {
        {"", "--where: expected a column at the end"},
        {"stat=online", "--where: 'stat' is not a column; did you mean state? (known are mac, state, rx_power, raised, "
                        "fec, load, distance)"},
        {"state", "--where: expected = != < <= > >= or ~ behind state"},
        {"state=", "--where: expected a value behind state=; '' is an empty text"},
        {"state<online", "--where: state is a text, which '<' cannot compare; use = != or ~"},
        {"fec>no", "--where: fec is yes or no, which '>' cannot compare; use = != or ~"},
        {"fec=maybe", "--where: fec: 'maybe' is not yes or no"},
        {"rx~27", "--where: rx_power is a number, which '~' cannot search; use = != < <= > or >="},
        {"rx<low", "--where: rx_power: 'low' is not a number in dBm"},
        {"rx<1d-ago", "--where: rx_power: '1d-ago' is not a number in dBm"},
        {"raised<1w", "--where: raised: '1w' is not a number in ms, as 90s, 5m, 2h, 1d or 1d-ago"},
        {"distance<5m-ago", "--where: distance: '5m-ago' is not a number in m"},
        {"mac=02:00", "--where: mac: '02:00' is not a MAC address; '~' searches for a part of one"},
        {"(state=online", "--where: expected ')' at the end"},
        {"state=online fec=yes", "--where: expected 'and' or 'or' in place of 'fec=yes'"},
        {"state='on", "--where: the quotation mark before 'on' is not closed"},
        {"state=online and", "--where: expected a column at the end"},
    };
    for (const auto &[text, message] : cases)
        EXPECT_EQ(usage_error_of([given = text] { wants(given, offline); }), message) << text;
    EXPECT_EQ(usage_error_of([] { wants(std::string(100000, '('), offline); }), "--where: nested too deeply");
    EXPECT_THAT(usage_error_of([] { wants("\"", offline); }), testing::HasSubstr("expected a column at the end"));
}

} // namespace
