// This file reads how a setting of a remote ONU stands, so that a command line changes only what it names.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "call/invocation.h"
#include "hits/hit.h"
#include "results/onu_set.h"

namespace ponctl
{

// A Setting is what a command line wants of ONUs: a command, and values for some of its fields.
struct Setting {
    const catalogue::Command *command;
    std::vector<Assignment> given; // fields of the layout, and of the record

    const catalogue::Layout *layout() const { return catalogue::find_layout(*command); }
    const catalogue::Record &record() const { return *command->channel->record; }
    // Returns a value that was given, or an empty text.
    std::string value_of(std::string_view field) const;
};

// Refuses values that the fields cannot have, and a setting that does not say of what it is, before any ONU is asked
// how it stands.
void check_given(const Setting &setting);

// Reads the settings that an ONU has now into a request. Returns false when they cannot be read; then the last of the
// calls says why. A setting that nothing can be asked about begins with zeros.
bool read_present(const Setting &setting, const Onu &onu, std::deque<Invocation> &calls, Bytes &request);

// Puts the given values into a request, and zeros where a field has no meaning any more. Throws a UsageError that names
// the field when the service does not take such a value.
void put_given(const Setting &setting, Bytes &request);

// Returns what is different between two requests. Without a layout nobody knows. What was before is left out where
// nothing can be asked about it.
std::vector<Change> changes_between(const Setting &setting, const Bytes &before, const Bytes &after);

// Returns whether an ONU has by now what was sent to it. A setting that nothing can be asked about counts as arrived.
bool has_arrived(const Setting &setting, const Onu &onu, const Bytes &sent);

} // namespace ponctl
