#include "selection/where.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "call/codec/errors.h"
#include "text/condition.h"
#include "text/hex.h"
#include "text/number.h"
#include "text/words.h"

namespace ponctl
{

using call::UsageError;

using text::Truth; // empty where a cell is empty

class Where::Node
{
public:
    virtual ~Node() = default;
    virtual Truth of(const std::vector<ListCell> &row) const = 0;
};

namespace
{

using Node = Where::Node;
using NodePointer = std::unique_ptr<const Node>;
using Row = std::vector<ListCell>;
using Not = text::Negation<Node, Row>;
using Chain = text::Chain<Node, Row>;
using catalogue::ColumnType;

[[noreturn]] void refuse(const std::string &message)
{
    throw UsageError("--where: " + message);
}

enum class Operator { equal, unequal, less, less_or_equal, greater, greater_or_equal, contains };

// These are in the order in which they are looked for: the longer ones first.
constexpr std::array<std::pair<std::string_view, Operator>, 7> operators{{{"!=", Operator::unequal},
                                                                          {"<=", Operator::less_or_equal},
                                                                          {">=", Operator::greater_or_equal},
                                                                          {"=", Operator::equal},
                                                                          {"<", Operator::less},
                                                                          {">", Operator::greater},
                                                                          {"~", Operator::contains}}};

bool is_order(Operator op)
{
    return op != Operator::equal && op != Operator::unequal && op != Operator::contains;
}

std::string_view sign_of(Operator op)
{
    return std::ranges::find(operators, op, &std::pair<std::string_view, Operator>::second)->first;
}

// Returns the digits of a MAC address, or of a part of one, however it is written.
std::string mac_digits(std::string_view text)
{
    std::string digits = text::lower_case(text);
    std::erase_if(digits, [](char c) { return c == ':' || c == '-' || c == '.'; });
    return digits;
}

class TextComparison : public Node
{
public:
    TextComparison(size_t number, const ListColumn &column, Operator comparing, const std::string &wanted)
        : index(number), op(comparing), is_mac(column.type == ColumnType::mac), value(plain(wanted))
    {
    }
    Truth of(const std::vector<ListCell> &row) const override
    {
        if (!row[index]) return std::nullopt;
        const std::string cell = plain(*row[index]);
        if (op == Operator::contains) return cell.find(value) != cell.npos;
        return (cell == value) == (op == Operator::equal);
    }

private:
    std::string plain(const std::string &text) const { return is_mac ? mac_digits(text) : text::lower_case(text); }

    size_t index;
    Operator op;
    bool is_mac;
    std::string value;
};

class NumberComparison : public Node
{
public:
    NumberComparison(size_t number, Operator comparing, double wanted) : index(number), op(comparing), value(wanted) {}
    Truth of(const std::vector<ListCell> &row) const override
    {
        if (!row[index]) return std::nullopt;
        const double cell = cell_number(*row[index]);
        switch (op) {
        case Operator::equal:
        case Operator::contains:
            return cell == value;
        case Operator::unequal:
            return cell != value;
        case Operator::less:
            return cell < value;
        case Operator::less_or_equal:
            return cell <= value;
        case Operator::greater:
            return cell > value;
        case Operator::greater_or_equal:
            return cell >= value;
        }
        return std::nullopt;
    }

private:
    size_t index;
    Operator op;
    double value;
};

// A Unit is how a value may be given in place of a column's own unit.
struct Unit {
    std::string_view name;
    double factor; // to the first unit of its kind
};
constexpr std::array<Unit, 5> times{{{"ms", 0.001}, {"s", 1}, {"m", 60}, {"h", 3600}, {"d", 86400}}};
constexpr std::array<Unit, 2> lengths{{{"m", 1}, {"km", 1000}}};
constexpr std::array<Unit, 4> rates{{{"bit/s", 0.001}, {"kbit/s", 1}, {"Mbit/s", 1e3}, {"Gbit/s", 1e6}}};

const Unit *find_unit(std::span<const Unit> units, std::string_view name)
{
    const auto found = std::ranges::find(units, name, &Unit::name);
    return found == units.end() ? nullptr : &*found;
}

bool is_time(std::string_view column)
{
    return column == "s" || column == "ms";
}

// Returns the factor from a unit to that of a column, or nothing when there is none.
std::optional<double> factor_of(std::string_view unit, std::string_view column)
{
    if (unit.empty() || text::lower_case(unit) == text::lower_case(column)) return 1;
    // No column has minutes: one in "m" has metres.
    const std::span<const Unit> units = is_time(column) ? std::span<const Unit>(times)
                                        : column == "m" ? std::span<const Unit>(lengths)
                                                        : std::span<const Unit>(rates);
    if (const Unit *own = find_unit(units, column), *given = find_unit(units, unit); own && given)
        return given->factor / own->factor;
    return std::nullopt;
}

class Parser
{
public:
    Parser(std::string_view expression, std::span<const ListColumn> known, const Where::Clock &asked)
        : text(expression), columns(known), clock(asked)
    {
    }

    NodePointer whole()
    {
        NodePointer node = alternatives();
        skip_blanks();
        if (at < text.size()) refuse("expected 'and' or 'or' in place of '" + rest() + "'");
        return node;
    }

private:
    using Rule = NodePointer (Parser::*)();

    NodePointer alternatives() { return chain("or", &Parser::conjunction, true); }
    NodePointer conjunction() { return chain("and", &Parser::factor, false); }

    NodePointer chain(std::string_view word, Rule part, bool decides)
    {
        std::vector<NodePointer> parts;
        do
            parts.push_back((this->*part)());
        while (take_word(word));
        return parts.size() == 1 ? std::move(parts.front()) : std::make_unique<Chain>(std::move(parts), decides);
    }

