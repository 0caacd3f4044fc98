// This is the only file that uses the library that parses command lines.
#include <algorithm>
#include <sstream>

#include <CLI/CLI.hpp>

#include "command_line/help.h"
#include "command_line/parse.h"

namespace command_line
{
namespace
{

class Parser
{
public:
    Parser(const Syntax &whole, Manner wanted)
        : program(whole), manner(wanted), app(whole.brief, whole.name), chosen(&whole)
    {
        app.fallthrough(); // an option of a command may also be given after the commands below it
        declare(app, program);
        for (const auto &[operand, option] : declared) {
            for (const Operand *other : operand->needed)
                option->needs(option_of(*other));
            for (const Operand *other : operand->excluded)
                option->excludes(option_of(*other));
        }
    }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    Line parse(const std::vector<std::string> &words)
    {
        try {
            app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // CLI11 takes the words from the back
        } catch (const ShowHelp &) {
            throw TextWanted{help()};
        } catch (const CLI::ParseError &error) {
            if (error.get_exit_code() == 0) throw TextWanted{text_of(error)};
            throw WrongLine(manner == Manner::wide ? plain(error) : explained(error));
        }
        Line line{chosen, {}};
        for (const auto &[operand, option] : declared)
            if (option->count() > 0) line.given.push_back(operand);
        return line;
    }

private:
    void declare(CLI::App &to, const Syntax &command)
    {
        to.set_help_flag();
        for (const Operand &argument : command.arguments)
            declare(to, argument, false);
        for (const Operand &option : command.options)
            declare(to, option, true);
        to.footer(command.footer);
        if (command.hidden) to.group("");
        to.require_subcommand(command.runs_itself() ? 0 : 1, 1);
        to.callback([this, &to, &command] {
            if (!to.get_subcommands().empty()) return;
            chosen = &command;
            if (command.check) command.check();
        });
        for (const auto &below : command.commands)
            declare(*to.add_subcommand(below->name, below->brief), *below);
    }

    void declare(CLI::App &to, const Operand &operand, bool is_option)
    {
        CLI::Option *option = std::visit([&](auto into) { return add(to, operand, into); }, operand.into);
        declared.emplace_back(&operand, option);
        if (operand.is_flag()) return;
        if (!operand.value.empty()) option->type_name(operand.value);
        if (!operand.shown_default.empty()) option->default_str(operand.shown_default);
        if (operand.is_file) option->check(CLI::ExistingFile);
        if (operand.range) check_range(*option, operand);
        if (operand.check)
            option->check(CLI::Validator([&operand](const std::string &word) { return operand.check(word); }, ""));
        if (is_option && operand.takes_many()) option->allow_extra_args(false);
        option->required(operand.required);
    }

    static CLI::Option *add(CLI::App &to, const Operand &operand, Help)
    {
        return to.set_help_flag(operand.name, operand.help);
    }
    static CLI::Option *add(CLI::App &to, const Operand &operand, const Version &version)
    {
        return to.set_version_flag(operand.name, version.text, operand.help);
    }
    static CLI::Option *add(CLI::App &to, const Operand &operand, bool *into)
    {
        return to.add_flag(operand.name, *into, operand.help);
    }
    template <class T>
    static CLI::Option *add(CLI::App &to, const Operand &operand, T *into)
    {
        return to.add_option(operand.name, *into, operand.help);
    }

    static void check_range(CLI::Option &option, const Operand &operand)
    {
        const auto [least, greatest] = *operand.range;
        if (std::holds_alternative<double *>(operand.into))
            option.check(CLI::Range(least, greatest));
        else
            option.check(CLI::Range(static_cast<uint64_t>(least), static_cast<uint64_t>(greatest)));
    }

    CLI::Option *option_of(const Operand &operand) const
    {
        return std::ranges::find(declared, &operand, &std::pair<const Operand *, CLI::Option *>::first)->second;
    }

    // Returns the last command that the command line names.
    const Syntax &reached() const
    {
        const CLI::App *at = &app;
        const Syntax *command = &program;
        while (!at->get_subcommands().empty()) {
            at = at->get_subcommands().front();
            command = std::ranges::find(command->commands, at->get_name(), &Syntax::name)->get();
        }
        return *command;
    }

    std::string help() const { return manner == Manner::wide ? app.help() : help_of(reached()); }

    std::string text_of(const CLI::ParseError &error) const
    {
        return error.get_name() == "CallForHelp" ? help() : std::string(error.what()) + "\n";
    }

    std::string plain(const CLI::ParseError &error) const
    {
        std::ostringstream said;
        app.exit(error, said, said);
        return said.str();
    }

    std::string explained(const CLI::ParseError &error) const
    {
        const Syntax &command = reached();
        if (const auto unknown = app.remaining(true); !unknown.empty())
            return explain_unknown(command, unknown.front());
        const std::string what = error.what();
        if (what == CLI::RequiredError::Subcommand(1).what()) return explain_no_command(command);
        if (error.get_name() == "RequiredError")
            return explain(command, what.substr(0, what.find(" is required")) + ": missing");
        if (error.get_name() == "ArgumentMismatch")
            return explain(command, what.substr(0, what.find(':')) + ": give it one value");
        return explain(command, what);
    }

    const Syntax &program;
    const Manner manner;
    CLI::App app;
    std::vector<std::pair<const Operand *, CLI::Option *>> declared;
    const Syntax *chosen;
};

} // namespace

bool Line::gives(std::string_view option) const
{
    return std::ranges::find(given, option, &Operand::name) != given.end();
}

Line parse(const Syntax &program, const std::vector<std::string> &words, Manner manner)
{
    return Parser(program, manner).parse(with_left_out_values(program, words));
}

std::vector<std::string> with_left_out_values(const Syntax &program, const std::vector<std::string> &words)
{
    std::vector<std::string> whole;
    bool options = true;
    for (size_t index = 0; index < words.size(); ++index) {
        const std::string &word = whole.emplace_back(words[index]);
        if (word == "--") options = false;
        const auto found = std::ranges::find(program.options, word, &Operand::name);
        if (!options || found == program.options.end() || !found->left_out) continue;
        const bool is_given = index + 1 < words.size() && found->left_out->takes(words[index + 1]);
        whole.back() += "=" + (is_given ? words[++index] : found->left_out->value);
    }
    return whole;
}

} // namespace command_line
