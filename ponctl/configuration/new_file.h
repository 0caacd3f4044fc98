// This file writes a result into a file.
#pragma once

#include <string>
#include <string_view>

namespace ponctl
{

// Writes the whole text. When that fails, the file keeps its old contents. Only its owner may read the file, because
// what the tool writes may have passwords. Returns what went wrong, or an empty text.
std::string replace_file(const std::string &name, std::string_view text);

} // namespace ponctl
