#include "pages/mdoc.h"

#include "text/words.h"

namespace ponctl::mdoc
{
namespace
{

std::string escaped(std::string_view text)
{
    std::string out;
    for (const char c : text)
        out += c == '\\' ? "\\e" : c == '"' ? "\\(dq" : std::string(1, c);
    return out;
}

} // namespace

std::string text(std::string_view text)
{
    const bool like_a_macro = text.starts_with('.') || text.starts_with('\'');
    return (like_a_macro ? "\\&" : "") + text::replaced(escaped(text), ". ", ".\n") + "\n";
}

// The first sign keeps short words, such as ID, from being taken for macros.
std::string word(std::string_view word)
{
    const bool quoted = word.find(' ') != word.npos;
    return (quoted ? "\"\\&" : "\\&") + escaped(word) + (quoted ? "\"" : "");
}

std::string option(std::string_view spelling)
{
    return "Fl " + std::string(spelling.substr(1));
}

std::string section(std::string_view title)
{
    return ".Sh " + text::upper_case(title) + "\n";
}

std::string head(std::string_view date, std::string_view title, int chapter)
{
    return ".Dd " + std::string(date) + "\n.Dt " + text::upper_case(title) + " " + std::to_string(chapter) +
           "\n.Os bsp_pon\n";
}

std::string name(std::string_view name, std::string_view brief)
{
    return ".Sh NAME\n.Nm " + std::string(name) + "\n.Nd " + escaped(brief) + "\n";
}

} // namespace ponctl::mdoc
