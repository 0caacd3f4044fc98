// XML is written for programs that collect the results of tests.
#pragma once

#include <string>
#include <string_view>

namespace ponsim
{

// Returns a text as it stands in an element or in an attribute between double quotes. What XML cannot hold, such as a
// control character or a byte that is not UTF-8, becomes a replacement character.
std::string escaped_xml(std::string_view text);

} // namespace ponsim
