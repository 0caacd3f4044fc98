#include "shell/tokens.h"

#include <cctype>
#include <utility>

#include "output/exit_code.h"

namespace ponctl
{
namespace
{

bool is_blank(char c)
{
    return std::isspace(static_cast<unsigned char>(c));
}

struct Scan {
    std::vector<std::string> words;
    bool in_word = false; // the text ends inside the last word
    char quote = 0;       // what is open at the end: a quotation mark, or a backslash with nothing behind it
    bool comment = false;
};

// Returns the character that a backslash keeps, or 0 when the backslash is an ordinary character.
char kept_by_backslash(char quote, char next)
{
    if (quote == '\'') return 0;
    return quote == 0 || next == '"' || next == '\\' ? next : 0;
}

Scan scan(std::string_view text)
{
    Scan found;
    const auto word = [&found]() -> std::string & {
        if (!found.in_word) found.words.emplace_back();
        found.in_word = true;
        return found.words.back();
    };
    for (size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const bool last = at + 1 == text.size();
        if (c == '\\' && last && found.quote == 0) {
            word();
            found.quote = c;
        } else if (const char kept = c == '\\' && !last ? kept_by_backslash(found.quote, text[at + 1]) : char{0}) {
            word().push_back(kept);
            ++at;
        } else if (found.quote) {
            if (c == found.quote)
                found.quote = 0;
            else
                word().push_back(c);
        } else if (c == '\'' || c == '"') {
            word();
            found.quote = c;
        } else if (is_blank(c)) {
            found.in_word = false;
        } else if (c == '#' && !found.in_word) {
            found.comment = true;
            return found;
        } else {
            word().push_back(c);
        }
    }
    return found;
}

} // namespace

std::vector<std::string> split_line(std::string_view line)
{
    Scan found = scan(line);
    if (found.quote == '\\')
        throw UsageError("the line ends with a backslash, which keeps nothing; write \\\\ for one");
    if (found.quote)
        throw UsageError(std::string("a quotation mark ") + found.quote + " is not closed; write \\" + found.quote +
                         " for the character itself");
    return std::move(found.words);
}

Typed split_typed(std::string_view text)
{
    Scan found = scan(text);
    Typed typed{std::move(found.words), {}, found.quote, found.comment};
    if (!found.in_word) return typed;
    typed.word = std::move(typed.before.back());
    typed.before.pop_back();
    return typed;
}

std::string as_typed(std::string_view text, char quote)
{
    std::string typed;
    for (const char c : text) {
        const bool outside = quote == 0 && (is_blank(c) || c == '\'' || c == '"' || c == '\\' || c == '#');
        if (outside || (quote == '"' && (c == '"' || c == '\\'))) typed.push_back('\\');
        // A single quote cannot stand inside single quotes, so they are closed before it and opened behind it.
        if (quote == '\'' && c == '\'')
            typed.append("'\\''");
        else
            typed.push_back(c);
    }
    return typed;
}

} // namespace ponctl
