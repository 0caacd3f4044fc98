// The modelled OLT. It is changed by apply() alone; what a request changes is planned by functions that only read it.
#pragma once

#include <array>
#include <compare>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/kept/shelf.h"
#include "model/olt/change.h"
#include "model/olt/fdb.h"
#include "model/olt/light_watch.h"
#include "model/olt/plan.h"
#include "model/olt/traffic.h"
#include "model/plant/device.h"
#include "model/plant/module.h"
#include "model/plant/population.h"

namespace ponsim
{

// What ONUs prove who they are with, at one port.
enum class AuthMode : uint32_t { mac, loid, loid_and_password, mac_or_loid };

struct Authentication {
    AuthMode mode = AuthMode::mac;
    std::map<std::string, std::string> records; // password by LOID
    bool extended_oam = true;                   // the OLT knows the ONUs' extended OAM by their OUI

    // Whether the ONU is let in by its LOID, and its password where the mode asks for it. It tells them by extended
    // OAM: without that it cannot prove anything.
    bool accepts(const Arrival &arrival) const;
    // Whether the ONU is kept out, although it is on the fibre: the mode asks for a LOID, and this one's will not do.
    // `binding` is null while it is not bound.
    bool turns_away(const Arrival &arrival, const Binding *binding) const;
};

// Whether the block is the OUI that extended OAM is known by at all PON ports. While it is the ONUs' own, none is kept.
bool is_oui(const BlockPlace &place);

// Of a bound ONU.
enum class OnuState : uint32_t { offline, online, unauthenticated };
std::string_view to_text(OnuState state);

// Which ONUs on the fibre a port reaches.
struct Reach {
    RangingLimits limits;
    bool lit; // the laser is on

    bool contains(const Arrival &arrival) const { return lit && limits.contain(arrival.distance); }
};

// The upgrade runs of a port's ONUs.
class UpgradeRuns
{
public:
    using Times = std::set<std::pair<ModelTime, Mac>>;

    // The last of an ONU; null when there was none.
    const UpgradeRun *find(const Mac &mac) const;
    // Those whose state ends by itself, in order of that.
    const Times &stepping() const { return ends; }
    // Those that wait, in order of when they began to, and of MAC address.
    const Times &queued() const { return queue; }
    uint32_t downloads() const { return downloading; }
    bool rebooting(const Mac &mac) const;

    void set(const Mac &mac, const UpgradeRun &run);

private:
    std::map<Mac, UpgradeRun> runs;
    Times ends;
    Times queue;
    uint32_t downloading = 0;
};

struct PonPort {
    uint32_t number;
    std::vector<Branch> branches;            // of its fibre
    std::vector<Arrival> arrivals;           // in order of MAC address
    std::map<uint32_t, int32_t> damage = {}; // to branches: what light loses there beyond what it must, 0.01 dB
    RangingLimits limits = {};
    bool lit = true;                                                         // the laser of its optical module is on
    std::array<std::optional<Binding>, onus_per_port> bindings = {};         // by ONU id
    std::map<Mac, OnuRecord> onus = {};                                      // those that differ from a new one
    std::array<std::optional<BlacklistEntry>, onus_per_port> blacklist = {}; // by id there
    std::map<Mac, uint32_t> blacklist_ids = {};
    Authentication authentication = {};
    std::map<std::pair<Mac, uint32_t>, uint32_t> alarms = {}; // how often, by ONU and alarm; none is 0.
                                                              // Alarms of the port itself have a zero address.

    UpgradeRuns upgrades = {};
    Traffic traffic = {};

    Reach reach() const { return {limits, lit}; }
    // The ONU as it has arrived; null when it has not.
    const Arrival *arrived(const Mac &mac) const;
    // Whether the ONU, which has arrived, is on the fibre: the port reaches it, and it has power and is
    // registered.
    bool ranges(const Arrival &arrival) const { return reach().contains(arrival) && record(arrival.mac).present(); }
    // The ONU as it has arrived and is ranged; null when it has not or is not.
    const Arrival *ranged(const Mac &mac) const;
    OnuRecord record(const Mac &mac) const;
    // A bound ONU is offline when it is silent, has not arrived here, is not ranged, or reboots after an upgrade.
    OnuState state(const Binding &binding) const;
    // The same once it has rebooted.
    OnuState state_rebooted(const Binding &binding) const;
    bool online(const Binding &binding) const { return state(binding) == OnuState::online; }
    bool refuses(const Mac &mac) const { return blacklist_ids.contains(mac); }
};

// What becomes of an ONU by the change, to be written into it: what the change says already, or else what is kept now.
OnuRecord &edit(Change &change, const PonPort &port, const Mac &mac);

class Olt
{
public:
    explicit Olt(const Settings &settings);

