// What the OLT keeps, and a change of it: the rows that become different. A change is what a request brings about, what
// the store writes in one transaction, and what is read back from the store.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/olt/fault.h"
#include "model/olt/traffic.h"
#include "model/olt/upgrade_run.h"
#include "model/plant/module.h"
#include "model/plant/population.h"

namespace ponsim
{

// An ONU bound to an id of a port. Mode, texts and description are the caller's, kept as given.
struct Binding {
    Mac mac;
    uint32_t mode = 0;
    std::string text_a;
    std::string text_b;
    std::string text_c;
    std::string description = {};
    bool exempt = false; // from authentication by LOID
    std::optional<Sla> sla = {};
    std::optional<uint32_t> sla_down = {}; // maximum, kbit/s
    bool p2p = true;                       // whether P2P forwarding concerns it

    bool operator==(const Binding &) const = default;
};

// How far an ONU that is on the fibre has come with its registration.
enum class Phase : uint32_t {
    registered,
    booting,        // it was switched on or restarted
    discovery,      // until a discovery window of its port in which it is heard
    mpcp,           // it was heard: REGISTER, GATE and REGISTER_ACK follow
    oam,            // the OAM link comes up, then the extended one
    authentication, // it is asked for its LOID
};

// How the light of an ONU reaches its port.
enum class Light : uint32_t {
    good,
    degraded, // with bit errors
    lost      // too weak: it is not heard
};

// What is kept of an ONU, bound or not, at one port.
struct OnuRecord {
    bool supported = true;
    uint32_t reboots = 0;
    std::string software = {};     // version of the image that took the place of its own; empty: that of its device
    std::string upgrade_type = {}; // bound to it; empty: that of the port
    bool bad_image = false;        // what it downloads fails verification
    bool powered = true;           // without power it is not on the fibre
    Phase phase = Phase::registered;
    ModelTime phase_ends = 0; // 0: the phase does not end by itself
    Light light = Light::good;
    uint32_t added_hours = 0;             // its laser's age beyond the time of the OLT
    bool rogue = false;                   // its laser does not go off, and blinds the port for all others
    std::optional<uint32_t> load_up = {}; // kbit/s that it offers; none: as it was found
    std::optional<uint32_t> load_down = {};
    uint32_t flood = 0; // broadcast frames a second that it sends beyond its load

    // Where it has arrived and the port reaches it, it is on the fibre.
    bool present() const { return powered && phase == Phase::registered && light != Light::lost; }

    bool operator==(const OnuRecord &) const = default;
};

// An ONU that a port refuses.
struct BlacklistEntry {
    Mac mac;
    std::string text;
};

// Distances of the nearest and the farthest ONU that a port ranges, in m.
struct RangingLimits {
    uint32_t min = 0;
    uint32_t max = max_distance;

    bool contain(uint32_t distance) const { return distance >= min && distance <= max; }
    bool operator==(const RangingLimits &) const = default;
};

// Entries of the forwarding database: those that all of it holds for. 0 holds for all.
struct FdbFilter {
    bool pon = true;     // of the PON side
    bool network = true; // of the network side
    uint32_t port = 0;   // PON port or GE uplink
    uint32_t llid = 0;
    uint32_t uni = 0;
    uint32_t vlan = 0;
    Mac mac = {};
};

// Which firmware goes to which kind of ONU.
struct UpgradeType {
    std::string vendor;
    std::string model;
    std::string version;
    uint32_t size; // bytes
    std::string file;

    bool operator==(const UpgradeType &) const = default;
};

// A UNI port of an ONU.
struct UniPlace {
    uint32_t pon_port;
    Mac mac;
    uint32_t uni;

    auto operator<=>(const UniPlace &) const = default;
};

// What is kept of a UNI port that has a loop, is shut, or was.
struct LoopRecord {
    bool looped = false; // the loop is there
    bool shut = false;   // by loop detection
    uint32_t detected = 0;
    ModelTime since = 0;                        // of the last change of its state
    std::optional<ModelTime> watched_from = {}; // while detection packets reach the loop: since when

    bool operator==(const LoopRecord &) const = default;
};

// Something that an ONU can be told: by the command that asks for it.
struct SettingPlace {
    uint32_t pon_port;
    Mac mac;
    uint32_t command;
    uint32_t uni; // 0: of the ONU itself

    auto operator<=>(const SettingPlace &) const = default;
};

// What an ONU was told, as the bytes of its block.
struct OnuSetting {
    std::string told;
    std::string before; // what the ONU has until that arrives
    ModelTime arrives;

