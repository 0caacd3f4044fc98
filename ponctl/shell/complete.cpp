#include "shell/complete.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

#include <rapidjson/document.h>

#include "call/arguments.h"
#include "call/codec/meaning.h"
#include "cli/program.h"
#include "command_line/parse.h"
#include "describe/operation_text.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "shell/tokens.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Operation;
using command_line::Operand;
using command_line::Syntax;
using Candidates = std::vector<Candidate>;
using Words = std::vector<std::string>;

bool is_argument(const Operand &operand)
{
    return !operand.name.starts_with('-');
}

// A Walk is the position in the command line to which the words before the cursor lead.
class Walk
{
public:
    Walk(const Syntax &program, const Words &before) : at(&program)
    {
        for (const std::string &word : before)
            take(word);
    }

    const Syntax &command() const { return *at; }
    // Returns the option whose value comes next, or null when no value comes next.
    const Operand *open_option() const { return open; }
    bool may_be_option() const { return !open && !only_arguments; }

    // Returns the argument that comes next, or null when there is none.
    const Operand *argument() const
    {
        size_t left = taken;
        for (const Operand &argument : at->arguments) {
            if (left == 0 || argument.takes_many()) return &argument;
            --left;
        }
        return nullptr;
    }

    // Returns the options that are valid here: first the command's own, then those of the commands above it.
    std::vector<const Operand *> options() const
    {
        std::vector<const Operand *> found;
        std::set<std::string> names;
        for (const Syntax *command = at; command; command = command->parent)
            for (const Operand &option : command->options)
                if (names.insert(option.plain_name()).second) found.push_back(&option);
        return found;
    }

    const Operand *option(const std::string &word) const
    {
        for (const Operand *option : options())
            if (std::ranges::count(option->spellings(), word) > 0) return option;
        return nullptr;
    }

    bool is_given(const Operand &option) const { return given.contains(option.plain_name()); }
    // Returns the words that an argument or option was given, or none when it was not given.
    Words all(const std::string &name) const
    {
        const auto found = given.find(name);
        return found == given.end() ? Words() : found->second;
    }
    std::string one(const std::string &name) const
    {
        const Words words = all(name);
        return words.empty() ? std::string() : words.back();
    }

private:
    void take(const std::string &word)
    {
        if (open) {
            given[open->plain_name()].push_back(word);
            open = nullptr;
        } else if (word == "--" && !only_arguments) {
            only_arguments = true;
        } else if (word.size() > 1 && word[0] == '-' && !only_arguments) {
            take_option(word);
        } else if (const Syntax *below = command_below(word)) {
            at = below;
            taken = 0;
        } else if (const Operand *next = argument()) {
            given[next->plain_name()].push_back(word);
            ++taken;
        }
    }

    void take_option(const std::string &word)
    {
        const bool is_long = word[1] == '-';
        const size_t end = is_long ? word.find('=') : 2;
        const Operand *found = option(word.substr(0, end));
        if (!found) return;
        Words &values = given[found->plain_name()];
        if (!found->takes_next_word()) return;
        if (end < word.size())
            values.push_back(word.substr(is_long ? end + 1 : end));
        else
            open = found;
    }

    const Syntax *command_below(const std::string &name) const
    {
        const auto found = std::ranges::find(at->commands, name, &Syntax::name);
        return found == at->commands.end() ? nullptr : found->get();
    }

    const Syntax *at;
    const Operand *open = nullptr;
    size_t taken = 0; // number of the command's arguments that were given
    bool only_arguments = false;
    std::map<std::string, Words> given;
};

std::string text_of(const rapidjson::Value &value)
{
    if (value.IsString()) return {value.GetString(), value.GetStringLength()};
    if (value.IsUint64()) return std::to_string(value.GetUint64());
    return {};
}

// Returns the rows that a command of ponctl lists. One column gives the words, and the columns of `about` give their
// help.
Candidates listed(const Ask &ask, const Words &command, const char *column, const std::vector<const char *> &about)
{
    Candidates found;
    rapidjson::Document rows;
    rows.Parse(ask(command).c_str());
    if (rows.HasParseError() || !rows.IsArray()) return found;
    for (const rapidjson::Value &row : rows.GetArray()) {
        if (!row.IsObject() || !row.HasMember(column) || text_of(row[column]).empty()) continue;
        Candidate &candidate = found.emplace_back(Candidate{text_of(row[column]), {}});
        for (const char *name : about) {
            const std::string text = row.HasMember(name) ? text_of(row[name]) : std::string();
            if (text.empty()) continue;
            if (!candidate.help.empty()) candidate.help += ", ";
            candidate.help += row[name].IsString() ? text : text + " " + name;
        }
    }
    return found;
}

