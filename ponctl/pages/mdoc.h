// This file writes text of manual pages in the mdoc language.
#pragma once

#include <string>
#include <string_view>

namespace ponctl::mdoc
{

// Returns a text in lines that are no macros, with one sentence in each line.
std::string text(std::string_view text);
// Returns a word that can stand behind a macro.
std::string word(std::string_view word);
// Returns "--name" or "-n" as it stands behind a macro: Fl -name.
std::string option(std::string_view spelling);
std::string section(std::string_view title);
// Returns what stands before the first section.
std::string head(std::string_view date, std::string_view title, int chapter);
std::string name(std::string_view name, std::string_view brief);

} // namespace ponctl::mdoc
