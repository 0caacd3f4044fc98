// A Page holds the model against formulas: what is measured on a running OLT beside what a formula says.
#pragma once

#include <string>
#include <vector>

namespace ponsim
{

struct Finding {
    std::string what;
    std::string unit;
    std::string formula;
    std::string source;
    double expected; // what the formula says
    double measured; // on the running model
    double tolerance;
    int decimals;
};

struct Section {
    std::string title;
    std::string introduction;
    std::vector<Finding> rows;
};

// Each makes the model run.
Section registration_section();
Section capacity_section();
Section bit_error_section();
Section optics_section();
Section timer_section();

} // namespace ponsim
