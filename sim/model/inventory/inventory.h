// ONUs are plugged in at PON ports and taken away while the OLT runs, and users plug devices in at their UNI ports.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// This error says why something cannot be plugged in.
class InventoryError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// A NewOnu says what is known of an ONU that is plugged in. What is left open follows from the seed.
struct NewOnu {
    std::string name = {};
    std::string branch = {};             // that it is connected to
    std::optional<uint32_t> length = {}; // m, of its own fibre
    std::optional<Mac> mac = {};
    std::string loid = {};
    std::optional<std::string> password = {};
    std::string kind = {};
    std::string service = {};
    std::optional<uint32_t> id = {}; // that it is bound to by its service
    std::optional<bool> silent = {};
    std::optional<bool> in_use = {};
};

// An Inventory plans one or more of these steps together. A step begins with what the steps before it have left. Each
// throws InventoryError when it cannot be; then the whole plan is to be given up.
class Inventory
{
public:
    explicit Inventory(const Olt &model) : olt(model) {}

    // An ONU is plugged in and switched on. When it has a service, that is provisioned as in a new OLT.
    void arrive(uint32_t pon_port, const NewOnu &onu);
    // An ONU is taken away. It stays until its link has failed for want of light. What is configured for it stays.
    void leave(uint32_t pon_port, const Mac &mac);
    // An ONU is taken away, and plugged in and switched on at another port, or elsewhere at this one. It has there what
    // it had here. `place` says name, branch and length of the fibre there.
    void move(uint32_t pon_port, const Mac &mac, uint32_t to, const NewOnu &place);
    // An ONU is replaced by another one at the same fibre. `other` says address, kind, LOID and password of that one.
    void swap(uint32_t pon_port, const Mac &mac, const NewOnu &other);

    const Change &change() const { return planned; }

private:
    // A Draft is a port as it will be.
    struct Draft {
        std::vector<Branch> branches;
        std::vector<Arrival> arrivals;    // in no order
        OnuIds ids;                       // that are bound
        std::set<std::string> loids = {}; // that are authenticated
        uint32_t promised = 0;            // kbit/s upstream, beyond what is granted now
    };
    // A Fibre is an ONU's own fibre.
    struct Fibre {
        uint32_t branch;
        uint32_t number;
        uint32_t length;
    };

    Draft &draft_of(uint32_t pon_port);
    const Arrival &arrival_of(uint32_t pon_port, const Mac &mac);
    bool is_known(const Mac &mac);
    Arrival newcomer(uint32_t pon_port);
    void check_free(uint32_t pon_port, const Mac &mac);
    std::string name_for(uint32_t pon_port, const std::string &wanted);
    uint32_t branch_for(uint32_t pon_port, const NewOnu &onu, const Mac &mac);
    Fibre fibre_for(uint32_t pon_port, const NewOnu &onu, const Arrival &arrival);
    void unplug(uint32_t pon_port, const Arrival &arrival, Plugged state);
    void plug_in(uint32_t pon_port, const Mac &mac, const PluggedOnu &onu);
    void start(const PonPort &port, const Mac &mac, const OnuRecord &device);
    void provision(uint32_t pon_port, const Mac &mac, const PluggedOnu &onu, const ServiceTerms &service,
                   std::optional<uint32_t> id);
    void carry_over(const PonPort &from, const PonPort &to, const Mac &mac);

    const Olt &olt;
    std::map<uint32_t, Draft> drafts;
    Change planned;
};

// Returns whether the branch is the fibre of an ONU, or was one. No other fibre can begin at its end.
bool is_onus_own(const PonPort &port, uint32_t branch);

// Plugs a device in at a UNI port of an ONU, or out. The ONU must have arrived at the port and have the UNI port.
Change plug_device(const Olt &olt, const UniKey &key, const std::optional<LinkMode> &device);

} // namespace ponsim
