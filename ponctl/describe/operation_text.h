// This file describes an operation in words, as the catalogue does, for the pages on a terminal and for those of the
// manual.
#pragma once

#include <string>

#include "catalogue.h"

namespace ponctl
{

// Returns how a command line calls the operation.
std::string usage_of(const catalogue::Operation &operation);

std::string channel_text(const catalogue::Operation &operation);
std::string command_text(const catalogue::Operation &operation);
std::string request_text(const catalogue::Operation &operation);
std::string answer_text(const catalogue::Operation &operation);
std::string failure_text(const catalogue::Operation &operation);
// Says when the user is asked before a call. The text is empty when the user is never asked.
std::string asking_text(const catalogue::Operation &operation);

// Returns whether the operation calls another operation, whose name stands in the log.
bool goes_through(const catalogue::Operation &operation);

// Return what the operation's database looks like, and what the simulated service reads in its request or answers. Null
// means that the catalogue does not state it.
const catalogue::View *view_of(const catalogue::Operation &operation);
const catalogue::Layout *layout_of(const catalogue::Operation &operation, bool of_answer);

// Says whether an argument must be given, in which field it is sent or received, and how much fits there.
std::string rule_text(const catalogue::Operation &operation, const catalogue::Argument &argument);
// Returns whether the fields of the answer's layout come back in the argument.
bool reads_back_fields(const catalogue::Argument &argument);

// Returns whether the argument is a record of which no fields are picked. Then the fields that the simulated service
// reads in it count, too.
bool takes_whole_record(const catalogue::Argument &argument);

// Return the type, offset and meaning of a field or column. For a field that a command line sets, they add which
// numbers it holds; for a field that comes back, its unit.
std::string about_field(const catalogue::Field &field, bool is_set);
std::string about_column(const catalogue::Column &column);

} // namespace ponctl
