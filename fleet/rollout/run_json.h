// A run file has these lines, each an object of JSON:
//
//     {"run":"r20261123-5f0a1c22","at":1780000000,"words":["onu","list"],"selector":"all","options":{...},"waves":[["a"],["b"]]}
//     {"begun":["a"]}
//     {"outcome":"91c2...","state":"done","exit":0,"output":"...","errors":null}    before the first OLT that has it
//     {"ended":"a","outcome":"91c2..."}
//     {"checked":0,"exit":0}
//     {"over":"3 OLTs failed, and --max-failures permits 2"}                          null when it was not stopped
//     {"resumed":1780000100}
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "fleet/rollout/run_file.h"

namespace fleet
{

// Each function writes a line without its newline.
std::string line_of(const Run &run);
std::string line_of_begun(std::span<const std::string> olts);
std::string line_of_outcome(const std::string &digest, const Result &result);
std::string line_of_ended(const std::string &olt, const std::string &digest);
std::string line_of_checked(size_t wave, int32_t exit);
std::string line_of_over(const std::string &stopped);
std::string line_of_resumed(uint64_t now);

// Returns a digest that differs between results that differ.
std::string digest_of(const Result &result);

// Throws a call::UsageError.
Run run_from_line(std::string_view line);

// A RunReader takes the lines behind the first one.
class RunReader
{
public:
    explicit RunReader(const Run &run);
    // Throws a call::UsageError that says what is wrong with the line.
    void read(std::string_view line);

    Progress progress;
    std::map<std::string, Result> outcomes; // by their digests
    bool over = false;                      // it ended, and was not stopped

private:
    void check_olt(const std::string &olt) const;

    std::set<std::string, std::less<>> olts;
    size_t waves;
};

} // namespace fleet
