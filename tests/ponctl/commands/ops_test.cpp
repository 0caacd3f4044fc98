// These tests check how the tool shows the catalogue.
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "call/codec/search.h"
#include "cli/program.h"
#include "command_line/parse.h"
#include "describe/operation_page.h"
#include "results/operands.h"
#include "usage_error.h"
#include "written.h"

namespace
{

using namespace ponctl;
using testing::HasSubstr;
using testing::Not;

template <class Entry>
std::string page_of(const Entry &entry, Format format)
{
    return written([&](std::FILE *stream) { print_page({stream, format, true}, entry); });
}

std::string page_named(const char *operation)
{
    return page_of(*catalogue::find_operation(operation), Format::table);
}

std::vector<std::string> found(const std::vector<std::string> &words)
{
    std::vector<std::string> names;
    for (const catalogue::Operation *operation : find_operations(words))
        names.emplace_back(operation->name);
    return names;
}

using Names = std::vector<std::string>;

TEST(Page, NamesEveryArgumentOfEveryOperation)
{
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const std::string page = page_of(operation, Format::table);
        for (const catalogue::Argument &argument : operation.arguments)
            EXPECT_THAT(page, HasSubstr("\n  " + std::string(argument.name))) << operation.name;
    }
}

TEST(Page, NamesCommandChannelAndClassOfEveryOperation)
{
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const std::string page = page_of(operation, Format::table);
        EXPECT_THAT(page, HasSubstr("Channel: " + std::string(operation.channel->name)));
        EXPECT_THAT(page, HasSubstr("Class:   " + std::string(catalogue::to_text(operation.impact)) + "\n"));
        if (operation.command) {
            EXPECT_THAT(page, HasSubstr("Command: " + std::string(operation.command->name) + " (" +
                                        std::to_string(operation.command->code) + ")"));
        }
    }
}

TEST(Page, FitsEightyColumns)
{
    for (const catalogue::Operation &operation : catalogue::operations()) {
        std::istringstream lines(page_of(operation, Format::table));
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), 80u) << line;
    }
}

TEST(Page, AsJsonHasAnEntryForEachArgument)
{
    for (const catalogue::Operation &operation : catalogue::operations()) {
        rapidjson::Document page;
        page.Parse(page_of(operation, Format::json).c_str());
        ASSERT_FALSE(page.HasParseError()) << operation.name;
        EXPECT_EQ(page["name"].GetString(), operation.name);
        ASSERT_EQ(page["arguments"].Size(), operation.arguments.size());
        for (rapidjson::SizeType index = 0; index < page["arguments"].Size(); ++index)
            EXPECT_EQ(page["arguments"][index]["name"].GetString(), operation.arguments[index].name);
    }
}

TEST(Page, ListsTheFieldsThatTheServiceReadsInARecord)
{
    EXPECT_THAT(page_of(*catalogue::find_operation("bsp_pon_no_bind_onu_batch_spec_id"), Format::table),
                HasSubstr("onu_set: set of ONU ids of 16 bytes at offset 432"));
}

TEST(Page, ListsOnlyTheFieldsThatCount)
{
    const std::string page = page_of(*catalogue::find_operation("bsp_pon_get_b_onu_spec_id"), Format::table);
    EXPECT_THAT(page, HasSubstr("        onu_id: "));
    EXPECT_THAT(page, Not(HasSubstr("        onu_mac: ")));
    EXPECT_THAT(page_of(*catalogue::find_operation("bsp_pon_get_onu_info"), Format::table),
                Not(HasSubstr("        cmd: ")));
}

TEST(Page, SaysWhereTheAnswerGoesAndWhatTheOperationGoesThrough)
{
    EXPECT_THAT(page_of(*catalogue::find_operation("bsp_pon_get_w_onu_spec_id"), Format::table),
                HasSubstr("Answer:  bsp_pon_msg as far as 776 bytes go, into your buffer\n"));
    EXPECT_THAT(page_of(*catalogue::find_operation("bsp_pon_get_onu_info_web"), Format::table),
                HasSubstr("Through: bsp_pon_config_by_db, whose name stands in the log\n"));
}

