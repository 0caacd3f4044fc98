#include "describe/field_list.h"

#include "call/codec/meaning.h"
#include "output/text.h"
#include "text/words.h"

namespace ponctl
{

std::vector<std::string> field_row(const catalogue::Field &field)
{
    const std::string range = field.range
                                  ? std::to_string(field.range->least) + " to " + std::to_string(field.range->greatest)
                                  : std::string();
    const std::string condition = field.condition.empty() ? std::string()
                                                          : "; only where " + std::string(field.condition) + " is " +
                                                                text::join(field.where, " or ");
    return {std::string(field.name),
            std::string(catalogue::to_text(field.type)),
            std::string(field.unit),
            range,
            text::join(call::value_words(field), ","),
            std::string(field.brief) + condition};
}

void print_fields(const Output &output, const std::vector<std::vector<std::string>> &rows)
{
    print_texts(output, {"FIELD", "TYPE", "UNIT", "RANGE", "VALUES", "BRIEF"}, rows);
}

} // namespace ponctl
