// This file writes and reads inventories as JSON.
#include "fleet/selection/inventory.h"

#include "call/codec/errors.h"
#include "call/codec/members.h"
#include "call/json.h"
#include "fleet/protocol/topics.h"
#include "text/utf8.h"

namespace fleet
{
namespace
{

using call::JsonValue;

std::string read_name(const std::string &name, const JsonValue &value)
{
    std::string text = call::read_text(name, value);
    if (!is_name(text)) call::refuse_member(name, "a name of letters, digits, '-', '_' and '.'");
    return text;
}

std::string read_value(const std::string &name, const JsonValue &value)
{
    std::string text = call::read_text_or_null(name, value);
    if (text.size() > longest_value || !text::is_printable(text)) call::refuse_member(name, "a text of one short line");
    return text;
}

std::map<std::string, std::string> read_labels(const std::string &name, const JsonValue &value)
{
    if (!value.IsObject()) call::refuse_member(name, "an object");
    if (value.MemberCount() > most_labels) call::refuse_member(name, "fewer labels");
    std::map<std::string, std::string> labels;
    for (const auto &[key, text] : value.GetObject()) {
        const std::string label = call::text_of(key);
        if (!is_name(label)) call::refuse_member(name, "names of letters, digits, '-', '_' and '.'");
        if (!labels.emplace(label, read_value(name + "." + label, text)).second)
            throw call::UsageError(name + "." + label + ": given twice");
    }
    return labels;
}

// Reads an object of which other members than these are passed over.
void read_known(std::string_view text, const std::string &what, call::Members members,
                std::initializer_list<const char *> required)
{
    const size_t start = text.find_first_not_of(" \t\r\n");
    if (start != text.npos && text[start] == '{')
        for (const call::Member &member : call::members_of(text))
            members.try_emplace(member.name, [](const std::string &, const JsonValue &) {});
    call::read_object(text, what, members, required);
}

OnuCounts read_counts(const std::string &, const JsonValue &value)
{
    OnuCounts counts;
    const auto into = [](uint32_t &count) {
        return [&count](const std::string &name, const JsonValue &given) { count = call::read_number(name, given); };
    };
    read_known(call::json_of(value), "object of ONUs",
               {{"online", into(counts.online)}, {"offline", into(counts.offline)}, {"waiting", into(counts.waiting)}},
               {});
    return counts;
}

} // namespace

std::string to_json(const Inventory &inventory)
{
    call::JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.member("olt", inventory.olt);
    json.member("bridge", inventory.bridge);
    json.key("labels");
    json->StartObject();
    for (const auto &[label, value] : inventory.labels)
        json.member(label, value);
    json->EndObject();
    json.member("version", inventory.version);
    json.member("catalogue", inventory.catalogue);
    json.truth("answers", inventory.answers);
    json.member_or_null("model", inventory.model);
    json.member_or_null("firmware", inventory.firmware);
    json.member("ports", inventory.ports);
    json.key("onus");
    json->StartObject();
    json.member("online", inventory.onus.online);
    json.member("offline", inventory.onus.offline);
    json.member("waiting", inventory.onus.waiting);
    json->EndObject();
    json.key("at");
    json->Uint64(inventory.at);
    json->EndObject();
    return json.written();
}

Inventory inventory_from_json(std::string_view text)
{
    if (text.size() > longest_inventory) throw call::UsageError("the inventory is too long");
    Inventory read;
    const auto name_into = [](std::string &into) {
        return [&into](const std::string &name, const JsonValue &value) { into = read_name(name, value); };
    };
    const auto value_into = [](std::string &into) {
        return [&into](const std::string &name, const JsonValue &value) { into = read_value(name, value); };
    };
    read_known(
        text, "inventory",
        {{"olt", name_into(read.olt)},
         {"bridge", name_into(read.bridge)},
         {"labels", [&](const auto &name, const JsonValue &value) { read.labels = read_labels(name, value); }},
         {"version", value_into(read.version)},
         {"catalogue", value_into(read.catalogue)},
         {"answers", [&](const auto &name, const JsonValue &value) { read.answers = call::read_truth(name, value); }},
         {"model", value_into(read.model)},
         {"firmware", value_into(read.firmware)},
         {"ports", [&](const auto &name, const JsonValue &value) { read.ports = call::read_number(name, value); }},
         {"onus", [&](const auto &name, const JsonValue &value) { read.onus = read_counts(name, value); }},
         {"at",
          [&](const auto &name, const JsonValue &value) {
              if (!value.IsUint64()) call::refuse_member(name, "seconds since 1970");
              read.at = value.GetUint64();
          }}},
        {"olt", "bridge", "answers"});
    return read;
}

std::string to_json(const BridgeState &state)
{
    call::JsonText json(call::JsonLayout::one_line);
    json->StartObject();
    json.member("state", state.online ? "online" : "offline");
    if (state.online) {
        json.member("version", state.version);
        json.member("olts", state.olts);
    }
    json->EndObject();
    return json.written();
}

BridgeState bridge_state_from_json(std::string_view text)
{
    if (text.size() > longest_inventory) throw call::UsageError("the state of the bridge is too long");
    BridgeState read;
    read_known(
        text, "state of the bridge",
        {{"state",
          [&](const auto &name, const JsonValue &value) {
              const std::string state = call::read_text(name, value);
              if (state != "online" && state != "offline") call::refuse_member(name, "online or offline");
              read.online = state == "online";
          }},
         {"version", [&](const auto &name, const JsonValue &value) { read.version = read_value(name, value); }},
         {"olts", [&](const auto &name, const JsonValue &value) { read.olts = call::read_number(name, value); }}},
        {"state"});
    return read;
}

} // namespace fleet