TEST(Page, TellsEveryOddity)
{
    for (const catalogue::Operation &operation : catalogue::operations()) {
        rapidjson::Document page;
        page.Parse(page_of(operation, Format::json).c_str());
        EXPECT_EQ(page["oddities"].Size(), operation.odd.size()) << operation.name;
        EXPECT_EQ(page_of(operation, Format::table).find("\nOddity:") != std::string::npos, !operation.odd.empty());
    }
}

TEST(Page, OfALocalFunctionHasItsPrototypeAndPointsToTheCommand)
{
    for (const catalogue::Function &function : catalogue::functions()) {
        std::string page = page_of(function, Format::table);
        page = std::regex_replace(page, std::regex("\n +"), " ");
        EXPECT_THAT(page, HasSubstr("Prototype: " + std::string(function.prototype) + "\n"));
        EXPECT_THAT(page, HasSubstr("ponctl idset"));
    }
}

TEST(Search, FindsLocalFunctions)
{
    ASSERT_EQ(find_functions(std::vector<std::string>{"ont", "EXPAND"}).size(), 1u);
    EXPECT_TRUE(find_functions(std::vector<std::string>{"reboot"}).empty());
}

TEST(Search, FindsByEveryWordInAnyCase)
{
    EXPECT_EQ(found({"OPTICAL", "ranging"}), Names{"bsp_pon_set_opt_range"});
    EXPECT_EQ(found({"optical", "reboot"}), Names{});
}

TEST(Search, FindsByCommandNameAndCode)
{
    EXPECT_EQ(found({"BSP_CMD_ONU_REBOOT_BATCH"}), Names{"bsp_pon_reboot_onu_batch"});
    EXPECT_EQ(found({"423"}), Names{"bsp_pon_onu_batch_sort"});
}

TEST(Search, WithoutWordsFindsAll)
{
    EXPECT_EQ(found({}).size(), catalogue::operations().size());
}

TEST(Name, ThatIsWrongBringsTheNearest)
{
    EXPECT_EQ(usage_error_of([] { named_operation("bsp_pon_onu_suport_set"); }),
              "there is no operation 'bsp_pon_onu_suport_set'; did you mean bsp_pon_onu_support_set?");
    EXPECT_EQ(usage_error_of([] { named_operation("Reboot-ONU"); }),
              "there is no operation 'Reboot-ONU'; did you mean bsp_pon_reboot_onu_batch?");
    EXPECT_EQ(usage_error_of([] { named_operation("zzzzzz"); }),
              "there is no operation 'zzzzzz'; look for it by words with 'ponctl ops WORD...'");
    EXPECT_EQ(usage_error_of([] { named_operation("ont_id_res_str"); }),
              "ont_id_res_str makes no request, so there is nothing to call; see 'ponctl ops ont_id_res_str'");
}

TEST(Page, SaysWhichNumbersAnArgumentTakes)
{
    EXPECT_THAT(page_named("bsp_pon_loop_detect_recover_time"), HasSubstr("; 0 to 4294967295)"));
    EXPECT_THAT(page_named("bsp_pon_loop_detect_status"), HasSubstr("; 0 to 255)"));
    EXPECT_THAT(page_named("bsp_debug_8022_optical_status"),
                HasSubstr("(-21474836.48 to 21474836.47 degC, in steps of 0.01)"));
}

TEST(Page, SaysWhatIsAskedAbout)
{
    EXPECT_THAT(page_named("bsp_pon_no_bind_onu_all"),
                HasSubstr("Asks:    before it is called, unless --yes is given\n"));
    EXPECT_THAT(page_named("bsp_pon_exec_set"), HasSubstr("Asks:    before a command is sent that affects service"));
    EXPECT_THAT(page_named("bsp_pon_exec_get"), testing::Not(HasSubstr("Asks:")));
}

TEST(Catalogue, HasNoBytesToShow)
{
    EXPECT_EQ(usage_error_of([] {
                  const Program program;
                  const command_line::Line line = command_line::parse(program.tree, {"ops"});
                  static_cast<const Command &>(*line.command).run({stdout, Format::hex, true});
              }),
              "--output: the catalogue has no bytes to show; take table, csv or json");
}

} // namespace
