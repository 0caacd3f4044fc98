// These tests check that no operation, and no argument of an operation, is left out of the facts that concern it.
#include <map>
#include <set>

#include "selection.h"

namespace contract
{
namespace
{

using Names = std::set<std::string>;

// Returns what the tests of a suite are named after. Every TEST_P of the suite must have the same names.
Names names_in(const testing::TestSuite &suite)
{
    std::map<std::string, Names> by_fact;
    for (int i = 0; i < suite.total_test_count(); ++i) {
        const std::string name = suite.GetTestInfo(i)->name();
        const size_t slash = name.find('/');
        by_fact[name.substr(0, slash)].insert(name.substr(slash + 1));
    }
    for (const auto &[fact, names] : by_fact)
        EXPECT_EQ(names, by_fact.begin()->second) << fact;
    return by_fact.begin()->second;
}

// Returns an empty set when no test of the suite exists.
const Names &tested(const std::string &suite)
{
    static const std::map<std::string, Names> suites = [] {
        std::map<std::string, Names> found;
        const testing::UnitTest &unit = *testing::UnitTest::GetInstance();
        for (int i = 0; i < unit.total_test_suite_count(); ++i)
            if (std::string_view(unit.GetTestSuite(i)->name()).starts_with("Each/"))
                found[unit.GetTestSuite(i)->name()] = names_in(*unit.GetTestSuite(i));
        return found;
    }();
    static const Names none;
    const auto found = suites.find("Each/" + suite);
    return found == suites.end() ? none : found->second;
}

bool tested(const std::string &suite, const Operation &operation)
{
    return tested(suite).contains(std::string(operation.name));
}

bool tested(const std::string &suite, const Operation &operation, const Argument &argument)
{
    return tested(suite).contains(std::string(operation.name) + "_of_" + std::string(argument.name));
}

std::string suite_of(const Operation &operation, const Argument &argument)
{
    switch (argument.type) {
    case ArgumentType::text:
        return "Text";
    case ArgumentType::block:
        return argument.size ? "FixedBlock" : operation.record->payload ? "" : "Block";
    case ArgumentType::db:
        return "Database";
    case ArgumentType::text_out:
        return "TextOut";
    case ArgumentType::u8_out:
    case ArgumentType::u16_out:
    case ArgumentType::u32_out:
    case ArgumentType::block_out:
    case ArgumentType::block_inout:
    case ArgumentType::pblock_out: // tested by the part of the answer that is stored there
    case ArgumentType::u32:
    case ArgumentType::u16:
    case ArgumentType::u8:
    case ArgumentType::length:
    case ArgumentType::length_at:
    case ArgumentType::mac:
    case ArgumentType::record:
    case ArgumentType::response:
        break; // tested in the request, or by where the record or the answer is stored
    }
    return {};
}

} // namespace

TEST(Coverage, EveryOperationIsUnderTheFactsOfAll)
{
    ASSERT_GT(catalogue::operations().size(), 0u);
    for (const char *suite : {"Request", "FailedExchange"})
        EXPECT_EQ(tested(suite).size(), catalogue::operations().size()) << suite;
}

// What the catalogue cannot describe of an operation has tests in a suite of its own, named after the facet and the
// operation. Nothing else has such a suite.
TEST(Coverage, EveryOddityHasItsOwnTests)
{
    Names expected;
    for (const Operation &operation : catalogue::operations()) {
        const auto odd = [&](catalogue::Facet facet, const std::string &name) {
            if (catalogue::find_oddity(operation, facet)) expected.insert(name + "_of_" + std::string(operation.name));
            return catalogue::find_oddity(operation, facet) != nullptr;
        };
        EXPECT_NE(odd(catalogue::Facet::request, "Request"), tested("RequestBytes", operation)) << operation.name;
        odd(catalogue::Facet::null, "Null");
        odd(catalogue::Facet::answer, "Answer");
        EXPECT_NE(odd(catalogue::Facet::status, "Status"), tested("ServiceStatus", operation)) << operation.name;
    }
    Names found;
    const testing::UnitTest &unit = *testing::UnitTest::GetInstance();
    for (int i = 0; i < unit.total_test_suite_count(); ++i)
        if (const std::string name = unit.GetTestSuite(i)->name(); name.find("_of_bsp_") != name.npos)
            found.insert(name);
    EXPECT_EQ(found, expected);
}

TEST(Coverage, EveryOperationHasItsFailureTested)
{
    for (const Operation &operation : catalogue::operations()) {
        EXPECT_NE(tested("ReportedFailure", operation), tested("PassedFailure", operation)) << operation.name;
        EXPECT_NE(tested("LoggedFailure", operation), tested("SilentFailure", operation)) << operation.name;
    }
}

TEST(Coverage, EveryOperationHasItsAnswerTested)
{
    for (const Operation &operation : catalogue::operations()) {
        EXPECT_EQ(tested("OwnBuffer", operation) + tested("CallersMemory", operation) + tested("NoAnswer", operation),
                  1)
            << operation.name;
        EXPECT_NE(tested("AnyAnswer", operation), tested("NoAnswer", operation)) << operation.name;
    }
}

TEST(Coverage, EveryCallersRecordIsTested)
{
    for (const Operation &operation : catalogue::operations())
        EXPECT_EQ(tested("RecordAsIs", operation) + tested("RecordCopied", operation) +
                      tested("RecordStamped", operation) + tested("RecordPicked", operation),
                  Subject(operation).argument_of(ArgumentType::record) ? 1 : 0)
            << operation.name;
}

TEST(Coverage, EveryPointerHasItsNullTested)
{
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments)
            EXPECT_EQ(tested("RequiredPointer", operation, argument) + tested("OptionalPointer", operation, argument) +
                          tested("UncheckedPointerDeathTest", operation, argument) +
                          tested("HandedOnPointer", operation, argument) +
                          (argument.required && catalogue::find_oddity(operation, catalogue::Facet::null)) +
                          (is_pointer(argument) && !argument.required && !argument.optional &&
                           catalogue::find_oddity(operation, catalogue::Facet::answer)),
                      is_pointer(argument) ? 1 : 0)
                << operation.name << ' ' << argument.name;
}

