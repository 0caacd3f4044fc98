// This is the modelled OLT. Only apply() and advance() change it. Functions that only read the OLT plan what a request
// changes.
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

#include "model/base/look.h"
#include "model/change/change.h"
#include "model/change/plan.h"
#include "model/change/shelf.h"
#include "model/olt/alarm_watch.h"
#include "model/olt/fdb.h"
#include "model/olt/light_watch.h"
#include "model/plant/device.h"
#include "model/plant/module.h"
#include "model/plant/population.h"
#include "model/traffic/traffic.h"

namespace ponsim
{

// The mode says by what ONUs prove their identity at one port.
enum class AuthMode : uint32_t { mac, loid, loid_and_password, mac_or_loid };

struct Authentication {
    AuthMode mode = AuthMode::mac;
    std::map<std::string, std::string> records; // password by LOID
    bool extended_oam = true;                   // the OLT recognises the ONUs' extended OAM by their OUI

    // Returns whether the ONU is let in by its LOID, and by its password where the mode asks for one. The ONU sends
    // both over extended OAM. Without extended OAM it cannot prove anything.
    bool accepts(const Arrival &arrival) const;
    // Returns whether the ONU is kept out although it is on the fibre: the mode asks for a LOID, and the LOID of this
    // ONU is not accepted. `binding` is null while the ONU is not bound.
    bool turns_away(const Arrival &arrival, const Binding *binding) const;
};

// Returns whether the block is the OUI by which extended OAM is recognised at all PON ports. While that is the ONUs'
// own OUI, no block is kept.
bool is_oui(const BlockKey &key);

// This is the state of a bound ONU.
enum class OnuState : uint32_t { offline, online, unauthenticated };
std::string_view to_text(OnuState state);

// UpgradeRuns hold the upgrade runs of a port's ONUs.
class UpgradeRuns
{
public:
    using Times = std::set<std::pair<ModelTime, Mac>>;

    // Returns the last run of an ONU. Returns null when there was none.
    const UpgradeRun *find(const Mac &mac) const;
    // Returns the runs whose state ends by itself, in the order in which the states end.
    const Times &stepping() const { return ends; }
    // Returns the runs that wait, in the order of when they began to wait, and then of MAC address.
    const Times &queued() const { return queue; }
    uint32_t downloads() const { return downloading; }
    bool rebooting(const Mac &mac) const;
    const ByMac<UpgradeRun> &all() const { return runs; }

    // Without a run the ONU has none any more.
    void set(const Mac &mac, const std::optional<UpgradeRun> &run);

private:
    ByMac<UpgradeRun> runs;
    Times ends;
    Times queue;
    uint32_t downloading = 0;
};

// An AlarmAt is the key of an alarm within its port.
struct AlarmAt {
    Mac mac; // zero: of the port itself
    uint32_t alarm;
    uint32_t unit = 0;

    auto operator<=>(const AlarmAt &) const = default;
};
using Alarms = std::map<AlarmAt, AlarmRecord>;

struct PonPort {
    uint32_t number;
    std::vector<Branch> branches;                // of its fibre
    std::vector<Arrival> arrivals;               // in order of MAC address
    const OpticalClass *optics = &usual_class(); // of its module, and of the ONUs whose kind has no other
    std::map<uint32_t, int32_t> damage = {};     // of branches: what light loses there beyond the loss of an undamaged
                                                 // branch, 0.01 dB
    RangingLimits limits = {};
    std::array<std::optional<Binding>, onus_per_port> bindings = {};         // by ONU id
    ByMac<OnuRecord> onus = {};                                              // records that differ from a new one
    std::array<std::optional<BlacklistEntry>, onus_per_port> blacklist = {}; // by blacklist id
    ByMac<uint32_t> blacklist_ids = {};
    Authentication authentication = {};
    Alarms alarms = {};

    UpgradeRuns upgrades = {};
    Traffic traffic = {};

    // This is the generation of the OLT that began with the last change of a record of this port, of its ONUs, or of
    // the whole OLT. Traffic and alarms do not count, because they are not in the views whose rows are kept by port.
    uint64_t generation = 0;

