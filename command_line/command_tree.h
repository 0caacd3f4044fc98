// These types describe the command line of a program as data: its commands, what each takes, and what it runs. The
// parser, the help, the pages of the manual and the completions of shells are made of this data.
//
//     Command program("tool", "Does what it can.");
//     Command &loop = program.add("loop", "Detects forwarding loops");
//     loop.add("show", "Shows the settings").runs(show);
//     Command &time = loop.add("time", "Sets after which time ports recover");
//     time.argument("SECONDS", &time.runs(set_time), "the time in seconds").is_required();
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace command_line
{

// This option shows the help of the command that has it.
struct Help {
};

// This option shows the version of the program.
struct Version {
    std::string text;
};

// The Target is where a given value is stored. A list takes any number of words: an argument takes all words that
// follow, an option takes one word each time that it is given.
using Target = std::variant<Help, Version, bool *, std::string *, std::optional<std::string> *,
                            std::vector<std::string> *, std::optional<uint32_t> *, std::optional<uint64_t> *, double *>;

// An Operand is an argument or an option. Each of the functions that change it returns the operand itself.
struct Operand {
    std::string name; // PORT, or -o,--output
    Target into;
    std::string help;
    std::string value; // of an option what it takes, of an argument what it is: FILE, or on|off for one of some words;
                       // empty for a flag, or when the name says it

    bool required = false;
    std::string shown_default = {};
    std::optional<std::pair<double, double>> range = {};
    bool is_file = false;                                       // it must exist
    std::function<std::string(const std::string &)> check = {}; // says what is wrong with a value; an empty text:
                                                                // nothing is wrong
    std::vector<const Operand *> needed = {}, excluded = {};

    // The value may be left out; then this one is used. The next word is the value when `takes` returns true for it.
    struct LeftOut {
        std::string value;
        bool (*takes)(const std::string &word);
    };
    std::optional<LeftOut> left_out = {};

    Operand &is_required();
    Operand &shows_default(std::string text);
    Operand &is_within(double least, double greatest);
    Operand &is_existing_file();
    Operand &is_checked_by(std::function<std::string(const std::string &)> says_what_is_wrong);
    Operand &needs(const Operand &other);
    Operand &excludes(const Operand &other);
    Operand &may_leave_out_value(LeftOut value);

    bool is_flag() const;
    bool takes_many() const { return std::holds_alternative<std::vector<std::string> *>(into); }
    // Returns whether its value is the next word, whatever that word is.
    bool takes_next_word() const { return !is_flag() && !left_out; }
    // Returns what its value is called: "on|off" when it is one of some words, [SECONDS] when it may be left out.
    // Returns an empty text for a flag.
    std::string value_name() const;
    // Returns the words that the value may be, when it is one of some words.
    std::vector<std::string> choices() const;
    // Returns the spellings of an option, -o and --output, each as it is typed.
    std::vector<std::string> spellings() const;
    // Returns the argument's name, or the option's name without dashes. Of two names of an option it is the long one.
    std::string plain_name() const;
};

// A Syntax is a command without the function that it runs. Everything that is declared keeps its address.
class Syntax
{
public:
    Syntax(std::string command, std::string what_it_does) : name(std::move(command)), brief(std::move(what_it_does)) {}
    virtual ~Syntax() = default;
    Syntax(const Syntax &) = delete;
    Syntax &operator=(const Syntax &) = delete;

    std::string name, brief;
    std::string footer;  // paragraphs below everything else, a line each
    bool hidden = false; // in help and completion
    const Syntax *parent = nullptr;
    std::list<Operand> arguments, options; // those of the commands above it are also valid for this command
    std::vector<std::unique_ptr<Syntax>> commands;
    // Checks what was given after the command line was read. It may throw WrongLine and ShowHelp.
    std::function<void()> check;

    // Returns whether the command does something by itself. If not, one of its commands must be given.
    virtual bool runs_itself() const = 0;

    Operand &argument(std::string operand, Target into, std::string help, std::string value = {});
    Operand &option(std::string operand, Target into, std::string help, std::string value = {});

    // Returns the words that lead to the command, without the program's name: "onu bind". The text is empty for the
    // program.
    std::string path() const;
    // Returns whether the option is the help option that the command has from the program.
    bool inherits(const Operand &option) const;

protected:
    void adopt(std::unique_ptr<Syntax> command);
};

// A Command is a command with the function of this type that it runs.
template <class Signature>
class Command;

template <class Result, class... Given>
class Command<Result(Given...)> : public Syntax
{
public:
    using Syntax::Syntax;

    std::function<Result(Given...)> run; // empty: one of its commands must be given

    bool runs_itself() const override { return run != nullptr; }

    // Adds a command below this one. The new command has this one's help option.
    Command &add(std::string command, std::string what_it_does)
    {
        auto added = std::make_unique<Command>(std::move(command), std::move(what_it_does));
        Command &stays = *added;
        adopt(std::move(added));
        return stays;
    }

    // Makes the command run `act` with options that the command keeps. Returns these options, so that they can be
    // declared.
    template <class Options>
    Options &runs(std::function<Result(Given..., const Options &)> act)
    {
        auto kept = std::make_shared<Options>();
        run = [kept, act = std::move(act)](Given... given) { return act(given..., *kept); };
        return *kept;
    }
    template <class Options>
    Options &runs(Result (*act)(Given..., const Options &))
    {
        return runs<Options>(std::function<Result(Given..., const Options &)>(act));
    }
    void runs(Result (*act)(Given...)) { run = act; }
};

// Returns a command and all commands below it that are not hidden, in the order in which they are declared.
std::vector<const Syntax *> all_commands_of(const Syntax &command);

} // namespace command_line
