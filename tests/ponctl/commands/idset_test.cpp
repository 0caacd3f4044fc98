// These tests run ponctl idset as a process. It sends no request to a service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

TEST(IdSetCommand, PrintsASetInEveryForm)
{
    EXPECT_EQ(ponctl({"idset", "9-10", "1-5,7"}).out, "FORM                               VALUE\n"
                                                      "ranges                             1-5,7,9-10\n"
                                                      "list                               1,2,3,4,5,7,9,10\n"
                                                      "count                              8\n"
                                                      "words                              "
                                                      "0x000006be,0x00000000,0x00000000,0x00000000\n"
                                                      "board: ont_id_res_str, last id 128 1-5,7,9,10\n"
                                                      "board: ont_id_res_str_expand       1,2,3,4,5,7,9,10\n");
}

TEST(IdSetCommand, ShowsWhatAFrontEndShowsWithALastId)
{
    const auto set = parsed(ponctl({"idset", "1-5,7,9,10", "--last-id", "10", "-o", "json"}).out);
    EXPECT_STREQ(set["ranges"].GetString(), "1-5,7,9-10");
    EXPECT_STREQ(set["ont_id_res_str"].GetString(), "1-5,7,9-2,10");
    EXPECT_STREQ(set["ont_id_res_str_expand"].GetString(), "1,2,3,4,5,7,9,10");
    EXPECT_EQ(set["last_id"].GetUint(), 10u);
}

TEST(IdSetCommand, TellsTheExactRangesWhereTheBoardDoesNot)
{
    const auto set = parsed(ponctl({"idset", "120-127", "-o", "json"}).out);
    EXPECT_STREQ(set["ranges"].GetString(), "120-127");
    EXPECT_STREQ(set["ont_id_res_str"].GetString(), "120");
}

TEST(IdSetCommand, TakesTheFourWords)
{
    const auto set = parsed(ponctl({"idset", "--words", "0x3e,0,0,2147483648", "-o", "json"}).out);
    EXPECT_STREQ(set["ranges"].GetString(), "1-5,127");
    EXPECT_EQ(set["count"].GetUint(), 6u);
    EXPECT_EQ(set["ids"][5].GetUint(), 127u);
    EXPECT_EQ(set["words"][0].GetUint(), 0x3eu);
    EXPECT_EQ(set["words"][3].GetUint(), 0x80000000u);
}

TEST(IdSetCommand, OfNoIdsIsEmpty)
{
    const auto set = parsed(ponctl({"idset", "--words", "0,0,0,0", "-o", "json"}).out);
    EXPECT_STREQ(set["ranges"].GetString(), "");
    EXPECT_STREQ(set["ont_id_res_str"].GetString(), "");
    EXPECT_EQ(set["count"].GetUint(), 0u);
}

TEST(IdSetCommand, RefusesWhatIsNoSet)
{
    const std::vector<std::pair<Words, std::string>> cases{
        {{"1-128"}, "SET: '1-128' is not a set of ONU ids from 0 to 127, as 1-5,7"},
        {{"7-5"}, "SET: '7-5' is not a set of ONU ids from 0 to 127, as 1-5,7"},
        {{}, "which ids? give either a SET, as 1-5,7,9-12, or --words W,W,W,W"},
        {{"1", "--words", "1,0,0,0"}, "which ids? give either a SET, as 1-5,7,9-12, or --words W,W,W,W"},
        {{"--words", "1,0,0"}, "--words: '1,0,0' is not four words with commas between them, as 0x3e,0,0,0"},
        {{"--words", "1,0,0,4294967296"},
         "--words: '1,0,0,4294967296' is not four words with commas between them, as 0x3e,0,0,0"},
        {{"1", "--last-id", "x"},
         "--last-id: 'x' is not a number from 0 to 4294967295, decimal or hexadecimal with 0x"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"idset"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = ponctl(words);
        EXPECT_EQ(finished.code, 2);
        EXPECT_EQ(finished.err, "ponctl: " + error + "\n");
    }
}

TEST(IdSetCommand, IsWhereALocalFunctionPointsTo)
{
    EXPECT_THAT(ponctl({"ops", "ont_id_res_str"}).out, HasSubstr("'ponctl idset'"));
    EXPECT_EQ(ponctl({"call", "ont_id_res_str"}).code, 2);
}

} // namespace