    // Returns the ONU as it has arrived. Returns null when it has not arrived.
    const Arrival *arrived(const Mac &mac) const;
    // Returns whether the ONU, which has arrived, is on the fibre: it is within the limits, has power and is
    // registered.
    bool ranges(const Arrival &arrival) const
    {
        return limits.contain(arrival.distance) && record(arrival.mac).present();
    }
    // Returns the ONU as it has arrived and is ranged. Returns null when it has not arrived or is not ranged.
    const Arrival *ranged(const Mac &mac) const;
    const OnuRecord &record(const Mac &mac) const;
    // A bound ONU is offline when it is silent, has not arrived here, is not ranged, or reboots after an upgrade.
    OnuState state(const Binding &binding) const;
    // As above, of an ONU that has arrived and is ranged.
    OnuState state(const Binding &binding, const Arrival &arrival) const;
    // Returns the state that it has once it has rebooted.
    OnuState state_rebooted(const Binding &binding, const Arrival &arrival) const;
    bool online(const Binding &binding) const { return state(binding) == OnuState::online; }
    bool refuses(const Mac &mac) const { return blacklist_ids.contains(mac); }
};

// Returns the record of an ONU in the change, to be edited there. Starts with what the change already says or, when it
// says nothing, with what is kept now.
OnuRecord &edit(Change &change, const PonPort &port, const Mac &mac);

class Olt
{
public:
    explicit Olt(const Settings &settings);
    Olt(const Olt &);
    Olt(Olt &&) noexcept;
    Olt &operator=(Olt &&) noexcept;
    ~Olt();

    // These are the questions for the time. Each says to the Look how long its answer holds.
    ModelTime now() const
    {
        Look::end(time + 1);
        return time;
    }
    // Returns the second that has begun.
    ModelTime second() const
    {
        const ModelTime begun = time / ms_per_second;
        Look::end((begun + 1) * ms_per_second);
        return begun;
    }
    bool has_come(ModelTime at) const
    {
        if (time < at) Look::end(at);
        return time >= at;
    }
    // Returns how many changes there have been. While it stays the same, what the OLT shows follows from the time
    // alone.
    uint64_t generation() const { return changes; }
    // Returns how many events of the scenario's timeline have happened.
    uint32_t events_done() const { return the_one<Timeline>().done; }
    // Returns what a set command left. Returns null when it left nothing. See BlockKey.
    const std::string *block(uint32_t channel, uint32_t command, uint32_t pon_port, uint32_t index = 0) const;

    const Fdb &fdb() const { return forwarding; }
    const LightWatch &light_watch() const { return lights; }
    const AlarmWatch &alarm_watch() const { return conditions; }

    // Returns the seed from which the devices of its ONUs follow.
    uint64_t seed() const { return as_found.seed; }
    // Returns what the OLT was found with, and what a scenario says of it. The latter is null without a scenario.
    const Settings &found() const { return as_found; }
    const Topology *topology() const { return as_found.topology.get(); }
    // Returns what is found at a port when nothing has been plugged in or taken away.
    PortPopulation found_at(uint32_t pon_port) const;
    // Returns what the scenario, or whoever plugged the ONU in, says of it.
    Equipment equipment_of(const Mac &mac) const;
    // Returns a kind of the scenario by its name, or else a model that the simulator knows. Returns null when there is
    // none.
    const DeviceType *kind(const std::string &name) const;
    // Returns what an ONU is by nature, whether it has arrived or not.
    Device device_of(const Mac &mac) const;
    // Returns the optical class of an ONU at the port.
    const OpticalClass &optics_of(const PonPort &port, const Mac &mac) const;

    // Returns the ports in the order of their numbers.
    const std::vector<PonPort> &ports() const { return pon_ports; }
    // Returns null when there is no such port.
    const PonPort *port(uint32_t number) const;

    // Returns the optical modules in the order of their cages.
    const std::vector<Module> &modules() const { return optics; }
    // Returns null when there is no such cage.
    const Module *module(uint32_t cage) const;

    // Returns the upgrade types by name.
    const std::map<std::string, UpgradeType> &upgrade_types() const { return kept<UpgradeType>(); }
    // Returns the UNI ports that have a loop, are shut, or once had a loop or were shut.
    const std::map<UniKey, LoopRecord> &loops() const { return kept<LoopRecord>(); }
    const LoopDetection &loop_detection() const { return the_one<LoopDetection>(); }
    // Returns what the ONU has sent and received. Returns null when it does not monitor its UNI ports.
    const Ledger *ledger(const OnuAtPort &key) const;
    // Returns a setting that an ONU has received. Returns null when it has received none. The setting stays with the
    // ONU, bound or not.
    const OnuSetting *setting(const SettingKey &key) const;
    // Returns the profiles by id.
    const std::map<uint32_t, Profile> &profiles(ProfileKind kind) const;
    // Returns the loop at a UNI port. Returns null when the port has none, is not shut, and never was.
    const LoopRecord *loop(const UniKey &key) const;
    // Returns whether loop detection has shut the UNI port.
    bool shut(const UniKey &key) const;
    // Returns the settings of UNI ports that are on their way to ONUs, in the order in which they arrive.
    const std::set<std::pair<ModelTime, SettingKey>> &arriving() const { return on_their_way; }