// Values finds the values of one argument.
class Values
{
public:
    Values(const Walk &reached, const std::string &typed, const Ask &asked) : walk(reached), word(typed), ask(asked) {}

    Candidates of(const Operand &option) const
    {
        const std::string name = option.plain_name(), value = option.value_name(), port = walk.one("PORT");
        if (name == "PORT" && word.find('/') != word.npos) return onu_sets();
        if (name == "PORT" || name == "port" || name == "to-port") return ports();
        if (value == "SET") return onu_sets();
        if (name == "ONU") return joined(ids(port), macs(port));
        if (name == "to-onu") return ids(walk.one("to-port"));
        if (value == "IDS" || (value == "ID" && is_argument(option))) return in_list(ids(port));
        if (value == "ID") return ids(port);
        if (value == "MAC") return macs(port);
        if (value == "OPERATION") return entries(catalogue::operations());
        if (value == "ARGUMENT") return arguments();
        if (value == "CHANNEL") return entries(catalogue::channels());
        if (value == "RECORD") return entries(catalogue::records());
        if (name == "COMMAND") return settings();
        if (name == "COMMAND FIELD=VALUE") return setting_words();
        if (value == "FIELD=VALUE") return fields();
        if (value == "COLUMN,..." || value == "EXPRESSION") return columns();
        if (value == "KIND") return listed(ask, {"profile", "kinds"}, "kind", {});
        if (value == "LOID") return listed(ask, {"loid", "list", port}, "loid", {});
        if (name == "NAME") return names();
        if (value == "FILE" || value == "DIR") return files();
        Candidates choices;
        for (const std::string &choice : option.choices())
            choices.push_back({choice, {}});
        return choices;
    }

private:
    static Candidates joined(Candidates first, Candidates second)
    {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }

    static Candidates with_start(const std::string &start, Candidates candidates)
    {
        for (Candidate &candidate : candidates)
            candidate.word.insert(0, start);
        return candidates;
    }

    Candidates ports() const { return listed(ask, {"port", "list"}, "pon_port", {"bound", "online", "waiting"}); }

    bool of_blacklist() const { return walk.command().name == "allow"; }

    Candidates of_onus(const std::string &port, const char *column, const std::vector<const char *> &about) const
    {
        Words command = of_blacklist() ? Words{"blacklist"} : Words{"onu", "list"};
        if (!port.empty()) command.push_back(port);
        return listed(ask, command, column, about);
    }
    Candidates ids(const std::string &port) const
    {
        return of_onus(port, of_blacklist() ? "id" : "onu_id", {"mac", "state", "description"});
    }
    Candidates macs(const std::string &port) const { return of_onus(port, "mac", {"onu_id", "state", "description"}); }

    // Returns ids at the end of a list, as in 1-5,7.
    Candidates in_list(Candidates ids) const
    {
        const size_t last = word.find_last_of(",-/");
        return with_start(last == word.npos ? std::string() : word.substr(0, last + 1), std::move(ids));
    }

    // Returns candidates for PORT/IDS.
    Candidates onu_sets() const
    {
        if (walk.command().name == "idset") return {};
        const size_t slash = word.find('/');
        if (slash != word.npos) {
            const std::string port = word.substr(0, slash);
            Candidates found = in_list(ids(port));
            if (!found.empty()) found.push_back({port + "/all", "all that are bound"});
            return found;
        }
        Candidates found = ports();
        for (Candidate &port : found) {
            port.word += "/";
            port.goes_on = true;
        }
        return found;
    }

    template <class Entry>
    static Candidates entries(std::span<const Entry> all)
    {
        Candidates found;
        for (const Entry &entry : all)
            found.push_back({std::string(entry.name), std::string(entry.brief)});
        return found;
    }

    static Candidates commands_of(const catalogue::Channel &channel)
    {
        Candidates found;
        for (const catalogue::Command &command : catalogue::commands())
            if (command.channel == &channel) found.push_back({std::string(command.name), std::string(command.brief)});
        return found;
    }

