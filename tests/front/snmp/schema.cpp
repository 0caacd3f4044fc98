// This program prints what the core of SNMP has, so that modules and definitions for other programs are compared with
// it: a line an object, its identifier, and what it is.
#include <cstdio>
#include <string>

#include "snmp/core/notification.h"
#include "snmp/core/setting.h"

using namespace front;
using namespace front::snmp;

namespace
{

std::string text_of(const Oid &oid)
{
    std::string text;
    for (const uint32_t arc : oid)
        text += (text.empty() ? "" : ".") + std::to_string(arc);
    return text;
}

Oid below(Oid top, const Oid &rest)
{
    top.insert(top.end(), rest.begin(), rest.end());
    return top;
}

const char *name_of(Type type)
{
    switch (type) {
    case Type::integer:
        return "integer";
    case Type::octets:
        return "octets";
    case Type::oid:
        return "oid";
    case Type::ip_address:
        return "ip_address";
    case Type::counter32:
        return "counter32";
    case Type::gauge32:
        return "gauge32";
    case Type::time_ticks:
        return "time_ticks";
    case Type::counter64:
        return "counter64";
    }
    return "";
}

// Returns words with commas between them: low warning becomes lowWarning, as modules write it.
std::string text_of(Words words)
{
    std::string text;
    for (const std::string_view word : words) {
        text += text.empty() ? ":" : ",";
        for (size_t i = 0; i < word.size(); ++i) {
            if (word[i] == ' ') continue;
            const bool is_next_word = i > 0 && word[i - 1] == ' ';
            text += is_next_word ? static_cast<char>(word[i] - 'a' + 'A') : word[i];
        }
    }
    return text;
}

void print(const char *what, const Oid &oid, std::string_view name, const std::string &of)
{
    std::printf("%s %s %.*s %s\n", what, text_of(oid).c_str(), static_cast<int>(name.size()), name.data(), of.c_str());
}

} // namespace

int main()
{
    const MibSettings settings;
    for (const TableInfo &info : table_infos()) {
        const Oid entry = info.is_standard ? info.entry : below(settings.root, info.entry);
        std::string index;
        for (const IndexKind &kind : info.index)
            index += (index.empty() ? "" : ";") + std::string(kind.name) + ":" + std::to_string(kind.width) +
                     text_of(kind.words);
        print(info.is_standard ? "standard" : "own", entry, info.name, index);
        for (const ColumnKind &column : info.columns)
            print("column", below(entry, {column.number}), column.name, name_of(column.type) + text_of(column.words));
    }
    for (const EventObject &object : event_objects())
        print("event", below(settings.root, {1, 14, object.number}), object.name, name_of(object.type));
    for (size_t kind = 0; kind < event_kind_count; ++kind)
        if (const std::string_view name = notification_name(static_cast<EventKind>(kind)); !name.empty())
            print("notification", below(settings.root, {0, static_cast<uint32_t>(kind) + 1}), name, "-");
    for (const Oid &column : writable_columns(settings))
        print("writable", column, "-", "-");
}
