// The OLT's forwarding database: behind which port the stations are, as learned from their frames.
//
// Stations send all the time, and nothing happens here when they do: an entry follows from when the OLT listened to its
// ONU, and is worked out when it is looked at. What an entry was is settled when that changes. Like that of any switch,
// the database is forgotten when the OLT is started anew.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "model/olt/change.h"
#include "model/olt/plan.h"
#include "model/plant/station.h"

namespace ponsim
{

class Olt;
struct PonPort;

struct FdbConfig {
    uint32_t ageing = 300; // s; 0: entries stay for ever
    uint32_t learning = 1;
    uint32_t port_limit = 0; // entries of a PON port; 0: no limit

    bool operator==(const FdbConfig &) const = default;
};

FdbConfig fdb_config(const Olt &olt);
Plan set_fdb_config(const FdbConfig &config);

// Forgets the entries. They are back when their stations send next.
Plan flush_fdb(const Olt &olt, const FdbFilter &filter);

// Why a filter cannot be: a port is of one side and must be there, and the network side has no LLID and no UNI port.
uint32_t check_filter(const Olt &olt, const FdbFilter &filter);

struct FdbEntry {
    uint32_t port;                  // PON port, or GE uplink
    std::optional<uint32_t> onu_id; // of the PON side: the one that it was last bound to
    uint32_t uni;                   // of the PON side
    uint32_t vlan;
    Mac mac;
    ModelTime since; // learned
    ModelTime seen;  // when its station sent last
};

class Fdb
{
public:
    // Of an OLT that has its ports. It learns from the first change on.
    void start(const Olt &olt);

    // What a change, which has been made, means to what is heard. `moved` are the ONUs of its bindings, before and
    // after, and at which port.
    void follow(const Olt &olt, const Change &change, std::span<const std::pair<uint32_t, Mac>> moved);

    // The entries that the filter holds for: those of the PON side, in order of port, ONU id and UNI port; then those
    // of the network side, in order of uplink.
    std::vector<FdbEntry> entries(const FdbFilter &filter, ModelTime now) const;

private:
    struct Learned {
        ModelTime since;
        ModelTime seen;
    };
    // The stations behind an ONU, or those of the network side.
    struct Group {
        std::vector<Station> stations = {};
        std::vector<std::optional<Learned>> learned = {}; // of each station, as it was at `settled`
        ModelTime settled = 0;
        bool listening = false; // since then
        uint32_t onu_id = 0;
        uint32_t limit = 0; // entries; 0: none
    };

    std::optional<Learned> learned(const Group &group, size_t index, ModelTime now) const;
    void settle(Group &group, ModelTime now) const;
    void listen(Group &group, bool listening, ModelTime now) const;
    void look(const Olt &olt, const PonPort &port, size_t arrival);
    void look(const Olt &olt, const PonPort &port);
    void configure(const Olt &olt);
    void flush(const FdbFilter &filter, ModelTime now);
    // The entry of a station, where there is one. Of the network side: port 0.
    std::optional<FdbEntry> entry_of(const Group &group, size_t index, uint32_t pon_port, ModelTime now) const;
    // As many as the limit allows, of a group and of a port.
    std::vector<FdbEntry> entries_of(const Group &group, uint32_t pon_port, ModelTime now) const;
    std::vector<FdbEntry> entries_at(uint32_t pon_port, ModelTime now) const;

    FdbConfig config = {};
    std::vector<std::vector<Group>> onus = {}; // by port and arrival
    Group network = {};
};

} // namespace ponsim
