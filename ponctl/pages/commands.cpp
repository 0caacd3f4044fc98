// This file writes the pages of the commands.
#include <cctype>
#include <set>

#include "pages/mdoc.h"
#include "pages/pages.h"
#include "pages/tree.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

std::string page_name(const Syntax &group)
{
    return "ponctl-" + group.name;
}

// Returns ".Fl -uni Ar N" without the dot.
std::string option_form(const Operand &option)
{
    const std::string value = option.value_name();
    return mdoc::option(option.spellings().back()) + (value.empty() ? "" : " Ar " + mdoc::word(value));
}

std::string optional(const std::string &form, bool required)
{
    return (required ? "." : ".Op ") + form + "\n";
}

std::string synopsis(const Syntax &command)
{
    const std::string path = command.path();
    std::string text = ".Nm ponctl\n" + (path.empty() ? std::string() : ".Cm " + path + "\n");
    for (const Operand &argument : command.arguments)
        text += optional("Ar " + mdoc::word(argument.name) + (argument.takes_many() ? " ..." : ""), argument.required);
    for (const Operand &option : command.options)
        if (!command.inherits(option)) text += optional(option_form(option), option.required);
    return text;
}

// Returns the arguments and options, each with its meaning.
std::string option_list(const Syntax &command)
{
    std::string text;
    for (const Operand &argument : command.arguments)
        text += ".It Ar " + mdoc::word(argument.name) + (argument.takes_many() ? " ..." : "") + "\n" +
                mdoc::text(sentence(argument.help));
    for (const Operand &option : command.options) {
        if (command.inherits(option)) continue; // the overview has it
        std::string forms;
        for (const std::string &spelling : option.spellings())
            forms += (forms.empty() ? "" : " , ") + mdoc::option(spelling);
        const std::string value = option.value_name();
        text += ".It " + forms + (value.empty() ? "" : " Ar " + mdoc::word(value)) + "\n" +
                mdoc::text(sentence(option.help));
    }
    return text.empty() ? text : ".Bl -tag -width Ds\n" + text + ".El\n";
}

std::string brief_and_prose(const Syntax &command, const std::string &prose)
{
    std::string text = mdoc::text(sentence(command.brief)) + prose;
    bool first = true;
    for (const std::string &paragraph : text::split(command.footer, '\n')) {
        if (paragraph.empty()) continue;
        text += (first ? "" : ".Pp\n") + mdoc::text(paragraph);
        first = false;
    }
    return text;
}

std::string command_section(const Syntax &command, const std::string &prose)
{
    std::string text = ".Ss " + command.path() + "\n" + brief_and_prose(command, prose);
    if (const std::string list = option_list(command); !list.empty()) text += list;
    return text;
}

std::string section(const std::string &title, const std::string &contents)
{
    return contents.empty() ? contents : mdoc::section(title) + contents;
}

} // namespace

std::string overview_page(const Syntax &program, Prose &prose, const std::string &date)
{
    std::string page = mdoc::head(date, "ponctl", 1) + mdoc::name("ponctl", "reach every operation of an EPON OLT");
    page += ".Sh SYNOPSIS\n.Nm\n.Op Ar OPTION ...\n.Ar COMMAND\n.Op Ar WORD ...\n";
    page += ".Sh DESCRIPTION\n" + brief_and_prose(program, prose.section("DESCRIPTION"));
    page += ".Sh COMMANDS\n.Bl -tag -width Ds\n";
    for (const Syntax *group : commands_of(program)) {
        page += ".It Cm " + mdoc::word(group->name) + "\n" + mdoc::text(sentence(group->brief));
        page += "See\n.Xr " + page_name(*group) + " 1 .\n";
    }
    page += ".El\n.Sh OPTIONS\nThey may stand anywhere on the command line.\n" + option_list(program) +
            prose.section("OPTIONS");
    for (const char *title : {"VALUES", "ENVIRONMENT", "FILES", "EXIT STATUS", "EXAMPLES"})
        page += section(title, prose.section(title));
    std::set<std::string> groups;
    for (const Syntax *group : commands_of(program))
        groups.insert(page_name(*group));
    page += ".Sh SEE ALSO\n";
    for (const std::string &group : groups)
        page += ".Xr " + group + " 1 ,\n";
    return page + ".Xr ponctl-operations 7 ,\n.Xr ponsim 8\n";
}

std::string group_page(const Syntax &group, Prose &prose, const std::string &date)
{
    const std::string name = page_name(group);
    const std::string brief = group.brief;
    std::string page =
        mdoc::head(date, name, 1) + mdoc::name(name, static_cast<char>(std::tolower(brief.front())) + brief.substr(1));
    page += ".Sh SYNOPSIS\n";
    for (const Syntax *command : all_commands_of(group))
        if (command->runs_itself()) page += synopsis(*command);
    page += ".Sh DESCRIPTION\n" + brief_and_prose(group, prose.section("DESCRIPTION"));
    if (const std::string list = option_list(group); !list.empty()) page += list;
    const std::vector<const Syntax *> all = all_commands_of(group);
    for (const Syntax *command : std::vector(all.begin() + 1, all.end()))
        page += command_section(*command, prose.of_command(command->path()));
    page += section("EXAMPLES", prose.section("EXAMPLES"));
    return page + ".Sh SEE ALSO\n.Xr ponctl 1 ,\n.Xr ponctl-operations 7\n";
}

} // namespace ponctl