    bool operator==(const OnuSetting &) const = default;
};

// How loops are detected, and how many were.
struct LoopDetection {
    bool on = false;
    bool manual = false;          // shut ports recover by command only
    uint32_t recovery_time = 300; // s
    uint32_t interval = 5;        // s, between detection packets
    uint32_t detected = 0;
    uint32_t recovered = 0;

    bool operator==(const LoopDetection &) const = default;
};

enum class ProfileKind : uint32_t { line = 1, sla, alarm };
inline constexpr uint32_t profile_kinds = 3;

// A named set of parameters.
struct Profile {
    std::string name;
    std::vector<int32_t> values; // in order of its kind's fields

    bool operator==(const Profile &) const = default;
};

struct Change {
    struct BindingRow {
        uint32_t pon_port;
        uint32_t onu_id;
        std::optional<Binding> binding; // none: the id is free
    };
    struct OnuRow {
        uint32_t pon_port;
        Mac mac;
        OnuRecord record; // as a new one: nothing is kept
    };
    struct PortRow {
        uint32_t pon_port;
        RangingLimits limits;
        uint32_t auth_mode;
    };
    struct BlacklistRow {
        uint32_t pon_port;
        uint32_t id;
        std::optional<BlacklistEntry> entry; // none: the id is free
    };
    struct AuthRow {
        uint32_t pon_port;
        std::string loid;
        std::optional<std::string> password; // none: there is no such record
    };
    struct AlarmRow {
        uint32_t pon_port;
        Mac mac; // zero: of the port itself
        uint32_t alarm;
        uint32_t count; // 0: cleared
    };
    struct ModuleRow {
        uint32_t cage;
        ModuleRecord record;
    };
    struct UpgradeTypeRow {
        std::string name;
        std::optional<UpgradeType> type; // none: there is no such type
    };
    struct UpgradeRunRow {
        uint32_t pon_port;
        Mac mac;
        UpgradeRun run;
    };
    struct FibreRow {
        uint32_t pon_port;
        uint32_t branch;
        int32_t loss; // beyond what it must lose, 0.01 dB; 0: it is mended
    };
    struct LoopRow {
        UniPlace place;
        std::optional<LoopRecord> record; // none: there is no loop, and nothing to tell of one
    };

    struct OnuSettingRow {
        SettingPlace place;
        OnuSetting setting;
    };

    // What a set command left for the matching get, as bytes: by the set command's channel and code, the port and what
    // else tells one from another.
    struct BlockRow {
        uint32_t channel;
        uint32_t command;
        uint32_t pon_port;
        uint32_t index;
        std::optional<std::string> bytes; // none: as if nothing had been set
    };

    struct ProfileRow {
        ProfileKind kind;
        uint32_t id;
        std::optional<Profile> profile; // none: the id is free
    };

    // What a PON port has been offered before the change; it says nothing new, and is there to be kept.
    struct TrafficRow {
        uint32_t pon_port;
        Offered offered;
    };

    std::vector<BindingRow> bindings = {};
    std::vector<OnuRow> onus = {};
    std::vector<PortRow> ports = {};
    std::vector<BlacklistRow> blacklist = {};
    std::vector<AuthRow> auth = {};
    std::vector<AlarmRow> alarms = {};
    std::vector<BlockRow> blocks = {};
    std::vector<FdbFilter> flushes = {}; // forgotten; the store does not know the forwarding database
    std::vector<ModuleRow> modules = {};
    std::vector<UpgradeTypeRow> upgrade_types = {};
    std::vector<UpgradeRunRow> upgrade_runs = {};
    std::vector<FibreRow> fibre = {};
    std::vector<LoopRow> loops = {};
    std::vector<OnuSettingRow> onu_settings = {};
    std::optional<LoopDetection> loop_detection = {};
    std::vector<ProfileRow> profiles = {};
    std::optional<uint32_t> events_done = {}; // of the scenario's timeline
    std::vector<TrafficRow> traffic = {};     // set by the simulator
    std::vector<std::string> log = {};        // lines for the service's log; not kept
    std::vector<FaultOrder> faults = {};      // what the service is to do with its answers; not kept
    std::optional<ModelTime> now = {};        // set by the simulator

    bool empty() const
    {
        return bindings.empty() && onus.empty() && ports.empty() && blacklist.empty() && auth.empty() &&
               alarms.empty() && blocks.empty() && flushes.empty() && modules.empty() && upgrade_types.empty() &&
               upgrade_runs.empty() && fibre.empty() && loops.empty() && onu_settings.empty() && !loop_detection &&
               profiles.empty() && !events_done;
    }
};

} // namespace ponsim
