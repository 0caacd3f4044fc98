// What rows hold, as SNMP has it.
#pragma once

#include <string_view>

#include "snmp/core/table_kind.h"

namespace front::snmp
{

// A TruthValue.
Item truth(bool value);
// A number times a factor, as an Integer32, which it is held within.
Item scaled(double value, double factor);
Item scaled(const std::optional<double> &value, double factor);
// A number as a Gauge32, which it is held within.
Item gauge(double value);
Item gauge(const std::optional<double> &value);
// The place of a word among words, from 1 on; nothing of a word that is not among them.
Item place_of(std::string_view word, Words words);

// Returns an index of numbers that ends with an address.
Oid index_with(Oid numbers, const view::Mac &mac);

} // namespace front::snmp
