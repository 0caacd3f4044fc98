#include "expectation/question.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "bsp_pon.h"
#include "call/codec/decode.h"
#include "call/codec/numbers.h"
#include "generated/service_words.h"
#include "handlers/handler.h"
#include "text/hex.h"
#include "text/json.h"
#include "text/number.h"

namespace ponsim
{
namespace
{

using catalogue::ColumnType;
using catalogue::FieldType;

CellKind kind_of(ColumnType type)
{
    if (type == ColumnType::boolean) return CellKind::flag;
    return type == ColumnType::text || type == ColumnType::mac ? CellKind::text : CellKind::number;
}

std::optional<AskedView> view_of(const catalogue::Layout &layout)
{
    const auto reads = [](const catalogue::Command *command) { return command->impact == catalogue::Class::read; };
    if (!layout.of_answer || !std::ranges::all_of(layout.commands, reads)) return std::nullopt;
    const catalogue::Command &command = *layout.commands.front();
    // What such a request is about stands in its payload.
    if (command.channel->record->payload) return std::nullopt;
    AskedView view{layout.name, &command, command.channel->record, true, {}};
    for (const catalogue::Field &field : layout.fields) {
        if (call::is_number(field.type))
            view.columns.push_back({field.name, CellKind::number, &field});
        else if (field.type == FieldType::text || field.type == FieldType::mac)
            view.columns.push_back({field.name, CellKind::text, &field});
    }
    return view;
}

std::vector<AskedView> make_views()
{
    std::vector<AskedView> views;
    for (const catalogue::View &each : catalogue::views()) {
        const catalogue::Command &command = *each.commands.front();
        AskedView view{each.name, &command, command.channel->record, false, {}};
        for (const catalogue::Column &column : each.columns)
            view.columns.push_back({column.name, kind_of(column.type), nullptr});
        views.push_back(std::move(view));
    }
    for (const catalogue::Layout &layout : catalogue::layouts())
        if (std::optional<AskedView> view = view_of(layout)) views.push_back(*std::move(view));
    return views;
}

// The Operands are the fields of a record that say what a request is about. Some have no field.
struct Operands {
    std::string_view record;
    std::string_view port, onu_id, mac, uni;
};
constexpr Operands all_operands[] = {
    {"bsp_pon_msg", "pon_port", "onu_id", "onu_mac", ""},
    {"bsp_plat_msg", "plat_port", "plat_arg4", "", ""},
    {"bsp_onu_msg", "onu_pon_port", "onu_onu_id", "", "onu_uni_port"},
};

const Operands &operands_of(const catalogue::Record &record)
{
    static constexpr Operands none{};
    const auto *const found = std::ranges::find(all_operands, record.name, &Operands::record);
    return found == std::end(all_operands) ? none : *found;
}

// Returns whether requests for the view say which ONU is meant. The rows of other views do.
bool names_onu(const AskedView &view)
{
    return view.record->name == "bsp_onu_msg" || (view.of_answer && !operands_of(*view.record).onu_id.empty());
}

// Writes a value into a field of the record, unless the record has no such field.
template <class Value>
void put(std::string &bytes, const catalogue::Record &record, std::string_view name, const Value &value)
{
    const catalogue::Field *field = catalogue::find_field(record.fields, name);
    if (!field) return;
    std::memcpy(&bytes[field->offset], &value, sizeof value);
}

CellValue cell_of(const text::json::Value &value)
{
    if (value.IsBool()) return value.GetBool();
    if (value.IsNumber()) return value.GetDouble();
    if (value.IsString()) return std::string(value.GetString(), value.GetStringLength());
    return {};
}

CellValue cell_of(const catalogue::Field &field, std::span<const uint8_t> answer)
{
    if (field.offset + field.size > answer.size()) return {};
    const std::span<const uint8_t> bytes = answer.subspan(field.offset, field.size);
    if (field.type == FieldType::mac) return text::mac_text(bytes.first<6>());
    if (field.type == FieldType::text) return std::string(call::field_text(bytes));
    // The text has as many decimals as the scale, so it is the nearest number to what a scenario writes.
    return text::to_real(call::number_text(field, bytes)).value_or(0);
}

// A RowFilter knows which rows of a view concern the port and the ONU of a question.
class RowFilter
{
public:
    RowFilter(const Question &of_question, std::optional<uint32_t> id)
        : question(of_question),
          onu_id(id),
          port_at(question.view->column("pon_port")),
          id_at(question.view->column("onu_id")),
          mac_at(question.view->column("mac"))
    {
    }

