// Access says who may do what. A grant gives a command class to a user.
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
    // Adds "USER=CLASS". USER is a name, a number, or * for everyone without a grant of his own. CLASS is read, write
    // or service-affecting, and each class includes the ones before it. Returns what is wrong with the text, or an
    // empty text.
    std::string grant(std::string_view text);

    // Returns why the user may not send the message, or an empty text when he may. A command that is not in the
    // catalogue counts as reading on a get call and as writing on a set call.
    std::string refuse(uid_t user, const Message &message) const;
    // As above for the control of the simulation, which needs service-affecting access.
    std::string refuse_control(uid_t user) const;

private:
    catalogue::Class granted_to(uid_t user) const;

    std::map<uid_t, catalogue::Class> users;
    catalogue::Class everyone = catalogue::Class::service_affecting;
};

} // namespace ponsim
