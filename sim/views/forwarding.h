// These are the tables of bandwidth, of P2P forwarding, and of the forwarding database.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "model/olt/fdb.h"
#include "model/olt/olt.h"
#include "model/port/p2p.h"

namespace ponsim
{

inline constexpr size_t small_result = 10240; // the longest result on the platform channel, in bytes
inline constexpr size_t max_text = 1023;      // the longest text in an answer, without its NUL
inline constexpr uint32_t max_shown = 100;    // entries of a MAC table

std::string sla_table(const PonPort &port);
std::string sla_down_table(const PonPort &port);
std::string sla_summary_table(const Olt &olt);

struct P2pState {
    uint32_t pon_port;
    bool on;
    uint32_t own_port; // 0: any port
    uint32_t onus;
    uint32_t entries;
};
std::string p2p_table(std::span<const P2pState> ports);
// The entries stand in the order of their numbers.
std::string p2p_entries_table(std::span<const std::optional<P2pEntry>> entries);

std::string mac_table(std::span<const FdbEntry> entries, ModelTime now);
std::string network_mac_table(std::span<const FdbEntry> entries, ModelTime now);

} // namespace ponsim
