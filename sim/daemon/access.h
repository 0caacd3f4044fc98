// Who may do what: grants of a command class to a user.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "catalogue.h"
#include "engine/message.h"

namespace ponsim
{

class Access
{
public:
    // Adds "USER=CLASS": USER a name, a number, or * for everyone without a grant of his own; CLASS read, write or
    // service-affecting, each with those before it. Returns what is wrong with the text, empty when nothing is.
    std::string grant(std::string_view text);

    // Empty when the user may send the message; else why not. A command that the catalogue does not have counts as
    // reading on a get call and as writing on a set call.
    std::string refuse(uid_t user, const Message &message) const;
    // The same for the control of the simulation, which needs service-affecting access.
    std::string refuse_control(uid_t user) const;

private:
    catalogue::Class granted_to(uid_t user) const;

    std::map<uid_t, catalogue::Class> users;
    catalogue::Class everyone = catalogue::Class::service_affecting;
};

} // namespace ponsim
