#include "text/filled.h"

#include <algorithm>
#include <sstream>

namespace text
{

std::string filled(std::string start, std::string_view text, size_t indent)
{
    std::string page, line = std::move(start);
    line.resize(std::max(line.size(), indent), ' ');
    size_t words_in_line = 0;
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        if (words_in_line > 0 && line.size() + 1 + word.size() > page_width) {
            page.append(line).push_back('\n');
            line.assign(indent, ' ');
            words_in_line = 0;
        }
        if (words_in_line++ > 0) line.push_back(' ');
        line.append(word);
    }
    return page.append(line).append("\n");
}

std::string filled(std::string_view text, size_t indent)
{
    return filled({}, text, indent);
}

} // namespace text
