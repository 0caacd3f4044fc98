#include "output/text.h"

#include <ctime>
#include <utility>

#include "call/codec/values.h"
#include "call/json.h"
#include "output/bytes.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/output.h"
#include "output/table.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

std::string_view text_of(std::span<const uint8_t> bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

} // namespace

void print_text(const Output &output, std::string_view text)
{
    std::string lines = text::printable(text, "\t\n");
    if (!lines.ends_with('\n')) lines.push_back('\n');
    std::fputs(lines.c_str(), output.stream);
}

void print_line(const Output &output, std::string_view line)
{
    std::fprintf(output.stream, "%s\n", text::printable(line).c_str());
}

void print_content(const Output &output, std::span<const uint8_t> bytes)
{
    if (output.format == Format::json)
        Json(output.stream).content(bytes);
    else if (output.format == Format::table && is_text(text_of(bytes)))
        print_text(output, text_of(bytes));
    else
        print_bytes(output, bytes);
}

std::string time_text()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

void refuse_hex(const Output &output, std::string_view what)
{
    if (output.format == Format::hex)
        throw UsageError("--output: " + std::string(what) + " has no bytes to show; take table, csv or json");
}

void print_texts(const Output &output, const std::vector<std::string> &names,
                 const std::vector<std::vector<std::string>> &rows)
{
    refuse_hex(output, "the catalogue");
    if (output.format != Format::json) {
        std::vector<Table::Heading> headings;
        for (const std::string &name : names)
            headings.push_back({name, &name == &names.back() ? Table::Fit::wrap : Table::Fit::whole});
        Table table(std::move(headings));
        for (const auto &row : rows)
            table.add(row);
        return table.print(output);
    }
    Json json(output.stream);
    json->StartArray();
    for (const auto &row : rows) {
        json->StartObject();
        for (size_t column = 0; column < row.size(); ++column)
            json.member(text::lower_case(names[column]), row[column]);
        json->EndObject();
    }
    json->EndArray();
}

} // namespace ponctl
