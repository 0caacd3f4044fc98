#include "collector/rows.h"

#include "text/hex.h"

namespace front
{

void Cell::refuse(const char *wanted) const
{
    throw Fault("row " + std::to_string(row + 1) + ", " + column + ": " + wanted);
}

bool Cell::is_null() const
{
    return db_get_type(database, row, column) == DB_NONE;
}

uint64_t Cell::number(uint64_t most) const
{
    int64_t value = 0;
    if (db_get_integer(database, row, column, &value)) refuse("no whole number");
    if (value < 0 || static_cast<uint64_t>(value) > most) refuse("a number that is out of range");
    return static_cast<uint64_t>(value);
}

void Cell::read(uint32_t &value) const
{
    value = static_cast<uint32_t>(number(UINT32_MAX));
}

void Cell::read(uint64_t &value) const
{
    value = number(INT64_MAX);
}

void Cell::read(double &value) const
{
    if (db_get_real(database, row, column, &value)) refuse("no number");
}

void Cell::read(bool &value) const
{
    int flag = 0;
    if (db_get_bool(database, row, column, &flag)) refuse("neither true nor false");
    value = flag != 0;
}

void Cell::read(std::string_view &value) const
{
    if (db_get_type(database, row, column) != DB_TEXT) refuse("no text");
    value = db_get_text(database, row, column);
}

void Cell::read(view::Mac &value) const
{
    std::string_view text;
    read(text);
    const std::optional<view::Mac> mac = text::to_mac(text);
    if (!mac) refuse("no MAC address");
    value = *mac;
}

} // namespace front
