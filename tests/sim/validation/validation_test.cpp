// These tests hold the model against formulas, and docs/validation.md against what they find. With WRITE_VALIDATION=1
// in the environment, the page is written again. Read it before you commit it.
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <sstream>

#include <gtest/gtest.h>

#include "page.h"

namespace ponsim
{
namespace
{

constexpr char introduction[] =
    R"(# The model against formulas

What a simulated OLT does follows from causes, and where a standard or a textbook has a formula for it, the model has to agree
with it. Each row of this page was measured on a running model, and is held against the formula by a test
(`tests/sim/validation`). The test fails when the difference is greater than the tolerance, and when this page is not what it
measures. `WRITE_VALIDATION=1` in the environment of `sim_model --gtest_filter='Validation*'` writes the page again.

Clauses are those of IEEE 802.3 where nothing else is said.
)";

const std::vector<PageSection> &sections()
{
    static const std::vector<PageSection> all{registration_section(), capacity_section(), bit_error_section(),
                                              optics_section(),       budget_section(),   timer_section()};
    return all;
}

std::string number(double value, int decimals)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(decimals) << value;
    // A difference that is rounded to nothing has no sign.
    const bool nothing = text.str().find_first_of("123456789") == std::string::npos;
    return nothing && text.str().front() == '-' ? text.str().substr(1) : text.str();
}

std::string page()
{
    std::ostringstream text;
    text << introduction;
    for (const PageSection &section : sections()) {
        text << "\n## " << section.title << "\n\n"
             << section.introduction << "\n\n"
             << "| what | formula | source | formula says | model does | difference | tolerance |\n"
             << "|---|---|---|---:|---:|---:|---:|\n";
        for (const PageRow &row : section.rows)
            text << "| " << row.what << ", " << row.unit << " | " << row.formula << " | " << row.source << " | "
                 << number(row.expected, row.decimals) << " | " << number(row.measured, row.decimals) << " | "
                 << number(row.measured - row.expected, row.decimals) << " | " << number(row.tolerance, row.decimals)
                 << " |\n";
    }
    return text.str();
}

std::string content_of(const std::string &file)
{
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

// One test measures, because the measuring takes long.
TEST(Validation, FindsEachRowWithinItsToleranceAndWhatThePageSays)
{
    for (const PageSection &section : sections()) {
        EXPECT_FALSE(section.rows.empty()) << section.title;
        for (const PageRow &row : section.rows)
            EXPECT_NEAR(row.measured, row.expected, row.tolerance) << section.title << ": " << row.what;
    }

    const std::string file = VALIDATION_PAGE;
    if (std::getenv("WRITE_VALIDATION")) std::ofstream(file) << page();
    EXPECT_EQ(content_of(file), page());
}

} // namespace
} // namespace ponsim
