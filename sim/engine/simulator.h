// The simulated PON service: one OLT, what it keeps, and the commands that act on it. Any transport can stand before
// it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/faults.h"
#include "engine/message.h"
#include "handlers/handler.h"
#include "model/olt/olt.h"
#include "scenario/scenario.h"
#include "store/store.h"

namespace ponsim
{

// What is asked of the OLT. What is left open is as the store has it, or else as in Settings.
struct WantedSettings {
    std::optional<uint64_t> seed;
    std::optional<uint32_t> ports;
    std::optional<uint32_t> arrivals;
    std::optional<uint32_t> silent;
};

class Simulator
{
public:
    // The OLT that the store belongs to, in the state that it keeps. An empty store becomes that of the OLT wanted,
    // which begins with what its scenario provisions; null: the store's scenario, or none.
    // Throws StoreError: the store does not work, or belongs to another OLT than the one wanted.
    Simulator(Store &store, const WantedSettings &wanted, std::shared_ptr<const OltScenario> scenario = {});

    const Settings &settings() const { return olt_settings; }
    const Olt &olt() const { return model; }

    // Lets model time pass, and happen what happens by then. Throws StoreError: what happened until then is kept.
    void advance(ModelTime to);
    // Changes the OLT from outside. Throws StoreError: then nothing is changed.
    void change(Change change);
    // Keeps the time, so that the OLT goes on from here when it is started anew. Throws StoreError.
    void keep_time();

    // Answers every message. What it changes is stored first: a status of BSP_OK means that it is kept.
    Reply handle(const Message &message);

    // What is to go wrong on the wire; of the test rig, not of the OLT.
    Faults &faults() { return wire_faults; }

    // Lines for the service's log, of what happened since it was asked last.
    std::vector<std::string> take_log() { return std::exchange(log, {}); }

private:
    void note(const Change &change);
    void happen(const Event &event);

    // What a request wants of the configuration; completes its outcome. Throws StoreError.
    void carry_out(std::monostate, Outcome &) {}
    void carry_out(const WriteConfiguration &wanted, Outcome &outcome);
    void carry_out(const ReceiveConfiguration &part, Outcome &outcome);
    void carry_out(const LoadConfiguration &, Outcome &outcome);

    Store &kept;
    std::shared_ptr<const OltScenario> scenario; // null: none
    Settings olt_settings;
    Olt model;
    Faults wire_faults;
    std::vector<std::string> log;
    std::string received;   // of a configuration to load
    uint32_t announced = 0; // its size in bytes
};

} // namespace ponsim
