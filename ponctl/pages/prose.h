// Prose is what no program knows of itself. It is written by hand in the mdoc language: one file for each page, with
// sections (.Sh) and, for the commands of a group, subsections (.Ss) of DESCRIPTION.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace ponctl
{

class Prose
{
public:
    // A page without a file has no prose.
    explicit Prose(const std::filesystem::path &file);

    // Each function removes what it returns. What is left at the end has no position in the page.
    std::string section(const std::string &title);
    std::string of_command(const std::string &name);
    // Throws a std::runtime_error that names a section which no page used.
    void check_used() const;

private:
    std::string file;
    std::map<std::string, std::string> sections, commands;
};

} // namespace ponctl
