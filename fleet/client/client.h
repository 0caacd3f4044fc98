// A Client sends requests to the OLTs of a fleet, as many at once as it likes, and knows which OLTs there are. It has
// no thread: whoever has it turns it, and functions that are given to it are called from there.
//
//     Client client(settings);
//     client.connect(5000);
//     client.send("north-3", catalogue::Class::read, request, 5000, [](const Reply &reply) { ... });
//     while (client.pending()) client.turn(100);
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "call/codec/errors.h"
#include "catalogue.h"
#include "fleet/client/settings.h"
#include "fleet/selection/inventory.h"

namespace fleet
{

// The broker, or whoever answers for an OLT, is not reached; nothing was done.
class Unreachable : public call::Error
{
    using Error::Error;
};

// A Reply says what came of a request.
struct Reply {
    enum class Kind : uint8_t {
        answered,    // `text` is the answer, a line of message.h
        silent,      // no answer came in its time: whether the request was executed is unknown; `text` says so
        unreachable, // nobody answers for the OLT; nothing was done; `text` says why
        refused,     // the broker does not permit it; nothing was done; `text` says why
    };
    Kind kind = Kind::silent;
    std::string text;
};

class Client
{
public:
    using Done = std::function<void(const Reply &)>;
    using Heard = std::function<void(const std::string &olt, std::string_view text)>;

    explicit Client(const Settings &settings);
    ~Client();
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    // Connects, and waits until all OLTs that the broker knows are known. Throws Unreachable, which says why.
    void connect(uint32_t milliseconds);
    // Connects, for requests alone: no OLTs are known. Throws Unreachable.
    void open(uint32_t milliseconds);
    // Lets the client learn which OLTs there are, from when it is connected. Does not wait.
    void begin_to_learn();
    // Returns whether all are known.
    bool has_learnt() const;

    // Returns the OLTs that are known, in the order of people, and the one of this name.
    std::vector<Olt> olts() const;
    std::optional<Olt> find(const std::string &olt) const;
    // Returns what was wrong with what others published, for people, and forgets it. Only so much is kept.
    std::vector<std::string> take_problems();

    // Sends a request, a line of message.h, as one of this class. `done` is called once, from turn(), and throws
    // nothing. A request waits while there is no connection, and while 1,000 others are under way; its time counts from
    // when it is sent. Throws a call::UsageError when it is no name of an OLT.
    void send(const std::string &olt, catalogue::Class impact, std::string request, uint32_t milliseconds, Done done);
    // Returns how many requests have no reply yet.
    size_t pending() const;

    // From now on these are called from turn() with each line that OLTs publish of what happens, and of who asked what.
    void hear_events(Heard heard);
    void hear_audit(Heard heard);
    // As above, with the name of each OLT of which something is different: its inventory, or whether it is online.
    void hear_changes(std::function<void(const std::string &olt)> heard);

    // Waits so long at most for something to happen, and does what is due. A connection that is lost is made again.
    void turn(uint32_t milliseconds);
    // Returns what is readable when turn() has something to do, for poll(). A turn is needed each second, too, and when
    // the time of a request is over.
    int descriptor() const;
    // Lets a turn that is waiting return. Any thread may call this.
    void wake() const;

private:
    class Core;
    std::unique_ptr<Core> core;
};

} // namespace fleet