    ModelTime now() const { return time; }
    // How many events of its scenario's timeline have happened.
    uint32_t events_done() const { return the_one<Timeline>().done; }
    // What a set command left; null when nothing. See BlockPlace.
    const std::string *block(uint32_t channel, uint32_t command, uint32_t pon_port, uint32_t index = 0) const;

    const Fdb &fdb() const { return forwarding; }
    const LightWatch &light_watch() const { return lights; }

    // What the devices of its ONUs follow from.
    uint64_t seed() const { return own_seed; }
    // What an ONU is by nature, whether it has arrived or not.
    Device device_of(const Mac &mac) const;

    // In order of number.
    const std::vector<PonPort> &ports() const { return pon_ports; }
    // Null when there is no such port.
    const PonPort *port(uint32_t number) const;

    // The optical modules, in order of cage.
    const std::vector<Module> &modules() const { return optics; }
    // Null when there is no such cage.
    const Module *module(uint32_t cage) const;

    // By name.
    const std::map<std::string, UpgradeType> &upgrade_types() const { return kept<UpgradeType>(); }
    // UNI ports that have a loop, are shut, or were.
    const std::map<UniPlace, LoopRecord> &loops() const { return kept<LoopRecord>(); }
    const LoopDetection &loop_detection() const { return the_one<LoopDetection>(); }
    // What an ONU was told; null when nothing. It stays with the ONU, bound or not.
    const OnuSetting *setting(const SettingPlace &place) const;
    // By id.
    const std::map<uint32_t, Profile> &profiles(ProfileKind kind) const;
    // Whether loop detection has shut the UNI port.
    bool shut(const UniPlace &place) const;

    // Where an ONU is bound.
    using Place = OnuPlace;
    std::optional<Place> find(const Mac &mac) const;
    // The ONU id that it is bound to at this port.
    std::optional<uint32_t> id_at(uint32_t pon_port, const Mac &mac) const;

    // Whether the ONU is bound at the port, and online.
    bool online(const PonPort &port, const Mac &mac) const;
    // Whether the ONU waits at the port: it is not bound there, and not on its black list.
    bool waits(const PonPort &port, const Arrival &arrival) const;
    // The ONUs that wait at a port, in order of MAC address.
    std::vector<const Arrival *> waiting(const PonPort &port) const;

    // The ONUs whose phase of registration ends by itself, in order of that.
    struct Due {
        ModelTime at;
        uint32_t pon_port;
        Mac mac;

        auto operator<=>(const Due &) const = default;
    };
    const std::set<Due> &registrations() const { return due; }

    // The records of a family that is kept as it is, by their keys.
    template <class Record>
    const typename Shelf<Record>::Records &kept() const
    {
        return std::get<Shelf<Record>>(shelves).records();
    }

    // Adds to the change what PON ports have been offered until now, where it may change their traffic.
    void add_traffic(Change &change) const;
    // Ports and ids of the change must exist.
    void apply(const Change &change);
    // Lets time pass; it does not go back.
    void advance(ModelTime to);

private:
    // The record of a family that has one only; until it is kept, as a new one.
    template <class Record>
    const Record &the_one() const
    {
        static const Record as_new{};
        const Record *record = std::get<Shelf<Record>>(shelves).find({});
        return record ? *record : as_new;
    }
    std::map<uint32_t, OnuIds> concerned(const Change &change) const;
    void follow_demand(const std::map<uint32_t, OnuIds> &concerned);
    void forget(const Place &place);

    uint64_t own_seed;
    std::shared_ptr<const Topology> topology; // null: all follows from the seed
    std::vector<PonPort> pon_ports;
    std::vector<Module> optics;
    std::array<std::map<uint32_t, Profile>, profile_kinds> profiles_of_kinds;
    std::map<Mac, Place> places;
    std::set<Due> due;
    Kept::OfEach<Shelf> shelves;
    ModelTime time = 0;
    Fdb forwarding;
    LightWatch lights;
};

// The device as it is now, with the software that it runs. It must not outlive a change of the OLT.
Device device_at(const Olt &olt, const PonPort &port, const Mac &mac);

} // namespace ponsim
