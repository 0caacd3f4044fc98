#include "results/present.h"

#include <algorithm>

#include "board/datastore.h"
#include "call/codec/meaning.h"
#include "call/codec/numbers.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "text/ipv4.h"
#include "text/number.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;

RecordRole role_of(const Setting &setting)
{
    return {setting.command->channel, catalogue::Call::set, setting.command};
}

const catalogue::Operation *reader_of(const catalogue::Command &present)
{
    for (const catalogue::Operation &operation : catalogue::operations())
        if (operation.command == &present) return &operation;
    return nullptr;
}

// Returns the arguments that ask how a setting of an ONU stands.
std::vector<std::string> words_for(const catalogue::Operation &reader, const Setting &setting, const Onu &onu)
{
    std::vector<std::string> words = onu_words(reader, onu);
    for (const catalogue::Argument &argument : reader.arguments) {
        if (!argument.field) continue;
        const std::string name(argument.name);
        if (argument.field->name == "onu_uni_port" && is_number(argument))
            words.push_back(name + "=" + setting.value_of("onu_uni_port"));
        if (argument.field->name == "onu_arg24" && is_number(argument))
            words.push_back(name + "=" + setting.value_of("index"));
    }
    return words;
}

void put_field(const Setting &setting, const std::string &name, const std::string &value, Bytes &request)
{
    set_fields(setting.record(), role_of(setting), std::vector<Assignment>{{name, value}}, false, {}, request);
}

// Returns the field that has the mask of the network that an address is in, or null.
const Field *mask_of(const Setting &setting, std::string_view address)
{
    const Field *mask = catalogue::find_field(setting.layout()->fields, std::string(address) + "_mask");
    return mask ? mask : catalogue::find_field(setting.layout()->fields, "mask");
}

std::string mask_text(std::string_view name, std::string_view length)
{
    const auto bits = text::to_number<uint32_t>(length);
    if (!bits || *bits > 32)
        throw UsageError(std::string(name) + ": '" + std::string(length) + "' is not the length of a mask, 0 to 32");
    return text::ipv4_text(text::ipv4_mask(*bits));
}

// Puts a value that may be an address with the length of its mask.
void put_value(const Setting &setting, const Assignment &field, Bytes &request)
{
    const catalogue::Layout *layout = setting.layout();
    const Field *known = layout ? catalogue::find_field(layout->fields, field.name) : nullptr;
    const size_t slash = field.value.find('/');
    const Field *mask =
        known && known->type == FieldType::ipv4 && slash != field.value.npos ? mask_of(setting, field.name) : nullptr;
    if (!mask) return put_field(setting, field.name, field.value, request);
    put_field(setting, field.name, field.value.substr(0, slash), request);
    put_field(setting, std::string(mask->name), mask_text(field.name, field.value.substr(slash + 1)), request);
}

// Puts the given values into a request. What another field decides about comes behind it.
void put_values(const Setting &setting, Bytes &request)
{
    const auto is_decided = [&setting](const Assignment &field) {
        const catalogue::Layout *layout = setting.layout();
        const Field *known = layout ? catalogue::find_field(layout->fields, field.name) : nullptr;
        return known && !known->decider.empty();
    };
    for (const bool decided : {false, true})
        for (const Assignment &field : setting.given)
            if (is_decided(field) == decided) put_value(setting, field, request);
}

// Returns a cell as a value of a field has it on a command line.
std::string value_of_cell(const db_handle *database, uint32_t row, const char *column)
{
    int truth = 0;
    if (db_get_bool(database, row, column, &truth) == 0) return truth ? "1" : "0";
    const char *text = db_get_text(database, row, column);
    return text ? text : "";
}

// Puts a row into a request, as far as its columns are fields of the setting.
void put_row(const Setting &setting, const db_handle *database, uint32_t row, Bytes &request)
{
    for (uint32_t index = 0; index < db_columns(database); ++index) {
        const char *column = db_column_name(database, index);
        const std::string value = value_of_cell(database, row, column);
        if (!value.empty() && catalogue::find_field(setting.layout()->fields, column))
            put_value(setting, {column, value}, request);
    }
    // A connection that is not static shows the address that it was leased, which is no setting.
    for (const Field &field : setting.layout()->fields)
        if (field.condition == "ip_mode" && setting.value_of(field.name).empty()) {
            const Field &mode = *catalogue::find_field(setting.layout()->fields, field.condition);
            const auto name = name_of(mode, field_bytes(mode, request));
            if (!name || std::ranges::find(field.where, *name) == field.where.end())
                std::fill_n(request.begin() + field.offset, field.size, uint8_t{0});
        }
}

// Returns whether a row of a view is about the thing with this number. A view without numbers has only one row.
bool is_of(const db_handle *database, uint32_t row, const std::string &number)
{
    const char *cell = db_get_text(database, row, "index");
    return number.empty() || !cell || number == cell;
}

