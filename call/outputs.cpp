#include "call/outputs.h"

#include "call/codec/numbers.h"

namespace call
{

using catalogue::Argument;
using catalogue::ArgumentType;

void for_each_output(const Invocation &called, const std::function<void(size_t)> &visit)
{
    for (size_t index = 0; index < called.operation().arguments.size(); ++index)
        if (called.delivers(index)) visit(index);
}

void write_output(JsonText &json, const Invocation &called, size_t index)
{
    const Argument &argument = called.operation().arguments[index];
    if (argument.type == ArgumentType::db)
        json.document(called.database(index));
    else if (argument.type == ArgumentType::text_out)
        json.text(called.text(index));
    else if (argument.type == ArgumentType::pblock_out)
        json.content(called.bytes(index));
    else if (is_number_out(argument))
        json.number(
            number_text(called.word_field(index), field_bytes(called.word_field(index), called.reading(index).bytes)));
    else
        json.record(called.reading(index));
}

void write_outputs(JsonText &json, const Invocation &called)
{
    if (!called.answered()) {
        json->Null();
        return;
    }
    json->StartObject();
    for_each_output(called, [&](size_t index) {
        json.key(called.operation().arguments[index].name);
        write_output(json, called, index);
    });
    json->EndObject();
}

} // namespace call
