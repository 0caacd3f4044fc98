#include "laboratory/report.h"

#include <map>

#include "laboratory/xml.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

std::string counted(size_t count, const std::string &what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string failure_text(const CheckResult &result)
{
    return "expected " + result.check.expectation->text + ", found " + *result.found;
}

// The tag opens and closes an element of XML. Its attributes are escaped.
using Attributes = std::initializer_list<std::pair<const char *, std::string>>;

std::string tag(const std::string &name, const Attributes &attributes, const std::string &end)
{
    std::string text = '<' + name;
    for (const auto &[attribute, value] : attributes)
        text += std::string(" ") + attribute + "=\"" + escaped_xml(value) + '"';
    return text + end;
}

// The results of an expectation at an OLT.
struct TestCase {
    const Expectation *expectation;
    std::string olt;
    bool reached = false;
    std::string failures = {}; // a line for each check that failed
};

std::vector<TestCase> cases_of(const TestRun &test)
{
    std::vector<TestCase> cases;
    std::map<const Expectation *, size_t> places; // an OLT has its own expectations
    for (const CheckResult &result : test.results) {
        const Expectation *expectation = result.check.expectation.get();
        const auto [place, is_new] = places.emplace(expectation, cases.size());
        if (is_new) cases.push_back({expectation, result.olt});
        TestCase &each = cases[place->second];
        each.reached |= result.reached;
        if (result.found)
            each.failures += "at " + text::time_text(result.check.at) + ": " + failure_text(result) + '\n';
    }
    return cases;
}

std::string suite_of(const TestRun &test)
{
    const std::vector<TestCase> cases = cases_of(test);
    size_t failures = 0, skipped = 0;
    std::string content;
    for (const TestCase &each : cases) {
        failures += !each.failures.empty();
        skipped += !each.reached;
        const std::string line = std::to_string(each.expectation->line);
        const std::string name =
            "line " + line + (test.several_olts ? " at " + each.olt : "") + ": " + each.expectation->text;
        const bool plain = each.reached && each.failures.empty();
        content += "    " + tag("testcase", {{"classname", test.file}, {"name", name}}, plain ? "/>\n" : ">");
        if (!each.reached) content += "<skipped/></testcase>\n";
        if (!each.failures.empty())
            content += tag("failure", {{"message", each.failures.substr(0, each.failures.find('\n'))}}, ">") +
                       escaped_xml(each.failures) + "</failure></testcase>\n";
    }
    const bool has_error = !test.error.empty();
    if (has_error)
        content += "    " + tag("testcase", {{"classname", test.file}, {"name", "the scenario"}}, ">") +
                   tag("error", {{"message", test.error}}, "/></testcase>\n");
    return "  " +
           tag("testsuite",
               {{"name", test.file + (test.seed ? " seed " + std::to_string(*test.seed) : "")},
                {"tests", std::to_string(cases.size() + has_error)},
                {"failures", std::to_string(failures)},
                {"errors", std::to_string(has_error)},
                {"skipped", std::to_string(skipped)}},
               ">\n") +
           content + "  </testsuite>\n";
}

} // namespace

std::string report_of(std::span<const TestRun> tests)
{
    std::string text;
    size_t checks = 0, failed = 0, failed_runs = 0, broken = 0, skipped = 0;
    for (const TestRun &test : tests) {
        const std::string seed = test.seed ? "seed " + std::to_string(*test.seed) : "";
        if (!test.error.empty()) text += test.error + (seed.empty() ? "" : " (" + seed + ')') + '\n';
        for (const CheckResult &result : test.results)
            if (result.found)
                text += result.check.expectation->file + ':' + std::to_string(result.check.expectation->line) + ": " +
                        seed + (test.several_olts ? ", OLT " + result.olt : "") + ", at " +
                        text::time_text(result.check.at) + ": " + failure_text(result) + '\n';
        checks += test.reached();
        skipped += test.results.size() - test.reached();
        failed += test.failed();
        failed_runs += test.failed() > 0;
        broken += !test.error.empty();
    }
    text += counted(tests.size(), "run") + ", " + counted(checks, "check");
    if (failed > 0)
        text += ": " + std::to_string(failed) + " failed, in " + counted(failed_runs, "run");
    else if (checks > 0)
        text += ": all hold";
    if (broken > 0) text += "; " + counted(broken, "run") + " could not be made";
    if (skipped > 0) text += "; " + std::to_string(skipped) + " not reached";
    return text + '\n';
}

std::string junit_of(std::span<const TestRun> tests)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"ponsim test\">\n";
    for (const TestRun &test : tests)
        text += suite_of(test);
    return text + "</testsuites>\n";
}

} // namespace ponsim
