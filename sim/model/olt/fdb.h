// This is the OLT's forwarding database. It says behind which port the stations are, as the OLT has learned it from
// their frames.
//
// Stations send all the time, and nothing happens here when they do. An entry follows from the time in which the OLT
// listened to its ONU, and is worked out when it is looked at. When the OLT begins or ends to listen, the entry is
// settled: its state at that time is stored. The database is forgotten when the OLT is started again, like that of any
// switch.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "model/change/change.h"
#include "model/change/plan.h"
#include "model/plant/station.h"

namespace ponsim
{

class Olt;
struct Arrival;
struct PonPort;

struct FdbConfig {
    uint32_t ageing = 300; // s; 0: entries stay for ever
    uint32_t learning = 1;
    uint32_t port_limit = 0; // how many entries a PON port has; 0: no limit

    bool operator==(const FdbConfig &) const = default;
};

// Returns whether there can be such a configuration.
bool is_good(const FdbConfig &config);

FdbConfig fdb_config(const Olt &olt);
Plan set_fdb_config(const FdbConfig &config);

// Forgets the entries. They are back when their stations send next.
Plan flush_fdb(const Olt &olt, const FdbFilter &filter);

// Returns why a filter is not possible: a port belongs to one side and must exist, and the network side has no LLID and
// no UNI port.
uint32_t check_filter(const Olt &olt, const FdbFilter &filter);

struct FdbEntry {
    uint32_t port;                  // PON port, or GE uplink
    std::optional<uint32_t> onu_id; // PON side only: the id to which the ONU was last bound
    uint32_t uni;                   // PON side only
    uint32_t vlan;
    Mac mac;
    ModelTime since; // when it was learned
    ModelTime seen;  // when its station sent last
};

class Fdb
{
public:
    // Starts with an OLT that has its ports. The database learns from the first change on.
    void start(const Olt &olt);

    // Takes over what a change, which has been made, means for the stations that are heard. `moved` names the ONUs of
    // the changed bindings, as bound before and after, and those of which more than the light has changed, each with
    // its port.
    void follow(const Olt &olt, const Change &change, std::span<const std::pair<uint32_t, Mac>> moved);

    // Takes over that these ONUs will be at the port, before they are. What is known behind those that stay is kept.
    void replug(const PonPort &port, std::span<const Arrival> arrivals);

    // Returns the entries that the filter selects: first those of the PON side in the order of port, ONU id and UNI
    // port, then those of the network side in the order of uplink.
    std::vector<FdbEntry> entries(const FdbFilter &filter, ModelTime now) const;

private:
    struct Learned {
        ModelTime since;
        ModelTime seen;
    };
    // A Group holds the stations behind an ONU, or those of the network side.
    struct Group {
        std::vector<Station> stations = {};
        std::vector<std::optional<Learned>> learned = {}; // entry of each station, as it was at `settled`
        ModelTime settled = 0;
        uint32_t heard = 0; // bit N: since `settled` the OLT listens to the stations behind UNI port N, or uplink N
        uint32_t onu_id = 0;
        uint32_t limit = 0; // how many entries; 0: no limit
    };

    std::optional<Learned> learned(const Group &group, size_t index, ModelTime now) const;
    void settle(Group &group, ModelTime now) const;
    void listen(Group &group, uint32_t heard, ModelTime now) const;
    void look(const Olt &olt, const PonPort &port, size_t arrival);
    void look(const Olt &olt, const PonPort &port);
    void configure(const Olt &olt);
    void flush(const FdbFilter &filter, ModelTime now);
    // Returns the entry of a station, when there is one. For the network side the port is 0.
    std::optional<FdbEntry> entry_of(const Group &group, size_t index, uint32_t pon_port, ModelTime now) const;
    // These return as many entries as the limit of a group, or of a port, allows.
    std::vector<FdbEntry> entries_of(const Group &group, uint32_t pon_port, ModelTime now) const;
    std::vector<FdbEntry> entries_at(uint32_t pon_port, ModelTime now) const;

    FdbConfig config = {};
    std::vector<std::vector<Group>> onus = {}; // by port and arrival
    Group network = {};
};

} // namespace ponsim
