// This file has upgrade types, what they are bound to, and the upgrade runs of ONUs.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/change/plan.h"
#include "model/lifecycle/process.h"
#include "model/olt/olt.h"
#include "model/plant/device.h"

namespace ponsim
{

inline constexpr uint32_t max_downloads = 4; // at a time, for each port

using UpgradeTypes = std::map<std::string, UpgradeType>; // by name

// Adds types that are good. A type replaces an existing one of the same name, unless a run uses that one.
Plan add_upgrade_types(const Olt &olt, const UpgradeTypes &types);
// Deletes the type. Ports and ONUs to which it is bound have no type after that.
Plan delete_upgrade_type(const Olt &olt, const std::string &name);

// Binds a type, or with an empty name none. An ONU's own type takes precedence over that of its port.
Plan bind_upgrade_type(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids, const std::string &name);
Plan bind_upgrade_type(const Olt &olt, uint32_t pon_port, const std::string &name);

// Starts a run. The run waits when the port has max_downloads downloads under way.
Plan upgrade_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id);
// Starts a run with the type whose image has this file name. Of several types, one that fits the ONU is taken.
Plan upgrade_onu_with(const Olt &olt, const PonPort &port, const Binding &binding, const std::string &file);
// Starts runs for all ONUs of the port that can be upgraded.
Plan upgrade_port(const Olt &olt, uint32_t pon_port);

// Sets whether the image that the ONU downloads fails verification.
Plan set_bad_image(const Olt &olt, uint32_t pon_port, const Mac &mac, bool bad);

// The ONUs restart. What they had downloaded is lost, and such runs fail. Other runs take their places.
void interrupt_runs(const Olt &olt, const PonPort &port, std::span<const Mac> macs, Change &change);

// UpgradeProgress is what is to be shown of an ONU's upgrade.
struct UpgradeProgress {
    std::optional<std::string> type; // the type that applies to the ONU
    std::optional<std::string_view> state;
    std::optional<uint32_t> progress; // percent of the image
    std::optional<std::string_view> reason;
};
UpgradeProgress upgrade_progress(const Olt &olt, const PonPort &port, const Mac &mac);

// In this process the runs go on. A run fails when its next step is due and its ONU is not bound and online there.
extern const Process upgrade_process;

} // namespace ponsim