    static Candidate assignment(const std::string &name, std::string_view type, std::string_view brief,
                                std::string_view unit = {})
    {
        std::string help = std::string(type) + "; " + std::string(brief);
        if (!unit.empty()) help.append(" (").append(unit).append(")");
        return {name + "=", help, true};
    }

    static Candidate assignment(const std::string &start, const catalogue::Field &field)
    {
        return assignment(start + std::string(field.name), catalogue::to_text(field.type), field.brief, field.unit);
    }

    // Drops the assignments to names that have a value already.
    Candidates not_yet(Candidates assignments, const Words &words) const
    {
        std::erase_if(assignments, [&words](const Candidate &candidate) {
            return std::ranges::any_of(words,
                                       [&](const std::string &given) { return given.starts_with(candidate.word); });
        });
        return assignments;
    }

    // Returns the values of fields whose names mean the same in every record and operation. The port is the one that
    // the other words name.
    Candidates values_of_field(const std::string &field, const Words &words) const
    {
        const auto ends = [&field](std::string_view end) { return field.ends_with(end); };
        std::string port;
        for (const std::string &given : words)
            if (const size_t at = given.find("pon_port="); at != given.npos) port = given.substr(at + 9);
        if (ends("pon_port")) return ports();
        if (ends("onu_id")) return ids(port);
        if (ends("mac")) return macs(port);
        return {};
    }

    // Returns the values of a word name=value. `command` is the channel whose commands the value may be, or null.
    Candidates value(const Words &words, const catalogue::Channel *command) const
    {
        const size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        return with_start(name + "=", command ? commands_of(*command) : values_of_field(name, words));
    }

    // Returns the fields of an argument that a command line may set.
    static std::vector<const catalogue::Field *> settable_fields(const Operation &operation, const Argument &argument)
    {
        std::vector<const catalogue::Field *> fields;
        if (takes_fields(operation, argument)) fields = fields_of(operation, argument);
        if (const auto *layout = takes_whole_record(argument) ? layout_of(operation, false) : nullptr)
            for (const catalogue::Field &field : layout->fields)
                fields.push_back(&field);
        return fields;
    }

    // Returns the values of an argument, or of a field of an argument.
    Candidates argument_values(const Operation &operation, const std::string &name, const Words &words) const
    {
        const size_t dot = name.find('.');
        const catalogue::Field *named = nullptr;
        for (const Argument &argument : operation.arguments) {
            if (is_output(argument) || argument.name != name.substr(0, dot)) continue;
            if (is_command(operation, argument)) return value(words, operation.channel);
            if (dot == name.npos) {
                named = named_values_of(operation, argument);
                continue;
            }
            for (const catalogue::Field *field : settable_fields(operation, argument))
                if (field->name == name.substr(dot + 1)) named = field;
        }
        const Words values = named ? value_words(*named) : Words();
        if (values.empty()) return value(words, nullptr);
        Candidates found;
        for (const std::string &one : values)
            found.push_back({start_of_value() + one, {}});
        return found;
    }

    Candidates arguments() const
    {
        const Operation *operation = catalogue::find_operation(walk.one("OPERATION"));
        if (!operation) return {};
        const Words words = walk.all("ARGUMENT");
        if (const size_t equals = word.find('='); equals != word.npos)
            return argument_values(*operation, word.substr(0, equals), words);
        Candidates found;
        for (const Argument &argument : operation->arguments) {
            if (is_output(argument)) continue;
            const std::string own(argument.name);
            for (const catalogue::Field *field : settable_fields(*operation, argument))
                found.push_back(assignment(own + ".", *field));
            std::string about(argument.brief);
            if (may_be_omitted(argument)) about += "; may be left out";
            found.push_back(
                assignment(own, type_name(*operation, argument), about, argument.field ? argument.field->unit : ""));
        }
        return not_yet(std::move(found), words);
    }

    Candidates settings() const { return listed(ask, {"onu", "settings"}, "command", {"brief"}); }

    // Returns what stands before the value that is typed: the name of the field, and other values.
    std::string start_of_value() const { return word.substr(0, word.find_last_of("=,") + 1); }