// Puts what a call delivered into a request.
void put_delivered(const Setting &setting, const Invocation &called, Bytes &request)
{
    if (called.has(catalogue::ArgumentType::db)) {
        const db_handle *database = called.database();
        for (uint32_t row = 0; database && row < db_rows(database); ++row)
            if (is_of(database, row, setting.value_of("index"))) put_row(setting, database, row, request);
        return;
    }
    const Bytes &answer = called.exchange().response;
    const uint32_t start = catalogue::find_field(setting.record().fields, "onu_data")->offset;
    const uint32_t end = std::min<uint32_t>(end_of(*setting.layout()), static_cast<uint32_t>(answer.size()));
    if (start < end) std::copy(answer.begin() + start, answer.begin() + end, request.begin() + start);
}

// Returns whether a field has a meaning with the other values of the request.
bool has_meaning(const Setting &setting, const Field &field, const Bytes &request)
{
    if (field.condition.empty()) return true;
    const Field &condition = *catalogue::find_field(setting.layout()->fields, field.condition);
    const auto name = name_of(condition, field_bytes(condition, request));
    return name && std::ranges::find(field.where, *name) != field.where.end();
}

} // namespace

std::string Setting::value_of(std::string_view field) const
{
    const auto found = std::ranges::find(given, field, &Assignment::name);
    return found == given.end() ? std::string() : found->value;
}

void check_given(const Setting &setting)
{
    Bytes scratch(setting.record().size);
    const catalogue::Layout *layout = setting.layout();
    put_values(setting, scratch);
    for (const Assignment &field : setting.given)
        if (const Field *known = layout ? catalogue::find_field(layout->fields, field.name) : nullptr)
            check_allowed(known->name, *known, field_bytes(*known, scratch));
    const catalogue::Operation *reader = layout && layout->present ? reader_of(*layout->present) : nullptr;
    if (!reader) return;
    const Field *index = catalogue::find_field(layout->fields, "index");
    if (index && setting.value_of("index").empty())
        throw UsageError("index: missing; give the " + std::string(index->brief));
    for (const catalogue::Argument &argument : reader->arguments)
        if (argument.field && argument.field->name == "onu_uni_port" && setting.value_of("onu_uni_port").empty())
            throw UsageError("uni: missing; give the number of a UNI port");
}

bool read_present(const Setting &setting, const Onu &onu, std::deque<Invocation> &calls, Bytes &request)
{
    request.assign(setting.record().size, 0);
    const catalogue::Layout *layout = setting.layout();
    const catalogue::Operation *reader = layout && layout->present ? reader_of(*layout->present) : nullptr;
    if (!reader) return true;
    const Invocation &called = calls.emplace_back(*reader, words_for(*reader, setting, onu), looking());
    if (!called.good()) return false;
    put_delivered(setting, called, request);
    return true;
}

void put_given(const Setting &setting, Bytes &request)
{
    put_values(setting, request);
    const catalogue::Field &code = *setting.record().command;
    put_field(setting, std::string(code.name), std::string(setting.command->name), request);
    const catalogue::Layout *layout = setting.layout();
    if (!layout) return;
    for (const Field &field : layout->fields) {
        const bool given = !setting.value_of(field.name).empty();
        const auto bytes = field_bytes(field, request);
        if (!has_meaning(setting, field, request)) {
            if (given && !without_trailing_zeros(bytes).empty())
                throw UsageError(std::string(field.name) + ": has a meaning only where " +
                                 std::string(field.condition) + " is " + text::join(field.where, " or "));
            std::fill_n(request.begin() + field.offset, field.size, uint8_t{0});
        } else if (given) {
            check_allowed(field.name, field, bytes);
        }
    }
}

std::vector<Change> changes_between(const Setting &setting, const Bytes &before, const Bytes &after)
{
    const catalogue::Layout *layout = setting.layout();
    if (!layout) return {};
    const RecordRole role = role_of(setting);
    const Reading was{&setting.record(), layout, role, before}, is{&setting.record(), layout, role, after};
    const bool is_known = layout->present && reader_of(*layout->present);
    std::vector<Change> changes;
    for (const Field &field : layout->fields) {
        const std::string one = text_of(was, field), other = text_of(is, field);
        if (one != other) changes.push_back({std::string(field.name), is_known ? one : "", other});
    }
    return changes;
}

bool has_arrived(const Setting &setting, const Onu &onu, const Bytes &sent)
{
    std::deque<Invocation> calls;
    Bytes now;
    if (!read_present(setting, onu, calls, now) || calls.empty()) return true;
    return changes_between(setting, now, sent).empty();
}

} // namespace ponctl
