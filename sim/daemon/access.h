// Access says who may do what. A grant gives a command class to a user or to a group.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "board/service.h"
#include "catalogue.h"
#include "engine/message.h"

namespace ponsim
{

// An Asker is the process that sends a message, as the kernel knows it.
struct Asker {
    // A user who is in no group.
    Asker(uid_t of_user) : user(of_user), groups(std::vector<gid_t>()) {}
    explicit Asker(const board_request &request);

    uid_t user;
    std::optional<gid_t> group;
    std::optional<std::vector<gid_t>> groups; // beside that one; none: not known
};

class Access
{
public:
    // Adds "USER=CLASS" or "@GROUP=CLASS". USER is a name, a number, or * for everyone without a grant of his own or of
    // his groups. CLASS is read, write or service-affecting, and each class includes the ones before it. Returns what
    // is wrong with the text, or an empty text.
    //
    // The grant of a user counts before those of his groups, and of these the greatest. When it is not known in which
    // groups he is, he has the least of what is granted to groups and to everyone, because he may be in any of them.
    std::string grant(std::string_view text);

    // Returns why the user may not send the message, or an empty text when he may. A command that is not in the
    // catalogue counts as reading on a get call and as writing on a set call.
    std::string refuse(const Asker &asker, const Message &message) const;
    // As above for the control of the simulation, which needs service-affecting access.
    std::string refuse_control(const Asker &asker) const;

private:
    catalogue::Class granted_to(const Asker &asker) const;

    std::map<uid_t, catalogue::Class> users;
    std::map<gid_t, catalogue::Class> groups;
    catalogue::Class everyone = catalogue::Class::service_affecting;
};

} // namespace ponsim
