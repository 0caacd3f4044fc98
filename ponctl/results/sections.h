// Parts of an answer by the names that the layouts of the simulated service give them, and results of several calls
// shown as one.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "call/invocation.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// A field of an answer by its name in the layout; null where there is none, or the answer does not reach it.
const catalogue::Field *find_field(const Reading &reading, std::string_view name);
// Its value for people, or "-".
std::string field_text(const Reading &reading, std::string_view name);
std::optional<double> field_number(const Reading &reading, std::string_view name);
// A whole number as a word of a command line; empty where there is none.
std::string field_digits(const Reading &reading, std::string_view name);

using Words = std::span<const std::string_view>;

inline constexpr std::array<std::string_view, 2> off_on{"off", "on"};
inline constexpr std::array<std::string_view, 2> no_yes{"no", "yes"};

// The number of a word among `words`; a UsageError that starts with `name` where it is none of them.
std::string number_of_word(std::string_view name, std::string_view word, Words words);
// How a field is shown.
struct FieldStyle {
    std::string_view field;
    std::string_view title = {}; // empty: the field's name
    Words words = {};            // for people: of its numbers from 0 on
    Words flags = {};            // or of its bits, from the highest on
};

// The value of a field for people, or "-" where there is none.
std::string styled_text(const Reading &reading, const FieldStyle &style);

// The authentication modes from 0 on.
inline constexpr std::array<std::string_view, 4> auth_modes{"mac", "loid", "loid-password", "hybrid"};

// Of the PHY of a PON port.
std::vector<FieldStyle> pon_phy_styles();

// What one call delivered, as a part of a result.
struct Section {
    std::string_view name;  // of the member in JSON
    std::string_view title; // for people
    const Invocation *called;
    std::vector<FieldStyle> styles = {};
    bool styled_only = false;         // show no fields but those
    bool of_answer = false;           // show fields of the answer itself, in place of what the operation delivers
    bool registers = false;           // show numbers without a unit in hexadecimal, for people
    std::optional<uint32_t> row = {}; // show this row of a database alone
    size_t start = 0;                 // of an answer: where what is shown of it starts
};

// Shows what the calls delivered: as it is, where there is one without a title, or each under its title, or as members
// of one JSON object. Those that failed are left out, or null.
void print_sections(const Output &output, const std::vector<Section> &sections, bool titled);

// What was called for one of several ONUs.
struct Subject {
    std::string onu; // its name
    std::vector<Section> sections;
};

// The same of several ONUs: a table of all under each title, with a first column that names the ONU, or a JSON object
// for each.
void print_each(const Output &output, const std::vector<Subject> &subjects, bool titled);

// Shows what the calls delivered, several under their titles. Those that failed are said on standard error; the worst
// of them is the exit code.
ExitCode show(const Output &output, const std::vector<Section> &sections);

// Calls an operation and shows what it delivers.
ExitCode run_show(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const std::vector<FieldStyle> &styles = {});

} // namespace ponctl
