#include "call/arguments.h"

#include <algorithm>
#include <cstring>

#include "board/datastore.h"
#include "board/util.h"
#include "call/codec/errors.h"
#include "call/codec/meaning.h"
#include "call/codec/numbers.h"
#include "text/words.h"

namespace call
{

using catalogue::Argument;
using catalogue::ArgumentType;
using catalogue::Operation;

namespace
{

// This bounds how many bytes of an answer may be wanted. A greater number is a typing error.
constexpr uint32_t greatest_wanted = 1048576;

// The library refuses a longer payload, because there are no fields behind it that it could continue into.
void check_payload(std::string_view name, size_t size)
{
    constexpr size_t longest_payload = 4092; // bytes
    if (size > longest_payload)
        throw UsageError(std::string(name) + ": " + std::to_string(size) + " bytes are more than the " +
                         std::to_string(longest_payload) + " of a payload");
}

} // namespace

bool is_output(const Argument &argument)
{
    switch (argument.type) {
    case ArgumentType::db:
    case ArgumentType::text_out:
    case ArgumentType::u8_out:
    case ArgumentType::u16_out:
    case ArgumentType::u32_out:
    case ArgumentType::block_out:
    case ArgumentType::pblock_out:
    case ArgumentType::response:
        return true;
    case ArgumentType::u32:
    case ArgumentType::u16:
    case ArgumentType::u8:
    case ArgumentType::mac:
    case ArgumentType::text:
    case ArgumentType::block:
    case ArgumentType::block_inout:
    case ArgumentType::length:
    case ArgumentType::length_at:
    case ArgumentType::record:
        break;
    }
    return false;
}

bool is_number(const Argument &argument)
{
    return argument.type == ArgumentType::u32 || argument.type == ArgumentType::u16 ||
           argument.type == ArgumentType::u8;
}

bool is_length(const Argument &argument)
{
    return argument.type == ArgumentType::length || argument.type == ArgumentType::length_at;
}

bool is_number_out(const Argument &argument)
{
    return argument.type == ArgumentType::u32_out || argument.type == ArgumentType::u16_out ||
           argument.type == ArgumentType::u8_out;
}

bool is_in_place(const Operation &operation, const Argument &argument)
{
    return argument.type == ArgumentType::block_inout ||
           (argument.type == ArgumentType::record && operation.answer == catalogue::AnswerForm::in_place);
}

bool is_ignored(const Argument &argument)
{
    return is_number(argument) && !argument.field;
}

bool is_sized_block(const Argument &argument)
{
    return (argument.type == ArgumentType::block_inout || argument.type == ArgumentType::block) && argument.size > 0;
}

bool takes_fields(const Operation &operation, const Argument &argument)
{
    return argument.type == ArgumentType::record ||
           (is_sized_block(argument) && !fields_of(operation, argument).empty());
}

bool may_be_omitted(const Argument &argument)
{
    return is_output(argument) || is_ignored(argument) || argument.optional || is_length(argument);
}

std::string form_of(const Operation &operation, const Argument &argument)
{
    const std::string name(argument.name);
    switch (argument.type) {
    case ArgumentType::u32:
        return name + (is_command(operation, argument) ? "=COMMAND" : "=NUMBER");
    case ArgumentType::u16:
    case ArgumentType::length:
    case ArgumentType::length_at:
        return name + "=NUMBER";
    case ArgumentType::u8:
        return name + "=BYTE";
    case ArgumentType::mac:
        return name + "=MAC";
    case ArgumentType::text:
        return name + "=TEXT";
    case ArgumentType::block:
    case ArgumentType::block_inout:
    case ArgumentType::record:
        return (takes_fields(operation, argument) ? name + ".FIELD=VALUE or " : std::string()) + name + "=BLOCK";
    case ArgumentType::db:
    case ArgumentType::text_out:
    case ArgumentType::u8_out:
    case ArgumentType::u16_out:
    case ArgumentType::u32_out:
    case ArgumentType::block_out:
    case ArgumentType::pblock_out:
    case ArgumentType::response:
        break;
    }
    return {};
}

std::string_view type_name(const Operation &operation, const Argument &argument)
{
    switch (argument.type) {
    case ArgumentType::u32:
        return is_command(operation, argument) ? "command" : "number";
    case ArgumentType::u16:
    case ArgumentType::u16_out:
    case ArgumentType::u32_out:
        return "number";
    case ArgumentType::u8:
    case ArgumentType::u8_out:
        return "byte";
    case ArgumentType::length:
    case ArgumentType::length_at:
        return "length";
    case ArgumentType::mac:
        return "mac";
    case ArgumentType::text:
    case ArgumentType::text_out:
        return "text";
    case ArgumentType::block:
    case ArgumentType::block_out:
    case ArgumentType::block_inout:
    case ArgumentType::pblock_out:
        return "block";
    case ArgumentType::record:
        return "record";
    case ArgumentType::response:
        return "response";
    case ArgumentType::db:
        return "database";
    }
    return {};
}

bool is_command(const Operation &operation, const Argument &argument)
{
    return argument.field && argument.field == operation.record->command;
}

const catalogue::Field *named_values_of(const Operation &operation, const Argument &argument)
{
    const catalogue::Layout *layout = operation.command ? catalogue::find_layout(*operation.command) : nullptr;
    if (!layout || layout->record != operation.record || !is_number(argument) || !argument.field) return nullptr;
    const auto found = std::ranges::find_if(layout->fields, [&argument](const catalogue::Field &field) {
        return field.offset == argument.field->offset && !value_words(field).empty();
    });
    return found == layout->fields.end() ? nullptr : &*found;
}

std::vector<const catalogue::Field *> fields_of(const Operation &operation, const Argument &argument)
{
    if (!argument.picked.empty()) return {argument.picked.begin(), argument.picked.end()};
    std::vector<const catalogue::Field *> fields;
    if (is_sized_block(argument)) {
        const catalogue::Layout *layout = operation.command ? catalogue::find_layout(*operation.command) : nullptr;
        if (!layout || layout->record != operation.record) return fields;
        const uint32_t start = argument.field->offset;
        for (const catalogue::Field &field : layout->fields)
            if (field.offset >= start && field.offset + field.size <= start + argument.size) fields.push_back(&field);
        return fields;
    }
    for (const catalogue::Field &field : operation.record->fields)
        if (!operation.command || &field != operation.record->command) fields.push_back(&field);
    return fields;
}

namespace
{

std::vector<std::string_view> input_names(const Operation &operation)
{
    std::vector<std::string_view> names;
    for (const Argument &argument : operation.arguments)
        if (!is_output(argument)) names.push_back(argument.name);
    return names;
}

[[noreturn]] void refuse_unknown(const Operation &operation, const std::string &name)
{
    const auto names = input_names(operation);
    if (names.empty()) throw UsageError(name + ": " + std::string(operation.name) + " takes no arguments");
    throw UsageError(name + ": not an argument of " + std::string(operation.name) + text::suggestion(name, names) +
                     " (known are " + text::join(names) + ")");
}

size_t index_of(const Operation &operation, const std::string &name)
{
    for (size_t index = 0; index < operation.arguments.size(); ++index) {
        const Argument &argument = operation.arguments[index];
        if (argument.name == name && !is_output(argument)) return index;
    }
    refuse_unknown(operation, name);
}

// Returns the number that an argument is given, by the names that it has or as a number.
uint32_t number_given(const Operation &operation, const Argument &argument, const Assignment &given,
                      uint32_t greatest = UINT32_MAX)
{
    const catalogue::Field *named = named_values_of(operation, argument);
    if (!named || is_number(given.value)) return parse_number(given.name, given.value, greatest);
    const uint64_t bytes = parse_meaning(given.name, given.value, *named);
    const auto *const start = reinterpret_cast<const uint8_t *>(&bytes);
    return parse_number(given.name, number_text(*named, {start, named->size}), greatest);
}

// Refuses fields that have no effect: fields of a record that the operation does not pick, fields that the block does
// not hold, and the command code when the operation writes its own.
void check_fields(const Operation &operation, const Argument &argument, std::span<const Assignment> fields)
{
    for (const Assignment &assignment : fields) {
        const std::string name = std::string(argument.name) + "." + assignment.name;
        const catalogue::Field *command = operation.record->command;
        if (argument.type == ArgumentType::record && argument.picked.empty()) {
            if (operation.command && command && assignment.name == command->name)
                throw UsageError(name + ": " + std::string(operation.name) + " writes its own command code, " +
                                 std::string(operation.command->name));
            continue;
        }
        std::vector<std::string_view> picked;
        for (const catalogue::Field *field : fields_of(operation, argument))
            picked.push_back(field->name);
        if (std::ranges::find(picked, assignment.name) == picked.end())
            throw UsageError(name + ": not used by " + std::string(operation.name) +
                             text::suggestion(assignment.name, picked) + " (what counts of " +
                             std::string(argument.name) + " is " + text::join(picked) + ")");
    }
}

} // namespace

struct Arguments::Given {
    std::vector<const Assignment *> whole;       // one for each argument; null: not given
    std::vector<std::vector<Assignment>> fields; // for each argument, the assignments to its fields

