#include "daemon/access.h"

#include <algorithm>

#include <grp.h>
#include <pwd.h>

#include "text/number.h"

namespace ponsim
{
namespace
{

using catalogue::Class;

std::optional<uid_t> find_user(const std::string &text)
{
    if (const auto user = text::to_number<uid_t>(text)) return user;
    if (const passwd *entry = getpwnam(text.c_str())) return entry->pw_uid;
    return std::nullopt;
}

std::optional<gid_t> find_group(const std::string &text)
{
    if (const auto found = text::to_number<gid_t>(text)) return found;
    if (const group *entry = getgrnam(text.c_str())) return entry->gr_gid;
    return std::nullopt;
}

} // namespace

Asker::Asker(const board_request &request) : user(request.uid), group(request.gid)
{
    if (request.groups) groups.emplace(request.groups, request.groups + request.group_count);
}

std::string Access::grant(std::string_view text)
{
    const size_t middle = text.find('=');
    if (middle == std::string_view::npos || middle == 0)
        return "expected USER=CLASS or @GROUP=CLASS, as in alice=read, @noc=write or *=read";
    const std::string user{text.substr(0, middle)};
    const std::optional<Class> granted = catalogue::find_class(text.substr(middle + 1));
    if (!granted) return "the class must be read, write or service-affecting";
    if (user == "*") {
        everyone = *granted;
        return {};
    }
    if (user.starts_with('@')) {
        const std::optional<gid_t> gid = find_group(user.substr(1));
        if (!gid) return "there is no group " + user.substr(1) + " here; name one, or give a group number";
        groups[*gid] = *granted;
        return {};
    }
    const std::optional<uid_t> uid = find_user(user);
    if (!uid) return "there is no user " + user + " here; name one, give a user number, or * for everyone else";
    users[*uid] = *granted;
    return {};
}

Class Access::granted_to(const Asker &asker) const
{
    if (const auto found = users.find(asker.user); found != users.end()) return found->second;
    std::vector<gid_t> own = asker.groups.value_or(std::vector<gid_t>());
    if (asker.group) own.push_back(*asker.group);
    std::optional<Class> greatest;
    Class least = everyone;
    for (const auto &[group, granted] : groups) {
        least = std::min(least, granted);
        if (std::ranges::find(own, group) != own.end()) greatest = std::max(greatest.value_or(granted), granted);
    }
    return greatest.value_or(asker.groups ? everyone : least);
}

std::string Access::refuse_control(const Asker &asker) const
{
    const Class granted = granted_to(asker);
    if (granted == Class::service_affecting) return {};
    return "user " + std::to_string(asker.user) + " has " + std::string(to_text(granted)) +
           " access; controlling the simulation is service-affecting";
}

std::string Access::refuse(const Asker &asker, const Message &message) const
{
    const Class granted = granted_to(asker);
    const std::optional<uint32_t> code = command_of(message);
    const catalogue::Command *command =
        code ? catalogue::find_command(command_channel(message), *code, message.call) : nullptr;
    const Class needed = command ? command->impact : is_get(message) ? Class::read : Class::write;
    if (needed <= granted) return {};

    const std::string what = code ? "command " + std::to_string(*code) : "a message without a command";
    return "user " + std::to_string(asker.user) + " has " + std::string(to_text(granted)) + " access; " + what +
           " on channel " + std::to_string(message.channel) + " is " + std::string(to_text(needed));
}

} // namespace ponsim
