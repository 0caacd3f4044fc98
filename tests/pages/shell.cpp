#include "shell.h"

#include <regex>

#include <cstdio>
#include <sstream>
#include <stdexcept>

std::string output_of(const std::string &command)
{
    std::FILE *pipe = popen((command + " 2>&1").c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string text;
    char chunk[4096];
    while (const size_t count = std::fread(chunk, 1, sizeof chunk, pipe))
        text.append(chunk, count);
    pclose(pipe);
    return text;
}

std::string rendered(const std::string &page)
{
    const std::string text = output_of("mandoc -T ascii -O width=1000 '" + page + "'");
    std::string plain;
    for (const char c : text) { // a character, backspace, and the same character again make it bold
        if (c == '\b')
            plain.pop_back();
        else
            plain.push_back(c);
    }
    return plain;
}

std::string complaints_about(const std::string &page)
{
    return output_of("mandoc -T lint -W warning '" + page + "'");
}

std::vector<std::string> lines_of(const std::string &text)
{
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

Names found(const std::string &text, const char *expression)
{
    const std::regex wanted(expression);
    Names names;
    for (std::sregex_iterator match(text.begin(), text.end(), wanted), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}