TEST(Coverage, EveryArgumentIsUnderTheFactsOfItsType)
{
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments)
            for (const char *suite : {"Text", "Block", "FixedBlock", "Database", "TextOut"})
                EXPECT_EQ(tested(suite, operation, argument), suite_of(operation, argument) == suite)
                    << suite << ' ' << operation.name << ' ' << argument.name;
}

TEST(Coverage, EveryDatabaseIsTestedByWhereItComesFromAndGoes)
{
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments) {
            const bool is_database = argument.type == ArgumentType::db;
            EXPECT_EQ(tested("KeyedDatabase", operation, argument) + tested("TextDatabase", operation, argument) +
                          tested("FileDatabase", operation, argument),
                      is_database)
                << operation.name;
            EXPECT_EQ(tested("HandedOutDatabase", operation, argument) + tested("DroppedDatabase", operation, argument),
                      is_database)
                << operation.name;
            EXPECT_EQ(tested("LoggedText", operation, argument) + tested("LoggedFile", operation, argument),
                      !argument.logged.empty())
                << operation.name;
        }
}

TEST(Coverage, EveryAnswerThatIsDeliveredIsTested)
{
    for (const Operation &operation : catalogue::operations()) {
        const bool odd = catalogue::find_oddity(operation, catalogue::Facet::answer);
        for (const Argument &argument : operation.arguments) {
            EXPECT_EQ(tested("DataOut", operation, argument), is_data_out(argument) && !odd) << operation.name;
            EXPECT_EQ(tested("DataOutOfLength", operation, argument),
                      argument.type == ArgumentType::block_out && argument.size == 0 && !odd)
                << operation.name;
            EXPECT_TRUE(argument.type != ArgumentType::pblock_out || odd) << operation.name;
        }
    }
}

TEST(Coverage, EveryPayloadIsTested)
{
    for (const Operation &operation : catalogue::operations())
        EXPECT_EQ(tested("PayloadOfLength", operation),
                  operation.record->payload && Subject(operation).argument_of(ArgumentType::length))
            << operation.name;
}

TEST(Coverage, EveryAnswerThatMayBeDroppedIsTested)
{
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments)
            EXPECT_EQ(tested("DroppedAnswer", operation, argument),
                      argument.type == ArgumentType::response && argument.optional)
                << operation.name;
}

TEST(Coverage, TextsThatMayOverrunEachOtherAreTestedTogether)
{
    for (const Operation &operation : catalogue::operations())
        EXPECT_EQ(tested("TextsTogether", operation), Subject(operation).argument_of(ArgumentType::text) != nullptr)
            << operation.name;
}

} // namespace contract
