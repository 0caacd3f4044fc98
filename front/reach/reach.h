// A Reach says how an OLT is got to: over sockets of this machine, or through a fleet.
#pragma once

#include <memory>
#include <string>

namespace front
{

// A Fleet is a connection to a fleet's broker, for all threads. It is made when it is first needed, and again when it
// is lost: an OLT behind a broker that is not there does not answer.
class Fleet
{
public:
    // Takes the file of the settings, as ponctl has one. Throws a toml_file::Error.
    explicit Fleet(const std::string &file);
    ~Fleet();
    Fleet(const Fleet &) = delete;
    Fleet &operator=(const Fleet &) = delete;

    class Door;
    const std::shared_ptr<Door> door;
};

struct Reach {
    std::string folder;                      // of sockets; empty: that of the board library
    std::shared_ptr<const Fleet> fleet = {}; // null: the OLT is on this machine
    std::string olt = {};                    // its name in the fleet

    // Returns whether it is the same way: through a fleet, with the same settings.
    bool operator==(const Reach &other) const;
};

// From now on, what the calling thread asks goes to this OLT.
void reach(const Reach &olt);

} // namespace front
