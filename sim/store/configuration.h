// The OLT's configuration is everything that is kept of it, as a text.
//
// The first line of the text says what must match: the version of the rows, and the OLT's settings. Each row of the
// store has a line. The first line also says what the values of a row are called, and which of them somebody
// configures: whoever reads the text needs no other description of it, and read_configuration() does not look at this
// one. The last line has the number of rows, and without it the text is not complete. Each line is a JSON object.
// Numbers and texts stand as such, bytes as {"hex":"..."}. The same state gives the same text.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "model/change/change.h"
#include "model/plant/population.h"
#include "store/stored.h"

namespace ponsim
{

// This error says what is wrong with a text, and in which line.
class ConfigurationError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The text is correct, but belongs to an OLT with other settings.
class OtherOltError : public ConfigurationError
{
public:
    using ConfigurationError::ConfigurationError;
};

std::string write_configuration(const Settings &settings, std::span<const Row> rows);

// Reads the configuration in a text for an OLT with these settings. Returns what its rows mean, as the change of an OLT
// that was just set up. Reads no further than up to the first wrong line. Throws ConfigurationError.
Change read_configuration(std::string_view text, const Settings &settings);

} // namespace ponsim
