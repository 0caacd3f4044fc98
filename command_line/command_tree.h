// The command line of a program as data: its commands, what each takes, and what it runs. Parser, help, pages of a
// manual and completions of shells are made of it.
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

// An option that shows the help of the command that it is given to.
struct Help {
};

// An option that shows which version the program is.
struct Version {
    std::string text;
};

// Where goes what is given. A list takes as many words as one likes: an argument all that follow, an option one each
// time that it is given.
using Target = std::variant<Help, Version, bool *, std::string *, std::optional<std::string> *,
                            std::vector<std::string> *, std::optional<uint32_t> *, std::optional<uint64_t> *, double *>;

// An argument or an option. Each of the functions returns the operand itself.
struct Operand {
    std::string name; // PORT, or -o,--output
    Target into;
    std::string help;
    std::string value; // what an option takes, or an argument is: FILE, or a word of on|off; empty: a flag, or its name

    bool required = false;
    std::string shown_default = {};
    std::optional<std::pair<double, double>> range = {};
    bool is_file = false;                                       // an existing one
    std::function<std::string(const std::string &)> check = {}; // says what is wrong with a value; empty: nothing
    std::vector<const Operand *> needed = {}, excluded = {};

    // The value may be left out; then this one holds. The next word is the value where this takes it.
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
    // Whether its value is the next word, whatever that is.
    bool takes_next_word() const { return !is_flag() && !left_out; }
    // What its value is called: "on|off" where it is one of some words, [SECONDS] where it may be left out. Empty for
    // a flag.
    std::string value_name() const;
    // The words that the value may be, where it is one of some.
    std::vector<std::string> choices() const;
    // Of an option: -o and --output, each as it is typed.
    std::vector<std::string> spellings() const;
    // The argument's name, or the option's without dashes, the long one where it has two.
    std::string plain_name() const;
};

// A command without what it runs. What is declared stays where it is.
class Syntax
{
public:
    Syntax(std::string command, std::string what_it_does) : name(std::move(command)), brief(std::move(what_it_does)) {}
    virtual ~Syntax() = default;
    Syntax(const Syntax &) = delete;
    Syntax &operator=(const Syntax &) = delete;

    std::string name, brief, footer;
    bool hidden = false; // from help and completion
    const Syntax *parent = nullptr;
    std::list<Operand> arguments, options; // those of the commands above it hold for a command, too
    std::vector<std::unique_ptr<Syntax>> commands;
    // Looks at what was given once the command line is read. May throw WrongLine, and ShowHelp.
    std::function<void()> check;

    // Whether it does something by itself; else one of its commands must be given.
    virtual bool runs_itself() const = 0;

    Operand &argument(std::string operand, Target into, std::string help, std::string value = {});
    Operand &option(std::string operand, Target into, std::string help, std::string value = {});

    // The words that lead to it, without the program's name: "onu bind". Empty for the program.
    std::string path() const;
    // Whether an option is the help that the command has of the program.
    bool inherits(const Operand &option) const;

protected:
    void adopt(std::unique_ptr<Syntax> command);
};

// A command, and the function that it runs, of this type.
template <class Signature>
class Command;

template <class Result, class... Given>
class Command<Result(Given...)> : public Syntax
{
public:
    using Syntax::Syntax;

    std::function<Result(Given...)> run; // none: one of its commands must be given

    bool runs_itself() const override { return run != nullptr; }

    // Adds a command below this one, with this one's help option.
    Command &add(std::string command, std::string what_it_does)
    {
        auto added = std::make_unique<Command>(std::move(command), std::move(what_it_does));
        Command &stays = *added;
        adopt(std::move(added));
        return stays;
    }

    // Has the command run `act` with options that it keeps; returns them to be declared.
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

// A command and all commands below it that are not hidden, in the order in which they are declared.
std::vector<const Syntax *> all_commands_of(const Syntax &command);

} // namespace command_line
