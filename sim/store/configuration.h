// The OLT's configuration: all that is kept of it, as a text.
//
// The text has a line with what is to fit (the version of the rows and the OLT's settings), a line for each row of the
// store, and a last line with the number of rows, without which the text is not complete. Each line is a JSON object.
// Numbers and texts stand as such; bytes as {"hex":"..."}. The same state gives the same text.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/olt/change.h"
#include "model/plant/population.h"
#include "store/row.h"

namespace ponsim
{

// What is wrong with a text, and in which of its lines.
class ConfigurationError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The text is good, but of an OLT with other settings.
class OtherOltError : public ConfigurationError
{
public:
    using ConfigurationError::ConfigurationError;
};

struct Configuration {
    std::vector<Row> rows;
    Change change; // what they mean, for an OLT that was just set up
};

std::string write_configuration(const Settings &settings, std::span<const Row> rows);

// The configuration in a text for an OLT with these settings. Throws ConfigurationError.
Configuration read_configuration(std::string_view text, const Settings &settings);

} // namespace ponsim
