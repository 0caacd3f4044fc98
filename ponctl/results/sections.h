// This file shows parts of an answer by the names that the layouts of the simulated service give them, and shows the
// results of several calls as one.
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

// Returns a field of an answer by its name in the layout. Returns null when there is none, or the answer does not reach
// it.
const catalogue::Field *find_field(const Reading &reading, std::string_view name);
// Return the field's value for people, or "-", and its value as a number.
std::string field_text(const Reading &reading, std::string_view name);
std::optional<double> field_number(const Reading &reading, std::string_view name);
// Returns a whole number as a word of a command line. The text is empty when there is no number.
std::string field_digits(const Reading &reading, std::string_view name);

using Words = std::span<const std::string_view>;

inline constexpr std::array<std::string_view, 2> off_on{"off", "on"};

// Returns the number of a word among `words`. Throws a UsageError that starts with `name` when the word is none of
// them.
std::string number_of_word(std::string_view name, std::string_view word, Words words);

// A FieldStyle says how a field is shown.
struct FieldStyle {
    std::string_view field;
    std::string_view title = {}; // empty: the field's name
};

// These are the words of the authentication modes, from 0 on.
inline constexpr std::array<std::string_view, 4> auth_modes{"mac", "loid", "loid-password", "hybrid"};

// A Section is what one call delivered, as a part of a result.
struct Section {
    std::string_view name;  // the name of the member in JSON
    std::string_view title; // the title for people
    const Invocation *called;
    std::vector<FieldStyle> styles = {};
    bool styled_only = false;         // show only the fields that have a style
    bool of_answer = false;           // show fields of the answer itself, in place of what the operation delivers
    bool registers = false;           // show numbers without a unit in hexadecimal, for people
    std::optional<uint32_t> row = {}; // show this row of a database alone
    size_t start = 0;                 // of an answer: the offset from which on it is shown
};

// Refuses options that choose rows and columns, where the result has no rows.
void refuse_selection(const Output &output);

// Shows what the calls delivered. A single section without a title is shown alone. Otherwise each is shown under its
// title, or as a member of one JSON object. Failed calls are left out, or null.
void print_sections(const Output &output, const std::vector<Section> &sections, bool titled);

// A Subject is one of several ONUs, with the sections that were called for it.
struct Subject {
    std::string onu; // the name of the ONU
    std::vector<Section> sections;
};

// As above, for several ONUs: a table of all ONUs under each title, with a first column that names the ONU, or a JSON
// object for each ONU.
void print_each(const Output &output, const std::vector<Subject> &subjects, bool titled);

// Shows what the calls delivered. Several calls are shown under their titles. Reports failed calls on standard error.
// Returns the worst of the exit codes.
ExitCode show(const Output &output, const std::vector<Section> &sections);

// Calls an operation and shows what it delivers.
ExitCode run_show(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const std::vector<FieldStyle> &styles = {});

} // namespace ponctl
