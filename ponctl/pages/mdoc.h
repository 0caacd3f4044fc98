// Text of manual pages in the mdoc language.
#pragma once

#include <string>
#include <string_view>

namespace ponctl::mdoc
{

// A text in lines that are no macros, one a sentence.
std::string text(std::string_view text);
// A word behind a macro.
std::string word(std::string_view word);
// "--name" or "-n" behind a macro: Fl -name.
std::string option(std::string_view spelling);
std::string section(std::string_view title);
// What stands before the first section.
std::string head(std::string_view date, std::string_view title, int chapter);
std::string name(std::string_view name, std::string_view brief);

} // namespace ponctl::mdoc
