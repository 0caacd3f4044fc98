#include "daemon/access.h"

#include <pwd.h>

#include "text/number.h"

namespace ponsim
{
namespace
{

using catalogue::Class;

constexpr Class classes[] = {Class::read, Class::write, Class::service_affecting};

std::optional<Class> find_class(std::string_view text)
{
    for (Class one : classes)
        if (catalogue::to_text(one) == text) return one;
    return std::nullopt;
}

std::optional<uid_t> find_user(const std::string &text)
{
    if (const auto user = text::to_number<uid_t>(text)) return user;
    if (const passwd *entry = getpwnam(text.c_str())) return entry->pw_uid;
    return std::nullopt;
}

} // namespace

std::string Access::grant(std::string_view text)
{
    const size_t middle = text.find('=');
    if (middle == std::string_view::npos || middle == 0) return "expected USER=CLASS, as in alice=read or *=write";
    const std::string user{text.substr(0, middle)};
    const std::optional<Class> granted = find_class(text.substr(middle + 1));
    if (!granted) return "the class must be read, write or service-affecting";
    if (user == "*") {
        everyone = *granted;
        return {};
    }
    const std::optional<uid_t> uid = find_user(user);
    if (!uid) return "there is no user " + user + " here; name one, give a user number, or * for everyone else";
    users[*uid] = *granted;
    return {};
}

Class Access::granted_to(uid_t user) const
{
    const auto found = users.find(user);
    return found == users.end() ? everyone : found->second;
}

std::string Access::refuse_control(uid_t user) const
{
    const Class granted = granted_to(user);
    if (granted == Class::service_affecting) return {};
    return "user " + std::to_string(user) + " has " + std::string(to_text(granted)) +
           " access; controlling the simulation is service-affecting";
}

std::string Access::refuse(uid_t user, const Message &message) const
{
    const Class granted = granted_to(user);
    const std::optional<uint32_t> code = command_of(message);
    const catalogue::Command *command =
        code ? catalogue::find_command(command_channel(message), *code, message.call) : nullptr;
    const Class needed = command ? command->impact : is_get(message) ? Class::read : Class::write;
    if (needed <= granted) return {};

    const std::string what = code ? "command " + std::to_string(*code) : "a message without a command";
    return "user " + std::to_string(user) + " has " + std::string(to_text(granted)) + " access; " + what +
           " on channel " + std::to_string(message.channel) + " is " + std::string(to_text(needed));
}

} // namespace ponsim
