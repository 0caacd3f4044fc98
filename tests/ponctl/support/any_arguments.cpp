#include "any_arguments.h"

std::vector<std::string> words_for(const catalogue::Operation &operation, const AnyArguments &any)
{
    const catalogue::Field *stated = any.command ? operation.record->command : nullptr;
    const std::string code = stated ? std::to_string(any.command->code) : std::string();
    const auto number = [&any](const char *all_bytes) { return any.number.empty() ? all_bytes : any.number; };
    std::vector<std::string> words{"call", std::string(operation.name)};
    for (const catalogue::Argument &argument : operation.arguments) {
        const std::string name(argument.name);
        switch (argument.type) {
        case catalogue::ArgumentType::u32:
            words.push_back(name + "=" + (stated && argument.field == stated ? code : number("0x1020304")));
            break;
        case catalogue::ArgumentType::u16:
            words.push_back(name + "=" + number("0x181"));
            break;
        case catalogue::ArgumentType::u8:
            words.push_back(name + "=" + number("0x81"));
            break;
        case catalogue::ArgumentType::mac:
            words.push_back(name + "=02:11:22:33:44:55");
            break;
        case catalogue::ArgumentType::text:
            words.push_back(name + "=a text");
            break;
        case catalogue::ArgumentType::block:
        case catalogue::ArgumentType::block_inout:
            words.push_back(name + "=hex:0102");
            break;
        case catalogue::ArgumentType::record:
            words.push_back(name + (any.number.empty() ? "=hex:04030201" : "=hex:00"));
            if (stated) words.push_back(name + "." + std::string(stated->name) + "=" + code);
            break;
        case catalogue::ArgumentType::length:
        case catalogue::ArgumentType::length_at:
        case catalogue::ArgumentType::db:
        case catalogue::ArgumentType::text_out:
        case catalogue::ArgumentType::u8_out:
        case catalogue::ArgumentType::u16_out:
        case catalogue::ArgumentType::u32_out:
        case catalogue::ArgumentType::block_out:
        case catalogue::ArgumentType::pblock_out:
        case catalogue::ArgumentType::response:
            break;
        }
    }
    return words;
}