    // Returns the names that a field's values have, of the fields that a command of ponctl lists.
    Candidates named_values(const Words &command, const std::string &field) const
    {
        Candidates found;
        rapidjson::Document rows;
        rows.Parse(ask(command).c_str());
        if (rows.HasParseError() || !rows.IsArray()) return found;
        for (const rapidjson::Value &row : rows.GetArray())
            if (row.IsObject() && row.HasMember("values") && row.HasMember("field") && text_of(row["field"]) == field)
                for (const std::string &name : text::split(text_of(row["values"]), ','))
                    if (!name.empty()) found.push_back({name, {}});
        return found;
    }

    Candidates listed_fields(const Words &command, const Words &words) const
    {
        if (const size_t equals = word.find('='); equals != word.npos) {
            Candidates named = named_values(command, word.substr(0, equals));
            return named.empty() ? value(words, nullptr) : with_start(start_of_value(), std::move(named));
        }
        Candidates found = listed(ask, command, "field", {"type", "brief", "unit"});
        for (Candidate &field : found) {
            field.word += "=";
            field.goes_on = true;
        }
        return not_yet(std::move(found), words);
    }

    // Returns the names of settings first, and then the fields of the named setting.
    Candidates setting_words() const
    {
        const Words words = walk.all("COMMAND FIELD=VALUE");
        Words command{"onu", "settings"};
        for (const std::string &given : words)
            if (given.find('=') == given.npos) command.push_back(given);
        return command.size() == 2 ? settings() : listed_fields(command, words);
    }

    // Returns the fields of a profile, or of a raw record.
    Candidates fields() const
    {
        const Words words = walk.all("FIELD=VALUE");
        if (walk.command().name != "raw") return listed_fields({"profile", "kinds", walk.one("KIND")}, words);
        const catalogue::Channel *channel = catalogue::find_channel(walk.one("CHANNEL"));
        const std::string named = walk.one("record");
        const catalogue::Record *record = channel ? channel->record : nullptr;
        if (!named.empty()) record = catalogue::find_record(named);
        if (!record) return {};
        if (const size_t equals = word.find('='); equals != word.npos)
            return value(words, record->command && record->command->name == word.substr(0, equals) ? channel : nullptr);
        Candidates found;
        for (const catalogue::Field &field : record->fields)
            found.push_back(assignment({}, field));
        return not_yet(std::move(found), words);
    }

    // Returns the columns of the listing that the command line asks for, at the end of a list or of an expression.
    Candidates columns() const
    {
        const size_t last = word.find_last_of(",-( ");
        const std::string start = last == word.npos ? std::string() : word.substr(0, last + 1);
        Words command = text::split(walk.command().path(), ' ');
        for (const Operand &argument : walk.command().arguments)
            for (const std::string &given : walk.all(argument.plain_name()))
                command.push_back(given);
        command.insert(command.end(), {"--limit", "0", "-o", "csv"});
        Candidates found;
        const std::string csv = ask(command);
        for (const std::string &name : text::split(csv.substr(0, csv.find('\n')), ','))
            if (!name.empty()) found.push_back({start + name, {}, true});
        return found;
    }

    // Returns the names of profiles, or of upgrade types.
    Candidates names() const
    {
        const std::string kind = walk.one("KIND");
        return kind.empty() ? listed(ask, {"upgrade", "types"}, "name", {"vendor", "model", "version"})
                            : listed(ask, {"profile", "list", kind}, "name", {});
    }

    Candidates files() const
    {
        namespace fs = std::filesystem;
        const size_t slash = word.rfind('/');
        const std::string folder = slash == word.npos ? std::string() : word.substr(0, slash + 1);
        Candidates found;
        std::error_code error;
        for (fs::directory_iterator file(folder.empty() ? "." : folder, error), end; !error && file != end;
             file.increment(error)) {
            const std::string name = file->path().filename().string();
            if (name.starts_with('.') && word.size() == folder.size()) continue;
            const bool is_folder = file->is_directory(error);
            error.clear();
            found.push_back({folder + name + (is_folder ? "/" : ""), {}, is_folder});
        }
        std::ranges::sort(found, {}, &Candidate::word);
        return found;
    }

    const Walk &walk;
    const std::string &word;
    const Ask &ask;
};

