// Texts that are read as result databases.
#include <string>

#include "board/datastore.h"
#include "target.h"

namespace
{

void read_cell(const db_handle *table, uint32_t row, const char *column)
{
    int64_t whole;
    double real;
    int yes;
    db_get_type(table, row, column);
    db_get_integer(table, row, column, &whole);
    db_get_real(table, row, column, &real);
    db_get_bool(table, row, column, &yes);
    if (const char *text = db_get_text(table, row, column)) (void)std::string(text);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr uint32_t most = 16; // rows and columns that are read
    const std::string text(reinterpret_cast<const char *>(data), size);
    db_handle *table = db_from_string(text.c_str());
    fuzz::require(table, "every text makes a table");
    uint32_t length = 0;
    fuzz::require(db_text(table, &length) == text.substr(0, text.find('\0')), "the text is kept");
    for (uint32_t row = 0; row <= db_rows(table) && row < most; ++row)
        for (uint32_t column = 0; column <= db_columns(table) && column < most; ++column)
            if (const char *name = db_column_name(table, column)) read_cell(table, row, name);
    db_free(table);
    return 0;
}
