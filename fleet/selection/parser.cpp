#include "fleet/selection/parser.h"

#include <algorithm>
#include <array>

#include "call/codec/errors.h"
#include "fleet/protocol/topics.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/words.h"

namespace fleet
{
namespace
{

constexpr size_t longest_selector = 128 << 10, deepest = 100;
constexpr std::string_view blanks = " \t\r\n";

// These are in the order in which they are looked for: the longer ones first.
constexpr std::array<std::pair<std::string_view, Operator>, 6> operators{{{"!=", Operator::unequal},
                                                                          {"<=", Operator::less_or_equal},
                                                                          {">=", Operator::greater_or_equal},
                                                                          {"=", Operator::equal},
                                                                          {"<", Operator::less},
                                                                          {">", Operator::greater}}};

constexpr std::array<std::string_view, 4> keywords{"and", "or", "not", "all"};

} // namespace

bool is_keyword(std::string_view word)
{
    return std::ranges::find(keywords, text::lower_case(word)) != keywords.end();
}

void refuse_selector(size_t at, const std::string &reason)
{
    throw call::UsageError("the selector is wrong at character " + std::to_string(at + 1) + ": " + reason);
}

NodePointer Parser::whole()
{
    if (text.size() > longest_selector) refuse(longest_selector, "it is too long");
    NodePointer node = alternatives();
    skip_blanks();
    if (at < text.size()) refuse(at, "expected 'and' or 'or'" + found());
    return node;
}

NodePointer Parser::chain_of(std::string_view word, Rule part, bool decides)
{
    std::vector<NodePointer> parts;
    do
        parts.push_back((this->*part)());
    while (take_word(word));
    return parts.size() == 1 ? std::move(parts.front()) : chain(std::move(parts), decides);
}

NodePointer Parser::factor()
{
    if (++depth > deepest) refuse(at, "nested too deeply");
    NodePointer node;
    if (take_word("not")) {
        node = negation(factor());
    } else if (take('(')) {
        const size_t opened = at - 1;
        node = alternatives();
        if (!take(')')) refuse(at, "expected ')' for the '(' at character " + std::to_string(opened + 1) + found());
    } else if (take_word("all")) {
        node = everything();
    } else {
        node = names_or_comparison();
    }
    --depth;
    return node;
}

NodePointer Parser::names_or_comparison()
{
    skip_blanks();
    const size_t start = at;
    const std::optional<Pattern> first = pattern(" \t\r\n(),=!<>");
    if (!first || is_keyword(first->text)) {
        at = start;
        refuse(start, "expected a name of OLTs or a comparison as site=north" + found());
    }
    if (!first->literal)
        if (const auto op = take_operator()) return comparison(first->text, start, op->second, op->first);
    at = start;
    std::vector<Pattern> wanted = patterns("");
    check_names(wanted, start);
    return text_comparison(*find_text_key("name"), std::move(wanted), false);
}

NodePointer Parser::comparison(const std::string &key, size_t key_at, Operator op, std::string_view sign)
{
    if (const NumberKey *number_key = find_number_key(key)) return number(*number_key, op, sign);
    constexpr std::string_view label_prefix = "label.";
    const bool is_label = key.starts_with(label_prefix);
    const std::string name = is_label ? key.substr(label_prefix.size()) : key;
    if (!is_name(name)) refuse(key_at, "'" + text::printable(key) + "' is neither a key nor the name of a label");
    if (op != Operator::equal && op != Operator::unequal)
        refuse(key_at, key + " is a text, which '" + std::string(sign) + "' cannot compare; use = or !=");
    const size_t start = at;
    std::vector<Pattern> wanted = patterns(key + std::string(sign));
    const TextKey *text_key = is_label ? nullptr : find_text_key(key);
    if (!text_key) {
        labels.push_back({name, key_at});
        return label_comparison(name, std::move(wanted), op == Operator::unequal);
    }
    if (key == "name") check_names(wanted, start);
    constexpr std::array<std::string_view, 2> states{"online", "offline"};
    if (key == "state")
        for (const Pattern &state : wanted)
            if (std::ranges::find(states, text::lower_case(state.text)) == states.end())
                refuse(start, "state is online or offline, and not '" + text::printable(state.text) + "'" +
                                  text::suggestion(state.text, states));
    return text_comparison(*text_key, std::move(wanted), op == Operator::unequal);
}

NodePointer Parser::number(const NumberKey &key, Operator op, std::string_view sign)
{
    skip_blanks();
    const size_t start = at;
    const std::optional<Pattern> word = pattern(" \t\r\n()");
    const auto value = text::to_number<uint32_t>(word ? word->text : "");
    if (!value) {
        at = start;
        refuse(start, "expected a number behind " + std::string(key.name) + std::string(sign) + found());
    }
    return number_comparison(key, op, *value);
}

std::vector<Pattern> Parser::patterns(const std::string &behind)
{
    std::vector<Pattern> wanted;
    do {
        skip_blanks();
        std::optional<Pattern> each = pattern(" \t\r\n(),");
        if (!each)
            refuse(at, (behind.empty() || !wanted.empty() ? "expected a name or a value behind ','"
                                                          : "expected a value behind " + behind) +
                           found());
        wanted.push_back(std::move(*each));
    } while (take(','));
    return wanted;
}

std::optional<Pattern> Parser::pattern(std::string_view ends)
{
    if (at < text.size() && (text[at] == '\'' || text[at] == '"')) {
        const size_t end = text.find(text[at], at + 1);
        if (end == text.npos) refuse(at, "the quotation mark is not closed");
        Pattern quoted{std::string(text.substr(at + 1, end - at - 1)), true};
        at = end + 1;
        return quoted;
    }
    const size_t end = std::min(text.find_first_of(ends, at), text.size());
    if (end == at) return std::nullopt;
    Pattern bare{std::string(text.substr(at, end - at))};
    at = end;
    return bare;
}

void Parser::check_names(const std::vector<Pattern> &wanted, size_t from)
{
    for (const Pattern &each : wanted) {
        std::string name = each.text;
        if (!each.is_plain())
            std::ranges::replace_if(
                name, [](char c) { return c == '*' || c == '?'; }, '-');
        if (!is_name(name))
            refuse(from, "'" + text::printable(each.text) +
                             "' is no name of an OLT: these have 1 to 64 letters, digits, '-', '_' and '.'");
        if (each.is_plain()) names.push_back({each.text, from});
    }
}

std::optional<std::pair<std::string_view, Operator>> Parser::take_operator()
{
    skip_blanks();
    for (const auto &each : operators)
        if (text.substr(at).starts_with(each.first)) {
            at += each.first.size();
            return each;
        }
    return std::nullopt;
}

bool Parser::take_word(std::string_view word)
{
    skip_blanks();
    const size_t end = at + word.size();
    if (text::lower_case(text.substr(at, word.size())) != word) return false;
    if (end < text.size() && (blanks.find(text[end]) == blanks.npos && text[end] != '(' && text[end] != ')'))
        return false;
    at = end;
    return true;
}

bool Parser::take(char character)
{
    skip_blanks();
    if (at == text.size() || text[at] != character) return false;
    ++at;
    return true;
}

void Parser::skip_blanks()
{
    at = std::min(text.find_first_not_of(blanks, at), text.size());
}

std::string Parser::found() const
{
    constexpr size_t shown = 30;
    if (at == text.size()) return ", and it ends here";
    const std::string_view rest = text.substr(at);
    return ", and not '" + text::printable(rest.substr(0, shown)) + (rest.size() > shown ? "...'" : "'");
}

void Parser::refuse(size_t where, const std::string &reason) const
{
    refuse_selector(where, reason);
}

} // namespace fleet
