// What the command line says of itself: help as CLI11 lays it out, but in lines that fit a terminal, and errors.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace ponctl
{

// The words of a command, without the program's name: "onu bind". Empty for the program.
std::string path_of(const CLI::App &command);

// What a value of an option or argument is called; "on|off" where it is one of some words. Empty for a flag.
std::string value_name(const CLI::Option &option);

// The words that it may be, where it is one of some.
std::vector<std::string> choices_of(const CLI::Option &option);

// Whether its value is the next word, whatever that is.
bool takes_next_word(const CLI::Option &option);

// Whether as many values may be given as one likes.
bool takes_many(const CLI::Option &option);

// What is wrong with a command line, and where to look what is right.
std::string explain(const CLI::App &program, const CLI::ParseError &error);

class HelpFormatter : public CLI::Formatter
{
public:
    std::string make_description(const CLI::App *app) const override;
    std::string make_option(const CLI::Option *option, bool is_positional) const override;
    std::string make_subcommand(const CLI::App *command) const override;
    std::string make_footer(const CLI::App *app) const override;
};

} // namespace ponctl