// A typed line of ours completes the long name of each option, a shell of the system every spelling.
Candidates options_at(const Walk &walk, bool nested)
{
    Candidates found;
    for (const Operand *option : walk.options()) {
        if (walk.is_given(*option) && !option->takes_many()) continue;
        for (const std::string &spelling : option->spellings())
            if (!nested || spelling == option->spellings().back()) found.push_back({spelling, option->help});
    }
    return found;
}

Candidates commands_at(const Walk &walk)
{
    Candidates found;
    for (const auto &command : walk.command().commands)
        if (!command->hidden) found.push_back({command->name, command->brief});
    return found;
}

void expect(Completion &completion, const Operand &operand)
{
    if (operand.value_name() == "FILE") completion.paths = Paths::files;
    if (operand.value_name() == "DIR") completion.paths = Paths::folders;
    completion.expected.push_back({is_argument(operand) ? operand.name : operand.value_name(), operand.help});
}

// Returns the text with which all of them start.
std::string common_start(const Candidates &candidates)
{
    std::string start = candidates.front().word;
    for (const Candidate &candidate : candidates) {
        const auto [at, ignored] = std::ranges::mismatch(start, candidate.word);
        start.erase(at, start.end());
    }
    return start;
}

} // namespace

Completion complete(const std::vector<std::string> &before, const std::string &word, const Ask &ask, bool nested)
{
    GlobalOptions of_a_line;
    of_a_line.nested = nested;
    const Program program(of_a_line);
    const Walk walk(program.tree, command_line::with_left_out_values(program.tree, before));
    Completion completion;
    Candidates &found = completion.candidates;
    const size_t equals = word.find('=');
    if (const Operand *option = walk.open_option()) {
        found = Values(walk, word, ask).of(*option);
        expect(completion, *option);
    } else if (walk.may_be_option() && word.starts_with("--") && equals != word.npos) {
        const Operand *given = walk.option(word.substr(0, equals));
        if (!given || given->is_flag()) return completion;
        found = Values(walk, word.substr(equals + 1), ask).of(*given);
        for (Candidate &candidate : found)
            candidate.word.insert(0, word.substr(0, equals + 1));
        expect(completion, *given);
    } else if (walk.may_be_option() && word.starts_with('-')) {
        found = options_at(walk, nested);
    } else {
        found = commands_at(walk);
        if (const Operand *argument = walk.argument()) {
            const Candidates values = Values(walk, word, ask).of(*argument);
            found.insert(found.end(), values.begin(), values.end());
            expect(completion, *argument);
        }
    }
    // A word that a terminal must not see cannot be typed, either.
    std::erase_if(found, [&word](const Candidate &candidate) {
        return !candidate.word.starts_with(word) || !text::is_printable(candidate.word);
    });
    for (Candidate &candidate : found)
        candidate.help = text::printable(candidate.help);
    return completion;
}

Tab press_tab(std::string_view line, const Ask &ask)
{
    const Typed typed = split_typed(line);
    if (typed.comment || typed.quote == '\\') return {};
    const Candidates found = complete(typed.before, typed.word, ask).candidates;
    if (found.empty()) return {};
    Tab tab{as_typed(common_start(found).substr(typed.word.size()), typed.quote), {}};
    if (found.size() == 1) {
        if (!found.front().goes_on) tab.typed += typed.quote ? std::string{typed.quote, ' '} : " ";
    } else if (tab.typed.empty()) {
        for (const Candidate &candidate : found)
            tab.choice.push_back(candidate.word);
    }
    return tab;
}

std::string help_at(std::string_view line, const Ask &ask)
{
    const Typed typed = split_typed(line);
    Completion completion = complete(typed.before, typed.word, ask);
    Candidates shown = std::move(completion.expected);
    shown.insert(shown.end(), completion.candidates.begin(), completion.candidates.end());
    if (typed.word.empty()) {
        const Candidates options = complete(typed.before, "-", ask).candidates;
        shown.insert(shown.end(), options.begin(), options.end());
    }
    size_t width = 0;
    for (const Candidate &one : shown)
        width = std::max(width, one.word.size());
    std::string text;
    for (Candidate &one : shown) {
        one.word.resize(one.help.empty() ? one.word.size() : width, ' ');
        text += "  " + one.word + (one.help.empty() ? "" : "  " + one.help) + "\n";
    }
    return text.empty() ? "  nothing more\n" : text;
}

} // namespace ponctl
