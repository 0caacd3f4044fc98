// This file reads the text of a selector into nodes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fleet/selection/node.h"

namespace fleet
{

class Parser
{
public:
    explicit Parser(std::string_view selector) : text(selector) {}

    // Throws a call::UsageError.
    NodePointer whole();

    // What may be misspelt: plain names of OLTs, and labels.
    std::vector<Selector::Mention> names, labels;

private:
    using Rule = NodePointer (Parser::*)();

    NodePointer alternatives() { return chain_of("or", &Parser::conjunction, true); }
    NodePointer conjunction() { return chain_of("and", &Parser::factor, false); }
    NodePointer chain_of(std::string_view word, Rule part, bool decides);
    NodePointer factor();
    NodePointer names_or_comparison();
    NodePointer comparison(const std::string &key, size_t key_at, Operator op, std::string_view sign);
    NodePointer number(const NumberKey &key, Operator op, std::string_view sign);
    std::vector<Pattern> patterns(const std::string &behind);
    // Returns nothing when no pattern comes next.
    std::optional<Pattern> pattern(std::string_view ends);
    void check_names(const std::vector<Pattern> &patterns, size_t from);

    std::optional<std::pair<std::string_view, Operator>> take_operator();
    bool take_word(std::string_view word);
    bool take(char character);
    void skip_blanks();
    // Returns what comes next as errors name it.
    std::string found() const;
    [[noreturn]] void refuse(size_t where, const std::string &reason) const;

    std::string_view text;
    size_t at = 0, depth = 0;
};

// Returns whether the language has this word.
bool is_keyword(std::string_view word);

// Throws a call::UsageError that says what is wrong with a selector, and where.
[[noreturn]] void refuse_selector(size_t at, const std::string &reason);

} // namespace fleet
