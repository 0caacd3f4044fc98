// A Page holds the model against formulas: what is measured on a running OLT beside what a formula says.
#pragma once

#include <string>
#include <vector>

namespace ponsim
{

struct PageRow {
    std::string what;
    std::string unit;
    std::string formula;
    std::string source;
    double expected; // what the formula says
    double measured; // on the running model
    double tolerance;
    int decimals;
};

struct PageSection {
    std::string title;
    std::string introduction;
    std::vector<PageRow> rows;
};

// Each makes the model run.
PageSection registration_section();
PageSection capacity_section();
PageSection bit_error_section();
PageSection optics_section();
PageSection timer_section();

} // namespace ponsim
