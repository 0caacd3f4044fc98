// This file reads what the service says of ONUs, alarms and light, for whatever is concluded from all of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "board/datastore.h"
#include "call/json.h"
#include "output/exit_code.h"

namespace ponctl
{

// A MilliTime is a model time of the service, in milliseconds.
using MilliTime = uint64_t;

struct OnuFact {
    uint32_t port = 0;
    std::optional<uint32_t> id; // none while the ONU is not bound
    std::string mac, state, description, loid;
    bool supported = true;

    // Returns PORT/ID, or PORT/MAC of an ONU that is not bound.
    std::string name() const;
};

struct AlarmFact {
    uint32_t port = 0;
    std::optional<uint32_t> onu_id; // none of a port and of an uplink
    std::string mac;                // empty of a port and of an uplink
    std::string name, severity, cause, place;
    bool active = false;
    std::optional<MilliTime> raised, cleared;

    // Returns what the alarm is about: "1/5", "1/02:...", "port 1" or "OLT".
    std::string subject() const;
    // Returns the cause and the place, as far as the service knows them: "fibre at drop-5".
    std::string reason() const;
    bool operator==(const AlarmFact &) const = default;
};

// A LightFact is what is measured of one ONU. Nothing is measured while the ONU is offline.
struct LightFact {
    uint32_t port = 0, onu_id = 0;
    std::optional<double> at_olt, at_onu; // dBm
};

// A MeasuredFact is what a power measurement of the port found, which somebody had it make.
struct MeasuredFact {
    double power; // dBm at the port
    std::optional<MilliTime> at;
};

// The limits of a port's receiver are the thresholds of its module, in dBm.
struct LightLimits {
    double weak;   // with less there are bit errors
    double lost;   // with less nothing is heard
    double strong; // with more there are bit errors
};

// These functions read the rows of the views onu_info, onu_alarm, onu_optics_table and sfp_quantities. A null database
// has no rows.
std::vector<OnuFact> read_onus(const db_handle *database);
std::vector<AlarmFact> read_alarms(const db_handle *database);
std::vector<LightFact> read_light(const db_handle *database);
std::optional<LightLimits> read_limits(const db_handle *database);

// Returns a cell as a text. The text is empty when there is no value.
std::string cell_text(const db_handle *database, uint32_t row, const char *column);

// Returns a span of time in words, with two units at most: "1 d 2 h", "4 min 10 s", "0.3 s".
std::string span_text(MilliTime span);
// Returns how long before `now` a time was: "4 min 10 s ago", or "-" when one of them is not known.
std::string ago_text(std::optional<MilliTime> now, std::optional<MilliTime> then);
// Returns a power or a difference of powers with two decimals.
std::string decibel_text(double value);

// Write a member that is null when there is no value.
void write_member(JsonText &json, std::string_view key, const std::optional<MilliTime> &value);
void write_member(JsonText &json, std::string_view key, const std::optional<double> &value);
// Writes an alarm as an object.
void write_alarm(JsonText &json, const AlarmFact &alarm);

} // namespace ponctl
