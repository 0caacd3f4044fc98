// This is the simulated PON service: one OLT, what it keeps, and the commands that act on it. Any transport can be put
// in front of it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engine/faults.h"
#include "engine/kept_replies.h"
#include "engine/message.h"
#include "engine/processes.h"
#include "engine/uploads.h"
#include "handlers/handler.h"
#include "model/olt/olt.h"
#include "scenario/agenda.h"
#include "scenario/scenario.h"
#include "store/store.h"
#include "views/kept_rows.h"

namespace ponsim
{

// These settings are asked of the OLT. A setting that is not given is that of the store, or else that of Settings.
struct WantedSettings {
    std::optional<uint64_t> seed;
    std::optional<uint32_t> ports;
    std::optional<uint32_t> arrivals;
    std::optional<uint32_t> silent;
};

// A Loading is a configuration that was read, and the OLT that it makes.
struct Loading {
    uint32_t status; // BSP_OK, or why it cannot be loaded
    std::string problem = {};
    Change configuration = {};
    std::optional<Olt> olt = {};
};

// Reads a configuration for an OLT with these settings. That takes long, and needs no turn with the simulator.
Loading read_loading(const Uploads::Taken &taken, const Settings &settings);

// Happenings come in slices of this number. Between two slices others may have a turn with the simulator. What happens
// in so many slices in a row is kept together. The more there are, the fewer rows are written, because of all that
// happens to a record only the last is kept.
inline constexpr uint32_t slice = 16;
inline constexpr uint32_t slices_together = 1024;

class Simulator
{
public:
    // Takes the OLT to which the store belongs, in the state that the store keeps. An empty store is given to the
    // wanted OLT, which begins with what its scenario provisions. A null scenario means that of the store, or none.
    // Throws StoreError when the store does not work, or belongs to another OLT than the wanted one.
    Simulator(Store &store, const WantedSettings &wanted, std::shared_ptr<const OltScenario> scenario = {});
    ~Simulator();

    const Settings &settings() const { return olt_settings; }
    const Olt &olt() const { return model; }

    // Returns the time of what happens next by itself: now or earlier when it is due, and no time while nothing is
    // under way.
    std::optional<ModelTime> next_due() const;
    // Lets model time pass, with everything that happens by then, and keeps what has happened. Throws StoreError. Then
    // what has happened is kept together with the next change.
    void advance(ModelTime to);
    // As above, but lets at most so many things happen. Returns whether that was enough to get there. When it was not,
    // time has passed up to the last of them.
    bool advance(ModelTime to, uint32_t happenings);
    // As above, but does not keep what has happened. That is to be kept before anybody else looks at the OLT.
    bool pass(ModelTime to, uint32_t happenings);
    void keep_happenings();
    // Changes the OLT from outside. Throws StoreError. Then nothing is changed.
    void change(Change change);
    // Keeps the time, so that the OLT goes on from here when it is started again. Throws StoreError.
    void keep_time();

    // Answers a message that only reads, as handle() does at the time `now`, which is not before olt().now(). Returns
    // null when that needs what only one thread at a time may do: something is due or goes wrong, the OLT is to be
    // shown as it is at a later time than olt().now(), or the message does more than read. Several threads may call it
    // at the same time.
    SharedReply look(const Message &message, ModelTime now);

    // Answers every message. The change is stored first: a status of BSP_OK means that it is kept. `loading` is what
    // read_loading() made of what take_upload() returned for this message. When it is null, that is done here.
    Reply handle(const Message &message, Loading *loading = nullptr);

    // Returns the upload that the message asks to load, if it does. Another message cannot load it any more.
    std::optional<Uploads::Taken> take_upload(const Message &message);

    // Lets files of upgrade types be read from this folder. Before, none are read.
    void use_upgrade_folder(const std::string &folder);

    // Returns the faults on the wire. They belong to the simulation, not to the OLT.
    Faults &faults() { return wire_faults; }
    const Faults &faults() const { return wire_faults; }

    // Returns the events of the scenario that have not happened yet.
    std::span<const Event> upcoming() const { return agenda.upcoming(); }

    // Returns the scenario of the OLT, or null.
    const OltScenario *scenario_of_olt() const { return scenario.get(); }

    // Returns lines for the service's log about what happened since the last call.
    std::vector<std::string> take_log() { return std::exchange(log, {}); }

private:
    std::optional<Happening> find_due();
    void happen();
    // Begins again from what is kept, after there was no memory to make a change that may be kept already.
    void recover();
    Change change_of(const Event &event) const;
    // Adds to a change what follows from it: events, what is forgotten, and traffic.
    void complete(Change &change) const;
    // Makes a change that is kept, or will be.
    void apply(const Change &change);
    void note(const Change &change);

    // These do what a user's request wants with the configuration, and complete its outcome. They throw StoreError.
    void carry_out(std::monostate, uint32_t, Outcome &, Loading *) {}
    void carry_out(const WriteConfiguration &wanted, uint32_t user, Outcome &outcome, Loading *);
    void carry_out(const ReceiveConfiguration &part, uint32_t user, Outcome &outcome, Loading *);
    void carry_out(const LoadConfiguration &wanted, uint32_t user, Outcome &outcome, Loading *loading);

    Store &kept;
    std::shared_ptr<const OltScenario> scenario; // null: no scenario
    Agenda agenda;
    Settings olt_settings;
    Olt model;
    KeptReplies replies;
    KeptRows rows;
    Faults wire_faults;
    std::optional<Happening> due; // what happens next, which stays the same until something changes
    uint32_t at_once = 0;         // how often something has happened by itself at the present time
    bool damaged = false;         // a change was made in part, because there was no memory
    Kept::Merged happened;        // the changes of the last happenings, which are not kept yet
    std::vector<std::string> log;
    Uploads uploads;            // configurations that are to be loaded
    std::string upgrade_folder; // an absolute path; empty: none
};

} // namespace ponsim
