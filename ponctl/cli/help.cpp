#include "cli/help.h"

#include "filled.h"
#include "words.h"

namespace ponctl
{
namespace
{

// The name, and what it means beside it; below it where the name is too long for that.
std::string entry(const std::string &name, const std::string &about, size_t column)
{
    const std::string start = "  " + name;
    if (start.size() < column) return filled(start, about, column);
    return start + "\n" + filled(about, column);
}

// The command that the command line got to.
const CLI::App &reached(const CLI::App &app)
{
    const auto chosen = app.get_subcommands();
    return chosen.empty() ? app : reached(*chosen.front());
}

std::string help_of(const CLI::App &command)
{
    const std::string path = path_of(command);
    return "'ponctl " + (path.empty() ? "" : path + " ") + "--help'";
}

std::vector<std::string> names_of_commands(const CLI::App &command)
{
    std::vector<std::string> names;
    for (const CLI::App *each : command.get_subcommands([](const CLI::App *) { return true; }))
        names.push_back(each->get_name());
    return names;
}

std::vector<std::string> names_of_options(const CLI::App &command)
{
    std::vector<std::string> names;
    for (const CLI::App *app = &command; app; app = app->get_parent())
        for (const CLI::Option *option : app->get_options())
            for (const std::string &name : option->get_lnames())
                names.push_back("--" + name);
    return names;
}

std::string explain_unknown(const CLI::App &command, const std::string &word)
{
    const auto with_advice = [&](const std::string &wrong, const std::vector<std::string> &names) {
        const std::string near = suggestion(word, std::vector<std::string_view>(names.begin(), names.end()));
        return wrong + (near.empty() ? "; " + help_of(command) + " lists them" : near);
    };
    if (word.starts_with('-')) return with_advice("there is no option " + word, names_of_options(command));
    const std::vector<std::string> commands = names_of_commands(command);
    if (commands.empty()) return "'" + word + "' is a word too many; see " + help_of(command);
    return with_advice("there is no command '" + word + "'", commands);
}

} // namespace

std::string path_of(const CLI::App &command)
{
    if (!command.get_parent()) return {};
    const std::string before = path_of(*command.get_parent());
    return before.empty() ? command.get_name() : before + " " + command.get_name();
}

std::string explain(const CLI::App &program, const CLI::ParseError &error)
{
    const CLI::App &command = reached(program);
    const auto unknown = program.remaining(true);
    if (!unknown.empty()) return explain_unknown(command, unknown.front());
    const std::string what = error.what();
    if (what == CLI::RequiredError::Subcommand(1).what()) return "which command? " + help_of(command) + " lists them";
    if (error.get_name() == "RequiredError")
        return what.substr(0, what.find(" is required")) + ": missing; see " + help_of(command);
    if (error.get_name() == "ArgumentMismatch")
        return what.substr(0, what.find(':')) + ": give it one value; see " + help_of(command);
    return what + "; see " + help_of(command);
}

std::string value_name(const CLI::Option &option)
{
    if (option.get_type_size() == 0) return {};
    if (!option.get_option_text().empty()) return option.get_option_text();
    const bool unnamed = option.get_type_name() == "TEXT" && option.get_positional();
    return unnamed ? option.get_name(true) : option.get_type_name();
}

std::vector<std::string> choices_of(const CLI::Option &option)
{
    const std::string name = value_name(option);
    return name.find('|') == name.npos ? std::vector<std::string>() : CLI::detail::split(name, '|');
}

bool takes_next_word(const CLI::Option &option)
{
    const std::string name = value_name(option);
    return !name.empty() && !name.starts_with('[');
}

bool takes_many(const CLI::Option &option)
{
    return option.get_expected_max() >= CLI::detail::expected_max_vector_size;
}

std::string HelpFormatter::make_description(const CLI::App *app) const
{
    return filled(app->get_description(), 0);
}

std::string HelpFormatter::make_option(const CLI::Option *option, bool is_positional) const
{
    std::string name = make_option_name(option, is_positional);
    if (!is_positional) {
        if (const std::string value = value_name(*option); !value.empty()) name += " " + value;
        if (option->get_required()) name += " (required)";
    }
    if (takes_many(*option)) name += " ...";
    return entry(name, make_option_desc(option), get_column_width());
}

std::string HelpFormatter::make_footer(const CLI::App *app) const
{
    const std::string footer = app->get_footer();
    return footer.empty() ? footer : filled(footer, 0);
}

std::string HelpFormatter::make_subcommand(const CLI::App *command) const
{
    return entry(command->get_display_name(true), command->get_description(), get_column_width());
}

} // namespace ponctl
