// Reports of test runs, for people and for programs that collect the results of tests.
#pragma once

#include <span>
#include <string>

#include "laboratory/run.h"

namespace ponsim
{

// Returns a line for each check that failed and for each run that could not be made, and a summary.
std::string report_of(std::span<const TestRun> tests);

// Returns a JUnit report: a test suite for each run, and in it a test case for each expectation and OLT. It has no
// times of day, so that the same runs give the same bytes.
std::string junit_of(std::span<const TestRun> tests);

} // namespace ponsim
