// ponctl idset shows sets of ONU ids as texts, for people and as the library prints them.
#include <algorithm>
#include <cstdio>

#include "bsp_pon.h"
#include "call/codec/values.h"
#include "cli/program.h"
#include "output/bytes.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/table.h"

namespace ponctl
{
namespace
{

struct IdSetOptions {
    std::vector<std::string> ids; // 1-5,7, or the same with blanks
    std::string words;            // four words with commas between them
    std::string last_id = "128";  // for the library's printing function; with this id it prints no length
};

IdSet set_of(const IdSetOptions &options)
{
    if (options.words.empty() == options.ids.empty())
        throw UsageError("which ids? give either a SET, as 1-5,7,9-12, or --words W,W,W,W");
    return options.words.empty() ? parse_idset("SET", join_words(options.ids))
                                 : parse_idset_words("--words", options.words);
}

// Returns what a front end shows that prints the set with the library.
template <class Print>
std::string printed(const IdSet &ids, uint32_t last_id, Print print)
{
    constexpr size_t room = 402; // the room that the library requires
    onu_id_set set;
    std::copy(ids.begin(), ids.end(), set.words);
    char text[room] = "";
    print(&set, last_id, text);
    return text;
}

std::string list_of(const IdSet &ids)
{
    std::string list;
    for (uint32_t id = 0; id <= max_onu_id; ++id)
        if (holds(ids, id)) list += (list.empty() ? "" : ",") + std::to_string(id);
    return list;
}

std::string words_text(const IdSet &ids)
{
    char text[64];
    std::snprintf(text, sizeof text, "0x%08x,0x%08x,0x%08x,0x%08x", ids[0], ids[1], ids[2], ids[3]);
    return text;
}

ExitCode run_idset(const Output &output, const IdSetOptions &options)
{
    const IdSet ids = set_of(options);
    const uint32_t last_id = parse_number("--last-id", options.last_id);
    const std::string board_text = printed(ids, last_id, ont_id_res_str);
    const std::string board_list = printed(ids, last_id, ont_id_res_str_expand);
    if (output.format == Format::hex) {
        print_bytes(output, {reinterpret_cast<const uint8_t *>(ids.data()), sizeof ids});
    } else if (output.format == Format::json) {
        Json json(output.stream);
        json->StartObject();
        json.member("ranges", format_idset(ids));
        json.key("ids");
        json.ids(ids);
        json.member("count", count_of(ids));
        json.key("words");
        json->StartArray();
        for (const uint32_t word : ids)
            json->Uint(word);
        json->EndArray();
        json.member("last_id", last_id);
        json.member("ont_id_res_str", board_text);
        json.member("ont_id_res_str_expand", board_list);
        json->EndObject();
    } else {
        Table table({{"FORM"}, {"VALUE", Table::Fit::wrap}});
        table.add({"ranges", format_idset(ids)});
        table.add({"list", list_of(ids)});
        table.add({"count", std::to_string(count_of(ids))});
        table.add({"words", words_text(ids)});
        table.add({"board: ont_id_res_str, last id " + std::to_string(last_id), board_text});
        table.add({"board: ont_id_res_str_expand", board_list});
        table.print(output);
    }
    return exit_success;
}

} // namespace

void add_idset(Program &program)
{
    Command &idset = program.tree.add("idset", "Prints a set of ONU ids in every form; asks no service");
    program.askless.push_back(&idset);
    IdSetOptions &options = idset.runs(run_idset);
    idset.argument("SET", &options.ids, "ids from 0 to 127 and runs of them in any order, as 1-5,7,9-12");
    idset.option("--words", &options.words, "the set as its four words, as 0x3e,0,0,0; ids 0 to 31 in the first",
                 "W,W,W,W");
    idset.option("--last-id", &options.last_id,
                 "last id for the library's printer ont_id_res_str; 128, which is no id, when left out", "N");
}

} // namespace ponctl
