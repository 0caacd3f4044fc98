// This file has what the tables of both editions have in common.
#include "output/exit_code.h"
#include "output/output.h"
#include "output/table.h"
#include "text/utf8.h"

namespace ponctl
{

Table::Table(std::vector<Heading> titles) : headings(std::move(titles))
{
    for (Heading &heading : headings)
        heading.title = text::printable(heading.title);
}

void Table::add(std::vector<std::string> row)
{
    for (std::string &text : row)
        text = text::printable(text);
    rows.push_back(std::move(row));
}

void Table::refuse_if_too_large(size_t line_length) const
{
    if (!rows.empty() && line_length > most_bytes / rows.size())
        throw TooLarge("the table has " + std::to_string(rows.size()) + " lines of " + std::to_string(line_length) +
                       " characters, too many to be printed; -o json has the result");
}

} // namespace ponctl
