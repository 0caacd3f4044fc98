// What the catalogue says of an operation, in words: for the pages on a terminal and those of the manual.
#pragma once

#include <string>

#include "catalogue.h"

namespace ponctl
{

// How a command line calls it.
std::string usage_of(const catalogue::Operation &operation);

std::string channel_text(const catalogue::Operation &operation);
std::string command_text(const catalogue::Operation &operation);
std::string request_text(const catalogue::Operation &operation);
std::string answer_text(const catalogue::Operation &operation);
std::string failure_text(const catalogue::Operation &operation);
// When a call is asked about; empty where it never is.
std::string asking_text(const catalogue::Operation &operation);

// Whether it is made of another operation, whose name stands in the log.
bool goes_through(const catalogue::Operation &operation);

// What its database looks like, and what the simulated service reads in its request or answers; null: not stated.
const catalogue::View *view_of(const catalogue::Operation &operation);
const catalogue::Layout *layout_of(const catalogue::Operation &operation, bool of_answer);

// Whether an argument must be given, where it goes or comes from, and how much fits there.
std::string rule_text(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Whether the fields of the answer's layout come back in the argument.
bool reads_back_fields(const catalogue::Argument &argument);

// Whether the argument is a record of which no fields are picked, so that those count, too, that the simulated service
// reads in it.
bool takes_whole_record(const catalogue::Argument &argument);

// Type, place and meaning; of a field that a command line sets, which numbers it holds; of one that comes back, its
// unit.
std::string about_field(const catalogue::Field &field, bool is_set);
std::string about_column(const catalogue::Column &column);

} // namespace ponctl
