#include "results/delivered.h"

#include <deque>

#include "board/datastore.h"
#include "call/invocation.h"
#include "call/outputs.h"
#include "output/bytes.h"
#include "output/consent.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "output/text.h"
#include "results/listing.h"
#include "results/onu_set.h"

namespace ponctl
{
namespace
{

using catalogue::Argument;
using catalogue::ArgumentType;

void print_output(const Output &output, const Invocation &called, size_t index)
{
    const Argument &argument = called.operation().arguments[index];
    if (argument.type == ArgumentType::db) {
        if (db_handle *database = called.database(index))
            print_database(output, database, called.view());
        else if (argument.dropped)
            note(std::string(argument.name) + ": " + std::string(called.operation().name) +
                 " hands out no database, only the status");
        else if (called.fault().empty())
            complain(std::string(argument.name) + ": the service left no result database");
    } else if (argument.type == ArgumentType::text_out) {
        const std::string_view text = called.text(index);
        if (output.format == Format::hex)
            print_bytes(output, {reinterpret_cast<const uint8_t *>(text.data()), text.size()});
        else
            print_text(output, text);
    } else if (argument.type == ArgumentType::pblock_out) {
        if (!called.bytes(index).empty()) print_content(output, called.bytes(index));
    } else if (is_number_out(argument) && output.format != Format::hex) {
        std::fprintf(output.stream, "%s: %s\n", std::string(argument.name).c_str(),
                     text_of(called.reading(index), called.word_field(index)).c_str());
    } else {
        const Reading reading = called.reading(index);
        if (output.format == Format::hex)
            print_bytes(output, reading.bytes, &reading);
        else
            print_fields(output, reading);
    }
}

// `onu` names the ONU when there are several.
void write_outputs(Json &json, const Invocation &called, const std::string *onu = nullptr)
{
    json->StartObject();
    if (onu) json.member("onu", *onu);
    json.member("operation", called.operation().name);
    json.status(called.status());
    json.key("outputs");
    call::write_outputs(json, called);
    json->EndObject();
}

void show_outputs(const Output &output, const Invocation &called)
{
    if (output.format != Format::json)
        return call::for_each_output(called, [&](size_t index) { print_output(output, called, index); });
    Json json(output.stream);
    write_outputs(json, called);
}

// Shows what was delivered for one ONU, under its name.
void show_outputs_of(const Output &output, const OnuCalls &of_onu)
{
    const Invocation &called = of_onu.calls.front();
    if (output.headings) std::fprintf(output.stream, "ONU %s\n", of_onu.onu.c_str());
    if (called.answered()) show_outputs(output, called);
}

} // namespace

ExitCode run_call(const Output &output, const catalogue::Operation &operation, const std::vector<std::string> &words,
                  bool allow_long)
{
    const Invocation called(operation, words, consent(), allow_long);
    if (called.answered()) show_outputs(output, called);
    return report(called);
}

ExitCode run_call(const Output &output, const char *operation, const std::vector<std::string> &words)
{
    return run_call(output, *catalogue::find_operation(operation), words);
}

ExitCode run_call_each(const Output &output, const catalogue::Operation &operation, const std::string &onus,
                       const std::vector<std::string> &words, bool allow_long)
{
    return for_each_onu(
        parse_onu_set(onus),
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            calls.emplace_back(operation, onu_words(operation, onu, words), consent(), allow_long);
        },
        [&](const std::deque<OnuCalls> &asked, bool) {
            if (output.format != Format::json) {
                for (const OnuCalls &of_onu : asked)
                    show_outputs_of(output, of_onu);
                return;
            }
            Json json(output.stream);
            json->StartArray();
            for (const OnuCalls &of_onu : asked)
                write_outputs(json, of_onu.calls.front(), &of_onu.onu);
            json->EndArray();
        });
}

ExitCode run_list(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const TableStyle &style)
{
    const Invocation called(operation, words, consent());
    db_handle *database = called.answered() && called.fault().empty() ? called.database() : nullptr;
    if (database) print_listing(output, database, called.view(), style);
    return report(called);
}

} // namespace ponctl
