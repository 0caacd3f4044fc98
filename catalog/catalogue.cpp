#include "catalogue.h"

#include <map>
#include <utility>

namespace catalogue
{
namespace
{

template <class Entry, class Matches>
const Entry *find_if(std::span<const Entry> entries, Matches matches)
{
    for (const Entry &entry : entries)
        if (matches(entry)) return &entry;
    return nullptr;
}

template <class Entry>
const Entry *find_named(std::span<const Entry> entries, std::string_view name)
{
    return find_if(entries, [name](const Entry &entry) { return entry.name == name; });
}

// Returns the layout or view that names the command.
template <class Entry, class Suits>
const Entry *find_using(std::span<const Entry> entries, const Command &command, Suits suits)
{
    return find_if(entries, [&command, &suits](const Entry &entry) {
        for (const Command *used : entry.commands)
            if (used == &command) return suits(entry);
        return false;
    });
}

} // namespace

const Record *find_record(std::string_view name)
{
    return find_named(records(), name);
}

const Channel *find_channel(std::string_view name)
{
    return find_named(channels(), name);
}

const Channel *find_channel(uint32_t type)
{
    return find_if(channels(), [type](const Channel &channel) { return channel.type == type; });
}

const Command *find_command(std::string_view name)
{
    return find_named(commands(), name);
}

const Command *find_command(uint32_t channel_type, uint32_t code, std::optional<Call> call)
{
    return find_if(commands(), [=](const Command &command) {
        return command.code == code && command.channel->type == channel_type &&
               (!command.call || !call || command.call == call);
    });
}

const Status *find_status(uint32_t value)
{
    return find_if(statuses(), [value](const Status &status) { return status.value == value; });
}

// Each record that is read or written needs its layout.
const Layout *find_layout(const Command &command, bool of_answer)
{
    using Used = std::pair<const Command *, bool>;
    static const std::map<Used, const Layout *> known = [] {
        std::map<Used, const Layout *> found;
        for (const Layout &layout : layouts())
            for (const Command *used : layout.commands)
                if (!layout.kept) found.emplace(Used(used, layout.of_answer), &layout);
        return found;
    }();
    const auto found = known.find({&command, of_answer});
    return found == known.end() ? nullptr : found->second;
}

const Layout *find_kept_layout(const Command &command)
{
    return find_using(layouts(), command, [](const Layout &layout) { return layout.kept; });
}

const View *find_view(const Command &command)
{
    return find_using(views(), command, [](const View &) { return true; });
}

const Operation *find_operation(std::string_view name)
{
    return find_named(operations(), name);
}

const Function *find_function(std::string_view name)
{
    return find_named(functions(), name);
}

const Field *find_field(std::span<const Field> fields, std::string_view name)
{
    return find_named(fields, name);
}

const Oddity *find_oddity(const Operation &operation, Facet facet)
{
    return find_if(operation.odd, [facet](const Oddity &oddity) { return oddity.facet == facet; });
}

std::string_view to_text(Class impact)
{
    switch (impact) {
    case Class::read:
        return "read";
    case Class::write:
        return "write";
    case Class::service_affecting:
        return "service-affecting";
    }
    return {};
}

std::optional<Class> find_class(std::string_view name)
{
    for (const Class impact : {Class::read, Class::write, Class::service_affecting})
        if (to_text(impact) == name) return impact;
    return std::nullopt;
}

std::optional<Call> find_call(std::string_view name)
{
    for (const Call call : {Call::set, Call::get, Call::dgram_set, Call::dgram_get})
        if (to_text(call) == name) return call;
    return std::nullopt;
}

std::string_view to_text(Call call)
{
    switch (call) {
    case Call::set:
        return "set";
    case Call::get:
        return "get";
    case Call::dgram_set:
        return "dgram-set";
    case Call::dgram_get:
        return "dgram-get";
    }
    return {};
}

std::string_view to_text(FieldType type)
{
    switch (type) {
    case FieldType::u16:
    case FieldType::u32:
    case FieldType::u64:
        return "number";
    case FieldType::s16:
    case FieldType::s32:
        return "number with a sign";
    case FieldType::u8:
        return "byte";
    case FieldType::mac:
        return "MAC address";
    case FieldType::text:
        return "text";
    case FieldType::bytes:
        return "bytes";
    case FieldType::idset:
        return "set of ONU ids";
    case FieldType::ipv4:
        return "IPv4 address";
    case FieldType::oui:
        return "OUI";
    case FieldType::date:
        return "date";
    case FieldType::list:
        return "list of bytes";
    case FieldType::ports:
        return "set of ports";
    }
    return {};
}

} // namespace catalogue