    NodePointer factor()
    {
        constexpr size_t deepest = 100;
        if (++depth > deepest) refuse("nested too deeply");
        NodePointer node;
        if (take_word("not")) {
            node = std::make_unique<Not>(factor());
        } else if (take('(')) {
            node = alternatives();
            if (!take(')')) refuse("expected ')'" + (rest().empty() ? " at the end" : " in place of '" + rest() + "'"));
        } else {
            node = comparison();
        }
        --depth;
        return node;
    }

    NodePointer comparison()
    {
        const std::string word = name();
        if (word.empty())
            refuse("expected a column" + (rest().empty() ? " at the end" : " in place of '" + rest() + "'"));
        const size_t index = column_number("--where", word, columns);
        const ListColumn &column = columns[index];
        const Operator op = comparison_operator(column);
        const std::string wanted = value(column, op);
        if (has_numbers(column)) {
            if (op == Operator::contains)
                refuse(column.name + " is a number, which '~' cannot search; use = != < <= > or >=");
            return std::make_unique<NumberComparison>(index, op, number(column, wanted));
        }
        if (is_order(op))
            refuse(column.name + " is " + (column.type == ColumnType::boolean ? "yes or no" : "a text") + ", which '" +
                   std::string(sign_of(op)) + "' cannot compare; use = != or ~");
        if (column.type == ColumnType::mac && op != Operator::contains && !text::to_mac(wanted))
            refuse(column.name + ": '" + wanted + "' is not a MAC address; '~' searches for a part of one");
        return std::make_unique<TextComparison>(index, column, op,
                                                column.type == ColumnType::boolean ? truth(column, wanted) : wanted);
    }

    Operator comparison_operator(const ListColumn &column)
    {
        skip_blanks();
        for (const auto &[sign, op] : operators)
            if (text.substr(at).starts_with(sign)) {
                at += sign.size();
                return op;
            }
        refuse("expected = != < <= > >= or ~ behind " + column.name);
    }

    // Returns the cells' word for a truth.
    static std::string truth(const ListColumn &column, const std::string &word)
    {
        if (word == "yes" || word == "true") return "true";
        if (word == "no" || word == "false") return "false";
        refuse(column.name + ": '" + word + "' is not yes or no");
    }

    double number(const ListColumn &column, std::string_view wanted) const
    {
        constexpr std::string_view ago = "-ago";
        const bool is_past = wanted.ends_with(ago);
        const std::string_view amount = is_past ? wanted.substr(0, wanted.size() - ago.size()) : wanted;
        const size_t end = std::min(amount.find_first_not_of("+-.0123456789"), amount.size());
        const auto given = text::to_real(amount.substr(amount.starts_with('+') ? 1 : 0, end));
        const auto factor = factor_of(amount.substr(end), column.unit);
        if (!given || !factor || (is_past && !is_time(column.unit)))
            refuse(column.name + ": '" + std::string(wanted) + "' is not a number" +
                   (column.unit.empty() ? "" : " in " + column.unit) +
                   (is_time(column.unit) ? ", as 90s, 5m, 2h, 1d or 1d-ago" : ""));
        return is_past ? clock() * *factor_of("s", column.unit) - *given * *factor : *given * *factor;
    }

    std::string value(const ListColumn &column, Operator op)
    {
        skip_blanks();
        if (at < text.size() && (text[at] == '\'' || text[at] == '"')) {
            const size_t end = text.find(text[at], at + 1);
            if (end == text.npos)
                refuse("the quotation mark before '" + std::string(text.substr(at + 1)) + "' is not closed");
            std::string quoted(text.substr(at + 1, end - at - 1));
            at = end + 1;
            return quoted;
        }
        const size_t end = std::min(text.find_first_of(" \t()", at), text.size());
        std::string bare(text.substr(at, end - at));
        if (bare.empty())
            refuse("expected a value behind " + column.name + std::string(sign_of(op)) + "; '' is an empty text");
        at = end;
        return bare;
    }

    static bool is_of_name(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.'; }

    // Returns the name that comes next, which may stand in quotation marks.
    std::string name()
    {
        skip_blanks();
        if (at < text.size() && (text[at] == '\'' || text[at] == '"')) {
            const size_t end = std::min(text.find(text[at], at + 1), text.size() - 1);
            std::string quoted(text.substr(at + 1, end - at - 1));
            at = end + 1;
            return quoted;
        }
        const size_t start = at;
        while (at < text.size() && is_of_name(text[at]))
            ++at;
        return std::string(text.substr(start, at - start));
    }

    bool take_word(std::string_view word)
    {
        skip_blanks();
        const size_t end = at + word.size();
        if (text::lower_case(text.substr(at, word.size())) != word) return false;
        if (end < text.size() && is_of_name(text[end])) return false;
        at = end;
        return true;
    }

    bool take(char character)
    {
        skip_blanks();
        if (at == text.size() || text[at] != character) return false;
        ++at;
        return true;
    }

    void skip_blanks()
    {
        while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])))
            ++at;
    }

    std::string rest() const { return std::string(text.substr(at)); }

    std::string_view text;
    std::span<const ListColumn> columns;
    const Where::Clock &clock;
    size_t at = 0, depth = 0;
};

} // namespace

Where::Where(std::string_view text, std::span<const ListColumn> columns, const Clock &clock)
    : root(Parser(text, columns, clock).whole())
{
}

Where::~Where() = default;

bool Where::wants(const std::vector<ListCell> &row) const
{
    return root->of(row) == true;
}

} // namespace ponctl
