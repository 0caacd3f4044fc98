// Handlers of several families use this to read a record and to write an answer.
#pragma once

#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "bsp_pon.h"
#include "handlers/handler.h"
#include "model/base/text.h"
#include "model/change/plan.h"

namespace ponsim
{

inline Outcome to_outcome(Plan &&plan)
{
    return {plan.status, std::move(plan.change)};
}

inline Mac mac_of(const bsp_pon_msg &record)
{
    return std::to_array(record.onu_mac);
}

OnuIds id_set(const Request &request, layout::At<layout::IdSet> at);

// An Answer is a record. What is not put into it stays as in the record from which it is made.
class Answer
{
public:
    template <class Record>
    explicit Answer(const Record &record) : bytes(reinterpret_cast<const char *>(&record), sizeof record)
    {
    }

    // Throws std::logic_error when the value does not fit its field.
    template <class Field, class Value>
    void put(layout::At<Field> at, const Value &value)
    {
        static_cast<void>(bytes.at(at.end() - 1));
        layout::store(bytes.data(), at, value);
    }
    void put(layout::At<layout::IdSet> at, const OnuIds &ids);

    Outcome outcome() const { return {BSP_OK, {}, {}, bytes}; }

private:
    std::string bytes;
};

// Returns the answer that carries a text of at most 1023 characters.
std::string text_answer(uint32_t command, std::string_view text);

// Returns what answers of the platform and debug channels copy from their request.
bsp_plat_msg head_of(const bsp_plat_msg &request);

// A Selection is what a record selects of a list. Port 0 selects all ports. An id or a MAC address that is not zero
// narrows it.
struct Selection {
    uint32_t status; // whether port and id are possible
    std::span<const PonPort> ports;
    uint32_t id;
    Mac mac;
    bool all_ports = false;

    bool narrowed() const { return id != 0 || !is_zero(mac); }
};
Selection selection_of(const Olt &olt, const Request &request);
// As above, but selects by the port alone.
Selection port_selection_of(const Olt &olt, const Request &request);

} // namespace ponsim
