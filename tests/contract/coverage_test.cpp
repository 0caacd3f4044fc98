// That no operation, and no argument of one, escapes the facts that concern it.
#include <map>
#include <set>

#include "selection.h"

namespace contract
{
namespace
{

using Names = std::set<std::string>;

// What the tests of a suite are named after. Every TEST_P of it must name the same.
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

// Empty where no test of the suite exists.
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

std::string suite_of(ArgumentType type)
{
    switch (type) {
    case ArgumentType::text:
        return "Text";
    case ArgumentType::block:
        return "Block";
    case ArgumentType::db:
        return "Database";
    case ArgumentType::text_out:
        return "TextOut";
    case ArgumentType::u32:
    case ArgumentType::length:
    case ArgumentType::mac:
    case ArgumentType::record:
        break; // in the request, or by where the record goes
    }
    return {};
}

} // namespace

TEST(Coverage, EveryOperationIsUnderTheFactsOfAll)
{
    ASSERT_GT(catalogue::operations().size(), 0u);
    for (const char *suite : {"Request", "ServiceStatus", "FailedExchange"})
        EXPECT_EQ(tested(suite).size(), catalogue::operations().size()) << suite;
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
    for (const Operation &operation : catalogue::operations())
        EXPECT_EQ(tested("OwnBuffer", operation) + tested("InPlace", operation) + tested("NoAnswer", operation), 1)
            << operation.name;
}

TEST(Coverage, EveryCallersRecordIsTested)
{
    for (const Operation &operation : catalogue::operations())
        EXPECT_EQ(tested("RecordAsIs", operation) + tested("RecordCopied", operation),
                  Subject(operation).argument_of(ArgumentType::record) ? 1 : 0)
            << operation.name;
}

TEST(Coverage, EveryPointerHasItsNullTested)
{
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments)
            EXPECT_EQ(tested("RequiredPointer", operation, argument) + tested("OptionalPointer", operation, argument) +
                          tested("UncheckedPointerDeathTest", operation, argument),
                      is_pointer(argument) ? 1 : 0)
                << operation.name << ' ' << argument.name;
}

TEST(Coverage, EveryArgumentIsUnderTheFactsOfItsType)
{
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments)
            for (const char *suite : {"Text", "Block", "Database", "TextOut"})
                EXPECT_EQ(tested(suite, operation, argument), suite_of(argument.type) == suite)
                    << suite << ' ' << operation.name << ' ' << argument.name;
}

TEST(Coverage, TextsThatMayOverrunEachOtherAreTestedTogether)
{
    for (const Operation &operation : catalogue::operations())
        EXPECT_EQ(tested("TextsTogether", operation), Subject(operation).argument_of(ArgumentType::text) != nullptr)
            << operation.name;
}

} // namespace contract
