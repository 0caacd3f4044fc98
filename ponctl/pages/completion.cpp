#include "pages/completion.h"

#include <algorithm>

#include "call/arguments.h"
#include "describe/operation_text.h"
#include "output/exit_code.h"
#include "pages/tree.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

std::vector<Candidate> values_of(const Operand &operand)
{
    switch (completes(operand)) {
    case Completes::files:
        return {{"@files", {}}};
    case Completes::folders:
        return {{"@folders", {}}};
    case Completes::operation_arguments:
        return {{"@arguments", {}}};
    case Completes::words:
        break;
    }
    std::vector<Candidate> values;
    for (const std::string &word : words_for(operand)) {
        const catalogue::Operation *operation = catalogue::find_operation(word);
        values.push_back({word, operation ? std::string(operation->brief) : std::string()});
    }
    return values;
}

void add_positions(std::vector<Position> &positions, const Syntax &command)
{
    const std::string path = command.path();
    Position commands{"commands:" + path, {}};
    for (const Syntax *each : commands_of(command))
        commands.candidates.push_back({each->name, each->brief});
    if (!commands.candidates.empty()) positions.push_back(commands);

    Position options{"options:" + path, {}};
    for (const Operand &option : command.options) {
        if (command.inherits(option)) continue; // the program's own option covers it everywhere
        for (const std::string &spelling : option.spellings()) {
            options.candidates.push_back({spelling, option.help});
            if (option.takes_next_word()) positions.push_back({"value:" + path + ":" + spelling, values_of(option)});
        }
    }
    if (!options.candidates.empty()) positions.push_back(options);

    size_t number = 0;
    for (const Operand &argument : command.arguments)
        positions.push_back(
            {"argument:" + path + ":" + (argument.takes_many() ? std::string("more") : std::to_string(++number)),
             values_of(argument)});
}

Position arguments_of(const catalogue::Operation &operation)
{
    Position position{"operation:" + std::string(operation.name), {}};
    for (const catalogue::Argument &argument : operation.arguments) {
        const std::string name(argument.name), about(argument.brief);
        if (is_output(argument)) continue;
        const auto add_field = [&](const catalogue::Field &field) {
            position.candidates.push_back({name + "." + std::string(field.name) + "=", std::string(field.brief)});
        };
        if (takes_fields(operation, argument))
            for (const catalogue::Field *field : fields_of(operation, argument))
                add_field(*field);
        const catalogue::Layout *layout = takes_whole_record(argument) ? layout_of(operation, false) : nullptr;
        if (layout) std::ranges::for_each(layout->fields, add_field);
        position.candidates.push_back({name + "=", about});
    }
    return position;
}

// Returns a text in single quotes. Characters that are not allowed inside them are replaced.
std::string quoted(const std::string &text, const std::string &apostrophe)
{
    return "'" + text::replaced(text, "'", apostrophe) + "'";
}

} // namespace

std::vector<Position> positions_of(const Syntax &program)
{
    std::vector<Position> positions;
    for (const Syntax *command : all_commands_of(program))
        add_positions(positions, *command);
    for (const catalogue::Operation &operation : catalogue::operations())
        positions.push_back(arguments_of(operation));
    return positions;
}

std::string bash_table(const std::vector<Position> &positions)
{
    std::string text = "_ponctl_known() {\n    case $1 in\n";
    for (const Position &position : positions) {
        std::string words;
        for (const Candidate &candidate : position.candidates)
            words += (words.empty() ? "" : " ") + candidate.word;
        text += "    '" + position.key + "') known='" + words + "' ;;\n";
    }
    return text + "    *) known=; return 1 ;;\n    esac\n}\n";
}

std::string zsh_table(const std::vector<Position> &positions)
{
    std::string text = "_ponctl_known() {\n    case $1 in\n";
    for (const Position &position : positions) {
        text += "    '" + position.key + "') known=(";
        for (const Candidate &candidate : position.candidates) {
            std::string word = text::replaced(candidate.word, ":", "\\:");
            if (!candidate.about.empty()) word += ":" + candidate.about;
            text += "\n        " + quoted(word, "'\\''");
        }
        text += ") ;;\n";
    }
    return text + "    *) known=(); return 1 ;;\n    esac\n}\n";
}

std::string fish_table(const std::vector<Position> &positions)
{
    std::string text = "function __ponctl_known\n    switch $argv[1]\n";
    for (const Position &position : positions) {
        text += "        case '" + position.key + "'\n";
        for (const Candidate &candidate : position.candidates)
            text += "            printf '%s\\t%s\\n' " + quoted(candidate.word, "\\'") + " " +
                    quoted(candidate.about, "\\'") + "\n";
    }
    return text + "        case '*'\n            return 1\n    end\n    return 0\nend\n";
}

} // namespace ponctl
