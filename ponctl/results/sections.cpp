#include "results/sections.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "board/datastore.h"
#include "call/codec/numbers.h"
#include "call/invocation.h"
#include "call/json.h"
#include "output/bytes.h"
#include "output/consent.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/output.h"
#include "output/report.h"
#include "output/table.h"
#include "results/listing.h"
#include "selection/selection.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::ArgumentType;

// A Styled is a field of a section with its style. The fields are in the order in which they are shown.
struct Styled {
    const catalogue::Field *field;
    FieldStyle style;
};

// Returns the argument through which a call delivers a single number, or nothing when it delivers something else.
std::optional<size_t> number_index(const Section &section)
{
    const auto &arguments = section.called->operation().arguments;
    const auto found = std::ranges::find_if(arguments, is_number_out);
    if (section.of_answer || found == arguments.end()) return std::nullopt;
    return static_cast<size_t>(found - arguments.begin());
}

std::vector<Styled> fields_of(const Section &section, const Reading &reading)
{
    std::vector<Styled> fields;
    if (const auto index = number_index(section)) {
        const catalogue::Field &field = section.called->word_field(*index);
        return {{&field, {field.name, section.name}}};
    }
    if (section.styled_only) {
        for (const FieldStyle &style : section.styles)
            if (const catalogue::Field *field = find_field(reading, style.field)) fields.push_back({field, style});
        return fields;
    }
    for (const catalogue::Field *field : shown_fields(reading)) {
        const auto style = std::ranges::find(section.styles, field->name, &FieldStyle::field);
        fields.push_back({field, style == section.styles.end() ? FieldStyle{field->name} : *style});
    }
    return fields;
}

// Returns the fields that people are shown.
std::vector<Styled> counted_fields_of(const Section &section, const Reading &reading)
{
    std::vector<Styled> fields = fields_of(section, reading);
    std::erase_if(fields, [&reading](const Styled &styled) { return !is_counted(reading, *styled.field); });
    return fields;
}

std::string title_of(const Styled &styled)
{
    return std::string(styled.style.title.empty() ? styled.style.field : styled.style.title);
}

// Returns a register as 0x and all its digits.
std::string register_text(const Reading &reading, const catalogue::Field &field)
{
    std::vector<uint8_t> bytes(field_bytes(field, reading.bytes).begin(), field_bytes(field, reading.bytes).end());
    if constexpr (std::endian::native == std::endian::little) std::ranges::reverse(bytes);
    return "0x" + text::to_hex(bytes);
}

std::string value_of(const Section &section, const Reading &reading, const Styled &styled)
{
    const catalogue::Field &field = *styled.field;
    if (section.registers && is_number(field.type) && field.unit.empty() && field.values.empty())
        return register_text(reading, field);
    return text_of(reading, field);
}

bool is_database(const Section &section)
{
    return !section.of_answer && section.called->has(ArgumentType::db);
}

Reading reading_of(const Section &section)
{
    if (section.of_answer) {
        Reading reading = section.called->answer();
        reading.start = section.start;
        return reading;
    }
    if (const auto index = number_index(section)) return section.called->reading(*index);
    return section.called->has(ArgumentType::response) ? section.called->response() : section.called->block();
}

void write(const Output &output, Json &json, const Section &section)
{
    if (!section.called->good()) {
        json->Null();
        return;
    }
    if (is_database(section) && section.row) return json.row(section.called->database(), *section.row);
    if (is_database(section)) keep_columns(output, section.called->database(), section.called->view());
    if (is_database(section) && output.selection)
        return json.list(listed_rows(output, section.called->database(), section.called->view()).get());
    if (is_database(section)) return json.list(section.called->database());
    const Reading reading = reading_of(section);
    if (const auto index = number_index(section)) return json.field(section.called->word_field(*index), reading);
    json->StartObject();
    for (const Styled &styled : fields_of(section, reading))
        json.member(title_of(styled), *styled.field, reading);
    json->EndObject();
}

void print(const Output &output, const Section &section)
{
    if (is_database(section)) {
        db_handle *database = section.called->database();
        if (database && section.row)
            print_row(output, database, *section.row, section.called->view());
        else if (database && db_rows(database) == 0 && document_of(database) == "[]" && output.format == Format::table)
            std::fputs("none\n", output.stream);
        else if (database)
            print_listing(output, database, section.called->view());
        return;
    }
    const Reading reading = reading_of(section);
    if (output.format == Format::hex) return print_bytes(output, reading.bytes, &reading);
    Table table({{"FIELD"}, {"VALUE", Table::Fit::wrap}});
    for (const Styled &styled : counted_fields_of(section, reading))
        table.add({title_of(styled), value_of(section, reading, styled)});
    table.print(output);
}

// Writes a section as a member of an object. What a single number means stands beside it.
void write_member(const Output &output, Json &json, const Section &section)
{
    json.key(section.name);
    write(output, json, section);
    const auto index = number_index(section);
    if (index && section.called->good())
        json.names(section.name, section.called->word_field(*index), reading_of(section));
}

void write(const Output &output, Json &json, const std::vector<Section> &sections, bool titled)
{
    if (!titled) return write(output, json, sections.front());
    json->StartObject();
    for (const Section &section : sections)
        write_member(output, json, section);
    json->EndObject();
}