    Given(const Operation &operation, std::span<const Assignment> assignments)
        : whole(operation.arguments.size()), fields(operation.arguments.size())
    {
        for (const Assignment &assignment : assignments) {
            const size_t dot = assignment.name.find('.');
            const size_t index = index_of(operation, assignment.name.substr(0, dot));
            if (dot != assignment.name.npos && takes_fields(operation, operation.arguments[index])) {
                fields[index].push_back({assignment.name.substr(dot + 1), assignment.value});
                continue;
            }
            if (dot != assignment.name.npos) refuse_unknown(operation, assignment.name);
            if (whole[index]) throw UsageError(assignment.name + ": given twice");
            whole[index] = &assignment;
        }
    }

    bool has(size_t index) const { return whole[index] || !fields[index].empty(); }
};

Arguments::Arguments(const Operation &operation, std::span<const Assignment> assignments, Allowed allowed)
    : called(operation), memory(operation.arguments.size()), passed(operation.arguments.size())
{
    const Given given(operation, assignments);
    for (size_t index = 0; index < passed.size(); ++index) {
        const Argument &argument = operation.arguments[index];
        if (!given.has(index) && !may_be_omitted(argument))
            throw UsageError(std::string(argument.name) + ": missing; give " + form_of(operation, argument) + " (" +
                             std::string(argument.brief) + ")");
        set(index, given, allowed);
    }
    // Unless a length is stated, it is the length of its block, so the blocks are set first.
    for (size_t index = 0; index < passed.size(); ++index)
        if (is_length(operation.arguments[index])) set_length(index, given);
}

Arguments::Arguments(const Operation &operation, std::span<const std::string> words, Allowed allowed)
    : Arguments(operation, parse_assignments(words), allowed)
{
}

Arguments::~Arguments()
{
    for (const Memory &owned : memory)
        db_free(owned.database);
}

void Arguments::set(size_t index, const Given &given, Allowed allowed)
{
    const Argument &argument = called.arguments[index];
    const Assignment *assignment = given.whole[index];
    Memory &owned = memory[index];
    catalogue::Value &value = passed[index];
    switch (argument.type) {
    case ArgumentType::u32:
        if (!assignment) return;
        value.number = is_command(called, argument)
                           ? parse_command(assignment->name, assignment->value, *called.channel)
                           : number_given(called, argument, *assignment);
        return;
    case ArgumentType::u16:
        if (assignment) value.number = number_given(called, argument, *assignment, UINT16_MAX);
        return;
    case ArgumentType::u8:
        if (assignment) value.number = number_given(called, argument, *assignment, UINT8_MAX);
        return;
    case ArgumentType::mac: {
        if (!assignment) return;
        const auto mac = parse_mac(assignment->name, assignment->value);
        owned.bytes.assign(mac.begin(), mac.end());
        break;
    }
    case ArgumentType::text:
        if (!assignment) return;
        if (!allowed.long_values) check_length(assignment->name, assignment->value.size(), *argument.field, true);
        owned.bytes.assign(assignment->value.begin(), assignment->value.end());
        owned.bytes.push_back(0);
        break;
    case ArgumentType::block:
        if (argument.size > 0)
            set_sized_block(index, given, allowed);
        else if (assignment)
            set_block(index, *assignment, allowed);
        return;
    case ArgumentType::block_inout:
        if (argument.size > 0)
            set_sized_block(index, given, allowed);
        else if (assignment)
            set_payload(index, *assignment, allowed);
        return;
    case ArgumentType::block_out: // set together with its length, if it has one
        set_room(index, argument.size ? argument.size : argument.field->size);
        return;
    case ArgumentType::u8_out:
        set_room(index, sizeof(uint8_t));
        return;
    case ArgumentType::u16_out:
        value.pointer = &owned.number;
        return;
    case ArgumentType::u32_out:
        set_room(index, sizeof(uint32_t));
        return;
    case ArgumentType::length:
    case ArgumentType::length_at:
        return;
    case ArgumentType::record:
        set_record(index, given, allowed);
        break;
    case ArgumentType::db:
        value.pointer = &owned.database;
        return;
    case ArgumentType::pblock_out:
        value.pointer = &owned.block;
        return;
    case ArgumentType::text_out:
    case ArgumentType::response:
        owned.bytes.resize(called.response_size);
        break;
    }
    value.pointer = owned.bytes.data();
}

void Arguments::set_block(size_t index, const Assignment &assignment, Allowed allowed)
{
    const catalogue::Field &field = *called.arguments[index].field;
    Bytes &block = memory[index].bytes;
    block = parse_block(assignment.name, assignment.value, allowed.files);
    if (called.record->payload)
        check_payload(assignment.name, block.size());
    else if (!allowed.long_values)
        check_length(assignment.name, block.size(), field, false);
    // An empty block is a block, too, so its address must not be null.
    block.reserve(1);
    passed[index].pointer = block.data();
}

// The answer takes the place of the payload, so the payload stands at the offset that the answer will have.
void Arguments::set_payload(size_t index, const Assignment &assignment, Allowed allowed)
{
    const Bytes payload = parse_block(assignment.name, assignment.value, allowed.files);
    check_payload(assignment.name, payload.size());
    set_room(index, static_cast<uint32_t>(payload.size()));
    std::ranges::copy(payload, memory[index].bytes.end() - static_cast<ptrdiff_t>(payload.size()));
}

void Arguments::set_sized_block(size_t index, const Given &given, Allowed allowed)
{
    const Argument &argument = called.arguments[index];
    if (!given.has(index)) return;
    const uint32_t start = argument.field->offset;
    Bytes &record = memory[index].bytes;
    record.resize(called.record->size);
    if (const Assignment *assignment = given.whole[index]) {
        const Bytes block = parse_block(assignment->name, assignment->value, allowed.files);
        if (block.size() > argument.size)
            throw UsageError(assignment->name + ": " + std::to_string(block.size()) + " bytes are more than its " +
                             std::to_string(argument.size));
        std::copy(block.begin(), block.end(), record.begin() + start);
    }
    set_fields_of(index, given, allowed);
    record.resize(start + argument.size);
    passed[index].pointer = record.data() + start;
}

// Reserves memory in which a part of the answer has the same offset as in the answer, so that it is read like the
// answer.
void Arguments::set_room(size_t index, uint32_t size)
{
    const Argument &argument = called.arguments[index];
    Bytes &bytes = memory[index].bytes;
    bytes.resize(argument.field->offset + size);
    passed[index].pointer = bytes.data() + argument.field->offset - argument.skip;
}

void Arguments::settle()
{
    for (size_t index = 0; index < passed.size(); ++index) {
        const Argument &argument = called.arguments[index];
        Memory &owned = memory[index];
        if (argument.type == ArgumentType::u16_out) {
            owned.bytes.resize(argument.field->offset);
            owned.bytes.push_back(static_cast<uint8_t>(owned.number));
        } else if (argument.type == ArgumentType::pblock_out && owned.block) {
            const auto *start = static_cast<const uint8_t *>(owned.block);
            owned.bytes.assign(start, start + delivered_length());
            pfree(owned.block);
        }
    }
}

// Returns the length of the block of the board's memory.
uint32_t Arguments::delivered_length() const
{
    uint32_t length = 0;
    for (size_t index = 0; index < passed.size(); ++index)
        if (called.arguments[index].type == ArgumentType::u32_out)
            std::memcpy(&length, passed[index].pointer, sizeof length);
    return length;
}

// Sets how many bytes of an answer are wanted. Unless a number is stated, these are all bytes that the answer can hold.
void Arguments::set_wanted(size_t index, const Given &given)
{
    const Argument &argument = called.arguments[index];
    const auto block = static_cast<size_t>(argument.other);
    uint32_t wanted = called.arguments[block].field->size;
    if (given.whole[index]) wanted = parse_number(argument.name, given.whole[index]->value, greatest_wanted);
    set_room(block, wanted);
    passed[index].number = wanted;
    memory[index].wanted = wanted;
    passed[index].pointer = &memory[index].wanted;
}

void Arguments::set_length(size_t index, const Given &given)
{
    const Argument &argument = called.arguments[index];
    const auto block = static_cast<size_t>(argument.other);
    if (is_output(called.arguments[block])) return set_wanted(index, given);
    const uint32_t start =
        called.arguments[block].type == ArgumentType::block_inout ? called.arguments[block].field->offset : 0;
    const auto size = static_cast<uint32_t>(passed[block].pointer ? memory[block].bytes.size() - start : 0);
    passed[index].number = size;
    if (!given.whole[index]) return;
    const uint32_t stated = parse_number(argument.name, given.whole[index]->value);
    if (called.record->payload) {
        check_payload(argument.name, stated);
        // Zeros are sent behind the given bytes, and leave room for a longer answer.
        if (stated > size && passed[block].pointer) {
            memory[block].bytes.resize(start + stated);
            passed[block].pointer = memory[block].bytes.data() + start;
        }
    } else if (stated > size)
        throw UsageError(std::string(argument.name) + ": " + std::to_string(stated) + " is more than the " +
                         std::to_string(size) + " bytes of " + std::string(called.arguments[block].name));
    passed[index].number = stated;
}

void Arguments::set_record(size_t index, const Given &given, Allowed allowed)
{
    Bytes &record = memory[index].bytes;
    if (const Assignment *assignment = given.whole[index]) {
        record = parse_block(assignment->name, assignment->value, allowed.files);
        if (record.size() > called.record->size)
            throw UsageError(assignment->name + ": " + std::to_string(record.size()) + " bytes are more than the " +
                             std::to_string(called.record->size) + " of " + std::string(called.record->name));
    }
    record.resize(called.record->size);
    set_fields_of(index, given, allowed);
}

void Arguments::set_fields_of(size_t index, const Given &given, Allowed allowed)
{
    check_fields(called, called.arguments[index], given.fields[index]);
    set_fields(*called.record, {called.channel, called.call, called.command}, given.fields[index], allowed,
               std::string(called.arguments[index].name) + ".", memory[index].bytes);
}

const catalogue::Command *Arguments::command() const
{
    if (called.command || !called.record->command) return called.command;
    for (size_t index = 0; index < passed.size(); ++index) {
        const Argument &argument = called.arguments[index];
        if (is_command(called, argument))
            return catalogue::find_command(called.channel->type, passed[index].number, called.call);
        if (argument.type == ArgumentType::record)
            return command_of(*called.record, {called.channel, called.call}, memory[index].bytes);
    }
    return nullptr;
}

} // namespace call
