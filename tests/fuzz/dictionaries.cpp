// This program writes the words that inputs of the targets have: a file of libFuzzer's and AFL++'s form for each target
// whose inputs are texts.
//
//   dictionaries FOLDER
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue.h"
#include "cli/program.h"
#include "control/control.h"
#include "model/kept/kept.h"
#include "scenario/keys.h"
#include "store/table.h"
#include "text/words.h"

namespace
{

using Words = std::set<std::string>; // in an order that is always the same

void add_operations(Words &words)
{
    for (const catalogue::Operation &operation : catalogue::operations()) {
        words.emplace(operation.name);
        for (const catalogue::Argument &argument : operation.arguments)
            words.insert(std::string(argument.name) + "=");
    }
}

// Adds the names of fields, and what stands for values of some kinds.
void add_values(Words &words)
{
    for (const catalogue::Record &record : catalogue::records())
        for (const catalogue::Field &field : record.fields)
            words.insert("." + std::string(field.name) + "=");
    for (const catalogue::Layout &layout : catalogue::layouts())
        for (const catalogue::Field &field : layout.fields)
            words.insert(std::string(field.name) + "=");
    for (const catalogue::Command &command : catalogue::commands())
        words.emplace(command.name);
    for (const char *value : {"hex:", "@", "text:", "0x", "4294967295", "4294967296", "02:00:5e:10:00:01", "1-5,7"})
        words.emplace(value);
}

void add_columns(Words &words)
{
    for (const catalogue::View &view : catalogue::views())
        for (const catalogue::Column &column : view.columns)
            words.emplace(column.name);
}

void add_commands(Words &words, const command_line::Syntax &command)
{
    words.insert(command.name);
    for (const command_line::Operand &option : command.options)
        for (const std::string &spelling : option.spellings())
            words.insert(spelling);
    for (const std::list<command_line::Operand> *operands : {&command.arguments, &command.options})
        for (const command_line::Operand &operand : *operands)
            for (const std::string &choice : operand.choices())
                words.insert(choice);
    for (const auto &below : command.commands)
        add_commands(words, *below);
}

void add_keys(Words &words, const ponsim::Keys &keys)
{
    for (const ponsim::Key &key : keys) {
        words.insert(key.name + " = ");
        if (!key.tables.empty()) words.insert(key.named ? "[" + key.name + "." : "[[" + key.name + "]]");
        add_keys(words, key.tables);
    }
}

void add_controls(Words &words)
{
    for (const ponsim::Control &control : ponsim::controls())
        for (std::string_view of : {control.name, control.usage})
            for (const std::string &word : text::split(std::string(of), ' '))
                words.insert(word);
}

void add_tables(Words &words)
{
    std::vector<std::pair<std::string, std::string>> tables;
    ponsim::Kept::each_family([&]<class Record>() { ponsim::add_tables<Record>(tables); });
    for (const auto &[name, sql] : tables)
        words.insert("{\"table\":\"" + name + "\",\"row\":[");
    words.insert("{\"hex\":\"");
}

std::string quoted(const std::string &word)
{
    std::string text = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    return text + "\"";
}

void write(const std::filesystem::path &folder, const std::string &target, const Words &words)
{
    std::ofstream file(folder / (target + ".dict"));
    for (const std::string &word : words)
        if (!word.empty()) file << quoted(word) << '\n';
    if (!file.flush()) throw std::runtime_error(target + ".dict cannot be written");
}

void write_all(const std::filesystem::path &folder)
{
    std::filesystem::create_directories(folder);
    Words values, lines, tables, scenarios, controls, configurations;
    add_operations(values);
    add_values(values);
    write(folder, "values", values);
    add_commands(lines, ponctl::Program().tree);
    add_operations(lines);
    add_columns(lines);
    write(folder, "command_lines", lines);
    add_columns(tables);
    write(folder, "tables", tables);
    add_keys(scenarios, ponsim::scenario_keys());
    add_controls(scenarios);
    write(folder, "scenarios", scenarios);
    add_controls(controls);
    write(folder, "controls", controls);
    add_tables(configurations);
    write(folder, "configurations", configurations);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    try {
        write_all(argv[1]);
    } catch (const std::exception &error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
}