    bool passes(const std::vector<CellValue> &row) const
    {
        if (question.port != 0 && port_at && row[*port_at] != CellValue(static_cast<double>(question.port)))
            return false;
        if (!question.onu || names_onu(*question.view)) return true;
        if (id_at && !std::holds_alternative<std::monostate>(row[*id_at]))
            return onu_id && row[*id_at] == CellValue(static_cast<double>(*onu_id));
        return mac_at && row[*mac_at] == CellValue(text::mac_text(*question.onu));
    }

private:
    const Question &question;
    std::optional<uint32_t> onu_id;
    std::optional<size_t> port_at, id_at, mac_at;
};

std::vector<std::vector<CellValue>> rows_of_table(const AskedView &view, const std::string &table)
{
    text::json::Document document;
    document.Parse(table.data(), table.size());
    std::vector<std::vector<CellValue>> rows;
    for (const text::json::Value &each : document.GetArray()) {
        std::vector<CellValue> &row = rows.emplace_back();
        for (const AskedColumn &column : view.columns) {
            const text::json::Value name(rapidjson::StringRef(column.name.data(), column.name.size()));
            row.push_back(cell_of(each[name]));
        }
    }
    return rows;
}

std::vector<CellValue> row_of_answer(const AskedView &view, const std::string &answer)
{
    const std::span bytes(reinterpret_cast<const uint8_t *>(answer.data()), answer.size());
    std::vector<CellValue> row;
    for (const AskedColumn &column : view.columns)
        row.push_back(cell_of(*column.field, bytes));
    return row;
}

} // namespace

std::string cell_text(const CellValue &cell)
{
    if (const auto *flag = std::get_if<bool>(&cell)) return *flag ? "true" : "false";
    if (const auto *text = std::get_if<std::string>(&cell)) return '"' + *text + '"';
    const auto *number = std::get_if<double>(&cell);
    if (!number) return "null";
    char digits[32];
    // Counts are whole numbers up to 2^53, and are written without an exponent.
    const bool whole = *number == static_cast<double>(static_cast<int64_t>(*number));
    const std::to_chars_result end = whole ? std::to_chars(digits, std::end(digits), static_cast<int64_t>(*number))
                                           : std::to_chars(digits, std::end(digits), *number);
    return {digits, end.ptr};
}

std::optional<size_t> AskedView::column(std::string_view wanted) const
{
    const auto found = std::ranges::find(columns, wanted, &AskedColumn::name);
    if (found == columns.end()) return std::nullopt;
    return static_cast<size_t>(found - columns.begin());
}

bool AskedView::tells_onus_apart() const
{
    return names_onu(*this) || column("onu_id") || column("mac");
}

const std::vector<AskedView> &asked_views()
{
    static const std::vector<AskedView> views = make_views();
    return views;
}

const AskedView *find_asked_view(std::string_view name)
{
    const auto found = std::ranges::find(asked_views(), name, &AskedView::name);
    return found == asked_views().end() ? nullptr : &*found;
}

Rows ask(const Olt &olt, const Question &question)
{
    const AskedView &view = *question.view;
    const catalogue::Record &record = *view.record;
    const Operands &operands = operands_of(record);
    std::optional<uint32_t> onu_id;
    if (question.onu) onu_id = olt.id_at(question.port, *question.onu);
    if (question.onu && names_onu(view) && !onu_id) return {PON_ERR_NOT_BOUND, {}};
    std::string bytes(record.payload ? payload_header : record.size, '\0');
    put(bytes, record, record.command->name, view.command->code);
    put(bytes, record, operands.port, question.port);
    put(bytes, record, operands.uni, static_cast<uint8_t>(question.uni));
    if (question.onu && names_onu(view)) {
        put(bytes, record, operands.onu_id, *onu_id);
        put(bytes, record, operands.mac, *question.onu);
    }
    const catalogue::Call call = view.command->call.value_or(catalogue::Call::get);
    const Handler *handler = find_handler(view.command->channel->type, view.command->code, call);
    if (!handler) return {PON_ERR_UNKNOWN_COMMAND, {}};
    const Outcome outcome = handler->handle(olt, {bytes.data(), static_cast<uint32_t>(bytes.size())});
    if (outcome.status != BSP_OK) return {outcome.status, {}};
    if (view.of_answer) return {BSP_OK, {row_of_answer(view, outcome.answer.value_or(bytes))}};
    Rows found{BSP_OK, rows_of_table(view, outcome.result.value_or("[]"))};
    const RowFilter filter(question, onu_id);
    std::erase_if(found.rows, [&](const std::vector<CellValue> &row) { return !filter.passes(row); });
    return found;
}

} // namespace ponsim
