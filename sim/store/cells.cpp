#include "store/cells.h"

#include "store/stored.h"
#include "text/utf8.h"

namespace ponsim
{
namespace
{

std::string name_of(const ColumnField &field)
{
    return std::string(field.name);
}

std::string bounds_text(const Bounds &bounds)
{
    if (bounds.least == bounds.greatest) return std::to_string(bounds.least);
    return std::to_string(bounds.least) + " to " + std::to_string(bounds.greatest);
}

} // namespace

void check_number(const ColumnField &field, int64_t number)
{
    if (field.bounds.contains(number)) return;
    throw StoreError(name_of(field) + " is " + std::to_string(number) + ", but must be " + bounds_text(field.bounds));
}

void check_text(const ColumnField &field, std::string_view text)
{
    check_size(field, text.size());
    if (!text::is_utf8(text) || text.find('\0') != std::string_view::npos)
        throw StoreError(name_of(field) + " is no text in UTF-8");
}

void check_size(const ColumnField &field, size_t bytes)
{
    if (field.bounds.contains(static_cast<int64_t>(bytes))) return;
    throw StoreError(name_of(field) + " has " + std::to_string(bytes) + " bytes, but must have " +
                     bounds_text(field.bounds));
}

void CellReader::refuse_kind(const ColumnField &field, std::string_view kind)
{
    throw StoreError(name_of(field) + " must be " + std::string(kind));
}

void CellReader::refuse_part(const ColumnField &field, size_t bytes)
{
    throw StoreError(name_of(field) + " has " + std::to_string(bytes) + " bytes, which do not end with a whole value");
}

} // namespace ponsim