    // Returns the ONUs whose fibre was unplugged, and whose link has not failed yet.
    const std::set<OnuAtPort> &leaving() const { return unplugged; }
    // Returns the alarms of a PON port and its ONUs or, for port 0, those of the uplinks.
    const Alarms &alarms(uint32_t pon_port) const
    {
        return pon_port == 0 ? of_uplinks : pon_ports.at(pon_port - 1).alarms;
    }
    // Returns the alarm. Returns null when it was never raised, or was cleared by command.
    const AlarmRecord *alarm(const AlarmKey &key) const;

    std::optional<OnuKey> find(const Mac &mac) const;
    // Returns the id to which the ONU is bound at this port.
    std::optional<uint32_t> id_at(uint32_t pon_port, const Mac &mac) const;

    // Returns whether the ONU is bound at the port and online.
    bool online(const PonPort &port, const Mac &mac) const;
    // Returns whether the ONU waits at the port: it is not bound there, and is not on the port's blacklist.
    bool waits(const PonPort &port, const Arrival &arrival) const;
    // Returns whether the ONU is on the fibre, so that something would be noticed of it.
    bool on_fibre(const PonPort &port, const Arrival &arrival) const
    {
        return online(port, arrival.mac) || waits(port, arrival);
    }
    // Returns the ONUs that wait at a port, in the order of their MAC addresses.
    std::vector<const Arrival *> waiting(const PonPort &port) const;

    // Due names an ONU whose phase of registration ends by itself. The ONUs stand in the order of these ends.
    struct Due {
        ModelTime at;
        uint32_t pon_port;
        Mac mac;

        auto operator<=>(const Due &) const = default;
    };
    const std::set<Due> &registrations() const { return due; }

    // Returns the records of a family that is kept as it is, by their keys.
    template <class Record>
    const typename Shelf<Record>::Records &kept() const
    {
        return std::get<Shelf<Record>>(shelves).records();
    }

    // Adds to the change what PON ports have been offered and what their ONUs have counted until now, where the change
    // may affect their traffic. The counts of ONUs that restart begin anew.
    void add_traffic(Change &change) const;
    // Makes the change. Ports and ids of the change must exist.
    void apply(const Change &change);
    // Lets time pass. Time does not go back.
    void advance(ModelTime to);

private:
    // Returns the record of a family that has one record only. Until that is kept, it is as a new one.
    template <class Record>
    const Record &the_one() const
    {
        static const Record as_new{};
        const Record *record = std::get<Shelf<Record>>(shelves).find({});
        return record ? *record : as_new;
    }
    // A Concern says what of a port's traffic may become different.
    struct Concern {
        OnuIds demands = {};  // ONUs that may come online, go offline, or change their demand
        OnuIds errors = {};   // ONUs whose frames may arrive with other bit errors
        bool sharing = false; // ONUs may get other shares of the room
    };
    std::map<uint32_t, Concern> concerned(const Change &change) const;
    void count(const Change &change);
    void follow_demand(const std::map<uint32_t, Concern> &concerned);
    void forget(const OnuKey &key);

    void plug(const Change &change);

    Settings as_found;
    std::vector<PonPort> pon_ports;
    std::vector<Module> optics;
    std::array<std::map<uint32_t, Profile>, profile_kinds> profiles_of_kinds;
    ByMac<OnuKey> bound_at;
    std::set<Due> due;
    std::set<std::pair<ModelTime, SettingKey>> on_their_way;
    ByMac<Equipment> plugged; // of ONUs that were plugged in or taken away
    std::set<OnuAtPort> unplugged;
    Kept::OfEach<Shelf> shelves;
    ModelTime time = 0;
    uint64_t changes = 0;
    Fdb forwarding;
    LightWatch lights;
    Alarms of_uplinks;
    AlarmWatch conditions;
};

// Returns the device as it is now, with the software that it runs. It must not be used after a change of the OLT.
Device device_at(const Olt &olt, const PonPort &port, const Mac &mac);

} // namespace ponsim
