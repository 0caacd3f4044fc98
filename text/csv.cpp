#include "text/csv.h"

#include <algorithm>
#include <stdexcept>

namespace text
{
namespace
{

class CsvReader
{
public:
    explicit CsvReader(std::string_view whole) : text(whole)
    {
        constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
        if (text.starts_with(byte_order_mark)) at = byte_order_mark.size();
    }

    std::vector<CsvRow> rows()
    {
        std::vector<CsvRow> found;
        while (at < text.size()) {
            CsvRow row{line, {}};
            do
                row.cells.push_back(cell());
            while (takes(','));
            end_line();
            if (row.cells.size() > 1 || !row.cells.front().empty()) found.push_back(std::move(row));
        }
        return found;
    }

private:
    bool takes(char c)
    {
        if (at == text.size() || text[at] != c) return false;
        ++at;
        return true;
    }

    std::string cell()
    {
        if (takes('"')) return quoted();
        const size_t end = std::min(text.find_first_of(",\r\n\"", at), text.size());
        if (end < text.size() && text[end] == '"') fail("a quote inside a cell");
        std::string value(text.substr(at, end - at));
        at = end;
        return value;
    }

    std::string quoted()
    {
        std::string value;
        for (; at < text.size(); ++at) {
            if (takes('"') && (at == text.size() || text[at] != '"')) return value;
            if (text[at] == '\n') ++line;
            value.push_back(text[at]);
        }
        fail("a quote that is not closed");
    }

    void end_line()
    {
        takes('\r');
        if (at < text.size() && !takes('\n')) fail("something behind a quoted cell");
        ++line;
    }

    [[noreturn]] void fail(const std::string &what) const
    {
        throw std::runtime_error("line " + std::to_string(line) + ": " + what);
    }

    std::string_view text;
    size_t at = 0, line = 1;
};

} // namespace

std::vector<CsvRow> read_csv(std::string_view text)
{
    return CsvReader(text).rows();
}

} // namespace text
