// The numbers of OLTs, as monitoring systems read them.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "collector/snapshot.h"
#include "metrics/exposition.h"

namespace front
{

// How much of each ONU is told: nothing; that it is up, and what it is; its light too; its counters too.
enum class OnuDetail : uint8_t { none, state, optics, all };

// Returns the words for these, in their order, and one by its word.
std::span<const std::string_view> onu_details();
std::optional<OnuDetail> onu_detail(std::string_view word);

struct OltSnapshot {
    std::string name;
    std::shared_ptr<const Snapshot> snapshot;
};

// Writes what is known of the OLTs. What is outdated at this time is left out, so that nobody takes it for what is.
std::string metrics_text(std::span<const OltSnapshot> olts, OnuDetail detail, Format format, UnixTime now);

} // namespace front
