// A request on its way to what answers it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "access/gate.h"
#include "http/encoding.h"
#include "http/message.h"
#include "web/olt_state.h"

namespace front
{

class EventHub;
class WriteLog;
class Confirmations;
class PendingConfigurations;
class Pages;

// What answers are made with. All of it outlives the requests.
struct Services {
    const KnownOlts &known;
    std::shared_ptr<Gate> gate;
    EventHub &hub;
    std::shared_ptr<WriteLog> log;
    Confirmations &confirmations;
    PendingConfigurations &pending;
    Pages &pages;
    std::string version; // of the program
};

struct Context {
    Services services;
    HttpRequest request;
    Identity identity;
    std::map<std::string, std::string> places; // the parts of the path that vary, by their names
    OltDoor olt;                               // that the path names

    const std::string &place(const std::string &name) const { return places.at(name); }
    const OltState &state() const { return *olt.state; }
    const Snapshot &snapshot() const { return *olt.state->snapshot; }

    // These read what stands behind the path. They throw a Refusal when it is wrong.
    std::string query(const std::string &name) const;
    std::optional<uint64_t> number(const std::string &name, uint64_t greatest) const;
    // Reads a part of the path that is a number; another text is a path that there is not.
    uint32_t place_number(const std::string &name) const;
};

HttpResponse json_response(std::string body);
// Throws a Refusal with status 404.
[[noreturn]] void not_found(const std::string &what);
[[noreturn]] void bad_request(const std::string &what);
// Refuses when the table was not read yet.
void expect_read(const OltState &state, Table table);

// Returns the answer that has this version. A client that has it already is told so, and what is made for one is kept
// for the others.
HttpResponse versioned(const Context &context, const std::string &version, const std::function<std::string()> &make);
// As above, of what has this name.
HttpResponse versioned(Pages &pages, const HttpRequest &request, const std::string &name, const std::string &version,
                       const std::function<std::string()> &make);

// Pages are answers that were made, each with its version. The last ones are kept.
class Pages
{
public:
    Pages();
    std::shared_ptr<const PackableText> page(const std::string &name, const std::string &version,
                                             const std::function<std::string()> &make);
    // Returns an entity tag that no other run of the program gives.
    std::string tag_of(const std::string &version) const;

private:
    static constexpr size_t most = 128;
    struct Page {
        std::string version;
        std::shared_ptr<const PackableText> text;
        uint64_t used = 0;
    };

    std::mutex guard;
    uint64_t uses = 0;
    std::map<std::string, Page> pages;
    const std::string run;
};

} // namespace front
