// Upgrade types, what they are bound to, and the upgrade runs of ONUs.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "model/olt/process.h"
#include "model/plant/device.h"

namespace ponsim
{

inline constexpr size_t max_upgrade_types = 32;
inline constexpr uint32_t max_downloads = 4; // at a time, a port

using UpgradeTypes = std::map<std::string, UpgradeType>; // by name

// Whether the text can be a software version.
bool is_version(const std::string &text);

// Whether the type can be: its texts are short enough for the layout, and name, vendor, model and version are words.
bool is_good(const std::string &name, const UpgradeType &type);

// Adds good types. One of the same name takes the place of another, unless a run uses that.
Plan add_upgrade_types(const Olt &olt, const UpgradeTypes &types);
// Ports and ONUs that it is bound to have none then.
Plan delete_upgrade_type(const Olt &olt, const std::string &name);

// An empty name binds none. An ONU's own type goes before that of its port.
Plan bind_upgrade_type(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids, const std::string &name);
Plan bind_upgrade_type(const Olt &olt, uint32_t pon_port, const std::string &name);

// Starts a run; it waits where the port has max_downloads downloads under way.
Plan upgrade_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);
// The same with the type whose image has this file name; of several, one that fits the ONU.
Plan upgrade_onu_with(const Olt &olt, const PonPort &port, const Binding &binding, const std::string &file);
// Starts runs of all ONUs of the port that can be upgraded.
Plan upgrade_port(const Olt &olt, uint32_t pon_port);

// Whether what the ONU downloads fails verification.
Plan set_bad_image(const Olt &olt, uint32_t pon_port, const Mac &mac, bool bad);

// ONUs restart: what they had downloaded is lost, and such runs fail. Others take their places.
void interrupt_runs(const Olt &olt, const PonPort &port, std::span<const Mac> macs, Change &change);

// What is to be shown of an ONU's upgrade.
struct UpgradeProgress {
    std::optional<std::string> type; // that applies to it
    std::optional<std::string_view> state;
    std::optional<uint32_t> progress; // percent of the image
    std::optional<std::string_view> reason;
};
UpgradeProgress upgrade_progress(const Olt &olt, const PonPort &port, const Mac &mac);

// The runs go on. A run fails when its next step is due and its ONU is not bound and online there.
extern const Process upgrade_process;

} // namespace ponsim
