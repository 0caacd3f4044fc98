// What no program knows of itself, written by hand in the mdoc language: one file a page, in sections (.Sh) and, for
// the commands of a group, subsections (.Ss) of DESCRIPTION.
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
    // A page without a file has none.
    explicit Prose(const std::filesystem::path &file);

    // Each takes what it returns: what is left was in no place that the page has.
    std::string section(const std::string &title);
    std::string of_command(const std::string &name);
    // Throws std::runtime_error that names a section of which nothing was made.
    void check_used() const;

private:
    std::string file;
    std::map<std::string, std::string> sections, commands;
};

} // namespace ponctl
