// This file describes upgrade types, upgrades of ONUs, and how long the steps of an upgrade take. An upgrade type says
// which firmware goes to which kind of ONU. Upgrade types are found by name.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "model/base/time.h"
#include "model/kept/family.h"
#include "model/kept/onu.h"

namespace ponsim
{

inline constexpr size_t max_upgrade_types = 32;
inline constexpr size_t longest_type_name = 31;
inline constexpr Bounds image_sizes{1, std::numeric_limits<uint32_t>::max()}; // bytes

struct UpgradeType {
    std::string vendor;
    std::string model;
    std::string version;
    uint32_t size; // bytes
    std::string file;

    bool operator==(const UpgradeType &) const = default;
};

// Returns whether the text can be a software version.
bool is_version(const std::string &text);

// Returns whether the type is possible: its texts are short enough for the layout, and name, vendor, model and version
// are words.
bool is_good(const std::string &name, const UpgradeType &type);

template <>
struct Family<UpgradeType> {
    static constexpr std::string_view table = "upgrade_type";
    static constexpr AllColumns configured = all_columns;
    using Key = std::string;
    static constexpr size_t most = max_upgrade_types;
    static constexpr std::tuple key{Itself<Key>{"name"}};
    static constexpr std::tuple value{Column{"vendor", &UpgradeType::vendor}, Column{"model", &UpgradeType::model},
                                      Column{"version", &UpgradeType::version},
                                      Column{"size", &UpgradeType::size, image_sizes},
                                      Column{"file", &UpgradeType::file}};

    struct Check {
        const char *operator()(uint32_t, const Key &name, const UpgradeType &type) const
        {
            return is_good(name, type) ? nullptr : "there is no such upgrade type";
        }
    };
};

// An ONU needs this time after an upgrade, until it runs its new software.
inline constexpr ModelTime reload_time = 30 * ms_per_second;
// Returns the time that it takes to download so many bytes.
ModelTime download_time(uint32_t size);

// An UpgradeRun is the upgrade of an ONU that is under way, or its last upgrade.
struct UpgradeRun {
    enum class State : uint32_t { queued, downloading, verifying, rebooting, done, failed };
    enum class Reason : uint32_t { none, offline, released, rejected, verification, rebooted };

    std::string type;    // name of its upgrade type
    std::string version; // version of the type when the run began
    uint32_t size;
    State state;
    ModelTime since; // when the state began
    Reason reason = Reason::none;

    bool under_way() const { return state != State::done && state != State::failed; }
    // Returns when the state ends by itself. The state of a run that is queued, done or failed does not end by itself.
    std::optional<ModelTime> end() const;
};

template <>
struct Family<UpgradeRun> {
    static constexpr std::string_view table = "upgrade_run";
    using Key = OnuAtPort;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac}};
    static constexpr std::tuple value{Column{"type", &UpgradeRun::type},
                                      Column{"version", &UpgradeRun::version},
                                      Column{"size", &UpgradeRun::size, image_sizes},
                                      Column{"state", &UpgradeRun::state, {0, 5}},
                                      Column{"since", &UpgradeRun::since, past},
                                      Column{"reason", &UpgradeRun::reason, {0, 5}}};
    static constexpr bool placed = true;
    static constexpr size_t most_of_port = remembered_per_port;
    static constexpr size_t most = max_ports * most_of_port;

    struct Check {
        const char *operator()(uint32_t, const Key &, const UpgradeRun &run) const
        {
            return is_version(run.version) ? nullptr : "there is no such version";
        }
    };
};

} // namespace ponsim