// Prints the title above a part of the result, with an empty line before all titles except the first.
void print_title(const Output &output, std::string_view title, bool &first)
{
    if (!first) std::fputc('\n', output.stream);
    if (!title.empty() && output.headings) std::fprintf(output.stream, "%s\n", std::string(title).c_str());
    first = false;
}

constexpr const char *onu_title = "ONU";

// Prints the same section of several ONUs as one table.
void print_together(const Output &output, const std::vector<std::pair<std::string, const Section *>> &sections)
{
    const Section &any = *sections.front().second;
    if (is_database(any)) {
        std::vector<Owned> databases;
        std::vector<Database> wanted;
        for (const auto &[onu, section] : sections) {
            db_handle *database = section->called->database();
            if (database && output.selection)
                database = wanted.emplace_back(listed_rows(output, database, any.called->view())).get();
            if (database) databases.push_back({onu, database});
        }
        return print_databases(output, onu_title, databases, any.called->view(),
                               {.chosen = output.selection && !output.selection->columns.empty()});
    }
    Table table({{onu_title}, {"FIELD"}, {"VALUE", Table::Fit::wrap}});
    for (const auto &[onu, section] : sections) {
        const Reading reading = reading_of(*section);
        for (const Styled &styled : counted_fields_of(*section, reading))
            table.add({onu, title_of(styled), value_of(*section, reading, styled)});
    }
    table.print(output);
}

// Returns the names of the sections that any ONU has, in their order.
std::vector<std::string_view> names_of(const std::vector<Subject> &subjects)
{
    std::vector<std::string_view> names;
    for (const Subject &subject : subjects)
        for (const Section &section : subject.sections)
            if (std::ranges::find(names, section.name) == names.end()) names.push_back(section.name);
    return names;
}

} // namespace

const catalogue::Field *find_field(const Reading &reading, std::string_view name)
{
    const catalogue::Field *field = reading.layout ? catalogue::find_field(reading.layout->fields, name) : nullptr;
    if (!field) field = catalogue::find_field(reading.record->fields, name);
    return field && reading.reaches(*field) ? field : nullptr;
}

std::string field_text(const Reading &reading, std::string_view name)
{
    const catalogue::Field *field = find_field(reading, name);
    return field ? text_of(reading, *field) : "-";
}

std::optional<double> field_number(const Reading &reading, std::string_view name)
{
    const catalogue::Field *field = find_field(reading, name);
    if (!field || !is_number(field->type)) return std::nullopt;
    return number_of(*field, field_bytes(*field, reading.bytes));
}

std::string field_digits(const Reading &reading, std::string_view name)
{
    const catalogue::Field *field = find_field(reading, name);
    if (!field || !is_number(field->type)) return {};
    return number_text(*field, field_bytes(*field, reading.bytes));
}

std::string number_of_word(std::string_view name, std::string_view word, Words words)
{
    const auto found = std::ranges::find(words, word);
    if (found == words.end())
        throw UsageError(std::string(name) + ": '" + std::string(word) + "' is not one of " + text::join(words));
    return std::to_string(found - words.begin());
}

void refuse_selection(const Output &output)
{
    if (output.selection)
        throw UsageError("--where, --sort, --columns and --limit: what is asked for here is no listing");
}

void print_sections(const Output &output, const std::vector<Section> &sections, bool titled)
{
    if (std::ranges::none_of(sections, is_database)) refuse_selection(output);
    if (output.format == Format::json) {
        if (!titled && !sections.front().called->good()) return;
        Json json(output.stream);
        return write(output, json, sections, titled);
    }
    bool first = true;
    for (const Section &section : sections) {
        if (!section.called->good()) continue;
        print_title(output, titled ? section.title : std::string_view(), first);
        print(output, section);
    }
}

void print_each(const Output &output, const std::vector<Subject> &subjects, bool titled)
{
    for (const Subject &subject : subjects)
        if (std::ranges::none_of(subject.sections, is_database)) refuse_selection(output);
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const Subject &subject : subjects) {
            json->StartObject();
            json.member("onu", subject.onu);
            for (const Section &section : subject.sections)
                write_member(output, json, section);
            json->EndObject();
        }
        json->EndArray();
        return;
    }
    bool first = true;
    for (const std::string_view name : names_of(subjects)) {
        std::vector<std::pair<std::string, const Section *>> good;
        for (const Subject &subject : subjects)
            for (const Section &section : subject.sections)
                if (section.name == name && section.called->good()) good.emplace_back(subject.onu, &section);
        if (good.empty()) continue;
        if (output.format == Format::table) {
            print_title(output, titled ? good.front().second->title : std::string_view(), first);
            print_together(output, good);
            continue;
        }
        for (const auto &[onu, section] : good) {
            print_title(output, onu + (titled ? " " + std::string(section->title) : std::string()), first);
            print(output, *section);
        }
    }
}

ExitCode show(const Output &output, const std::vector<Section> &sections)
{
    print_sections(output, sections, sections.size() > 1);
    ExitCode code = exit_success;
    for (const Section &section : sections)
        code = std::max(code, report(*section.called));
    return code;
}

ExitCode run_show(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const std::vector<FieldStyle> &styles)
{
    const Invocation called(operation, words, consent());
    return show(output, {{{}, {}, &called, styles}});
}

} // namespace ponctl
