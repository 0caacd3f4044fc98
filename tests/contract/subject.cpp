#include "subject.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace contract
{
namespace
{

constexpr size_t default_block = 37;
constexpr uint32_t payload_header = 28; // bytes of a request beside its payload

// Fills the stack as deep as the frames of an operation may reach.
[[gnu::noinline]] void dirty_stack()
{
    uint8_t rubbish[16 * 1024];
    std::memset(rubbish, 0xA5, sizeof rubbish);
    asm volatile("" : : "r"(rubbish) : "memory");
}

void put_word(Bytes &wire, const catalogue::Field &field, uint32_t number)
{
    if (field.type != catalogue::FieldType::u32) throw std::logic_error("a number in a field of another type");
    std::memcpy(wire.data() + field.offset, &number, sizeof number);
}

// Writes a number that is shorter than a word. When the field is a word, the number is extended with zeros. Otherwise
// only its low byte is written.
void put_narrow(Bytes &wire, const catalogue::Field &field, uint32_t number)
{
    if (field.type == catalogue::FieldType::u32)
        put_word(wire, field, number);
    else
        wire[field.offset] = static_cast<uint8_t>(number);
}

} // namespace

bool is_number(const Argument &argument)
{
    return argument.type == ArgumentType::u32 || argument.type == ArgumentType::u16 ||
           argument.type == ArgumentType::u8;
}

bool is_pointer(const Argument &argument)
{
    return !is_number(argument) && argument.type != ArgumentType::length;
}

bool is_written(const Operation &operation, const Argument &argument)
{
    switch (argument.type) {
    case ArgumentType::record:
        return operation.answer == catalogue::AnswerForm::in_place ||
               operation.request == catalogue::RequestForm::stamped;
    case ArgumentType::db:
        return !argument.dropped;
    case ArgumentType::text_out:
    case ArgumentType::u8_out:
    case ArgumentType::u16_out:
    case ArgumentType::u32_out:
    case ArgumentType::block_out:
    case ArgumentType::block_inout:
    case ArgumentType::response:
    case ArgumentType::pblock_out:
        return true;
    case ArgumentType::u32:
    case ArgumentType::u16:
    case ArgumentType::u8:
    case ArgumentType::mac:
    case ArgumentType::text:
    case ArgumentType::block:
    case ArgumentType::length:
    case ArgumentType::length_at:
        return false;
    }
    return false;
}

bool is_output(const Operation &operation, const Argument &argument)
{
    if (argument.type == ArgumentType::record) return operation.answer == catalogue::AnswerForm::in_place;
    return is_written(operation, argument);
}

bool is_data_out(const Argument &argument)
{
    return argument.type == ArgumentType::u8_out || argument.type == ArgumentType::u16_out ||
           argument.type == ArgumentType::u32_out || argument.type == ArgumentType::block_out ||
           argument.type == ArgumentType::block_inout;
}

uint32_t lines_logged(const Operation &operation)
{
    return static_cast<uint32_t>(
        std::ranges::count_if(operation.arguments, [](const Argument &each) { return !each.logged.empty(); }));
}

uint32_t files_removed(const Operation &operation)
{
    return static_cast<uint32_t>(std::ranges::count(operation.arguments, catalogue::Source::file, &Argument::source));
}

Subject::Subject(const Operation &operation)
    : subject(operation), values(operation.arguments.size()), memories(operation.arguments.size())
{
    rb_reset();
    for (const Argument &argument : operation.arguments) {
        switch (argument.type) {
        case ArgumentType::u32:
            set_number(argument, 0x01020304 + 0x11111111 * static_cast<uint32_t>(index_of(argument)));
            break;
        case ArgumentType::u8:
            set_number(argument, 0xC1 + 0x11 * static_cast<uint32_t>(index_of(argument)) % 0x3E);
            break;
        case ArgumentType::u16:
            set_number(argument, 0xC1D2 + 0x1101 * static_cast<uint32_t>(index_of(argument)) % 0x3E00);
            break;
        case ArgumentType::mac:
            lend(argument, Memory::to_read({0xE2, 0xE4, 0xE6, 0xE9, 0xEB, 0xED}));
            break;
        case ArgumentType::text:
            set_text(argument, "this is " + std::string(argument.name));
            break;
        case ArgumentType::block:
            set_block(argument, pattern(argument.size ? argument.size : default_block));
            break;
        case ArgumentType::length: // set together with its block
        case ArgumentType::length_at:
            break;
        case ArgumentType::record:
            lend(argument, Memory::to_write(pattern(operation.record->size), true));
            break;
        case ArgumentType::db:
            lend(argument, Memory::to_write(pattern(sizeof(db_handle *)), true));
            break;
        case ArgumentType::text_out:
            lend(argument, Memory::to_write(pattern(operation.response_size - argument.field->offset), false));
            break;
        case ArgumentType::u8_out:
            lend(argument, Memory::to_write(pattern(argument.skip + sizeof(uint8_t)), false));
            break;
        case ArgumentType::u16_out:
            lend(argument, Memory::to_write(pattern(argument.skip + sizeof(uint16_t)), true));
            break;
        case ArgumentType::u32_out:
            lend(argument, Memory::to_write(pattern(argument.skip + sizeof(uint32_t)), true));
            break;
        case ArgumentType::block_out:
            set_room(argument, argument.size ? argument.size : default_block);
            break;
        case ArgumentType::block_inout:
            set_room(argument, argument.size ? argument.size : default_block);
            break;
        case ArgumentType::pblock_out:
            lend(argument, Memory::to_write(pattern(sizeof(void *)), true));
            break;
        case ArgumentType::response:
            lend(argument, Memory::to_write(pattern(operation.response_size), false));
            break;
        }
    }
}

void Subject::set_number(const Argument &argument, uint32_t number)
{
    values[index_of(argument)].number = number;
}

void Subject::set_null(const Argument &argument)
{
    values[index_of(argument)].pointer = nullptr;
}

void Subject::set_text(const Argument &argument, std::string_view text)
{
    Bytes content(text.begin(), text.end());
    content.push_back(0);
    lend(argument, Memory::to_read(std::move(content)));
}

void Subject::set_block(const Argument &argument, Bytes content)
{
    set_length_of(argument, static_cast<uint32_t>(content.size()));
    lend(argument, Memory::to_read(std::move(content)));
}

void Subject::set_room(const Argument &argument, uint32_t size)
{
    set_length_of(argument, size);
    lend(argument, Memory::to_write(pattern(argument.skip + size), false));
}

void Subject::set_length_of(const Argument &block, uint32_t length)
{
    Bytes word(sizeof length);
    std::memcpy(word.data(), &length, sizeof length);
    for (const Argument &each : subject.arguments) {
        if (each.other != static_cast<int>(index_of(block))) continue;
        if (each.type == ArgumentType::length) set_number(each, length);
        if (each.type == ArgumentType::length_at) lend(each, Memory::to_write(word, true));
    }
}

uint32_t Subject::call()
{
    dirty_stack();
    return catalogue::invoke(subject, values);
}

Bytes Subject::expected_request() const
{
    Bytes wire(subject.record->size);
    if (const Argument *record = argument_of(ArgumentType::record)) {
        const Bytes &lent = memories[index_of(*record)].as_lent();
        if (record->picked.empty()) wire = lent;
        for (const catalogue::Field *field : record->picked)
            std::copy_n(lent.begin() + field->offset, field->size, wire.begin() + field->offset);
    }
    for (const Argument &argument : subject.arguments)
        put(wire, argument);
    if (subject.command && subject.request != catalogue::RequestForm::as_is)
        put_word(wire, *subject.record->command, subject.command->code);
    for (const catalogue::Constant &constant : subject.constants)
        put_word(wire, *constant.field, constant.value);
    wire.resize(subject.record->payload ? payload_header + payload_length() : subject.record->size);
    return wire;
}

// Returns the length of the payload. Without a payload, zeros are sent.
uint32_t Subject::payload_length() const
{
    for (const Argument &argument : subject.arguments)
        if (argument.type == ArgumentType::length &&
            subject.arguments[static_cast<size_t>(argument.other)].type != ArgumentType::block_out)
            return number(argument);
    return 0;
}

// Copies without a bound: the wire grows as much as it must.
void Subject::put(Bytes &wire, const Argument &argument) const
{
    const bool comes_out = is_written(subject, argument) && argument.type != ArgumentType::block_inout;
    if (!argument.field || comes_out) return;
    if (argument.type == ArgumentType::u8) return put_narrow(wire, *argument.field, number(argument) & 0xFF);
    if (argument.type == ArgumentType::u16) return put_narrow(wire, *argument.field, number(argument) & 0xFFFF);
    if (!is_pointer(argument)) return put_word(wire, *argument.field, number(argument));
    if (!pointer(argument)) return;
    const Bytes &content = memories[index_of(argument)].as_lent();
    wire.resize(std::max(wire.size(), argument.field->offset + content.size()));
    std::copy(content.begin(), content.end(), wire.begin() + static_cast<ptrdiff_t>(argument.field->offset));
}

const Argument *Subject::argument_of(ArgumentType type) const
{
    for (const Argument &argument : subject.arguments)
        if (argument.type == type) return &argument;
    return nullptr;
}

bool Subject::outputs_untouched() const
{
    return std::ranges::all_of(subject.arguments, [this](const Argument &argument) {
        const Memory &memory = memories[index_of(argument)];
        if (!is_output(subject, argument)) return true;
        const bool stamped =
            argument.type == ArgumentType::record && subject.request == catalogue::RequestForm::stamped;
        return memory.bytes() == (stamped ? expected_request() : memory.as_lent()) && memory.guards_stand();
    });
}

bool Subject::surroundings_untouched() const
{
    return std::ranges::all_of(subject.arguments, [this](const Argument &argument) {
        const Memory &memory = memories[index_of(argument)];
        return memory.guards_stand() && (is_written(subject, argument) || memory.unchanged());
    });
}

size_t Subject::index_of(const Argument &argument) const
{
    return static_cast<size_t>(&argument - subject.arguments.data());
}

void Subject::lend(const Argument &argument, Memory memory)
{
    const size_t index = index_of(argument);
    memories[index] = std::move(memory);
    values[index].pointer = memories[index].pointer();
}

const rb_exchange &only_exchange()
{
    if (rb_exchanges() != 1) throw std::runtime_error(std::to_string(rb_exchanges()) + " exchanges, not one");
    return *rb_exchange_at(0);
}

Bytes sent()
{
    const rb_exchange &exchange = only_exchange();
    return {exchange.sent, exchange.sent + std::min<size_t>(exchange.request_length, sizeof exchange.sent)};
}

void script_exchange(int32_t result, uint32_t status, Bytes bytes)
{
    static Bytes kept;
    kept = std::move(bytes);
    rb_answer answer = {};
    answer.bytes = kept.data();
    answer.length = static_cast<uint32_t>(kept.size());
    answer.status = status;
    answer.result = result;
    rb_script_answer(&answer);
}

} // namespace contract
