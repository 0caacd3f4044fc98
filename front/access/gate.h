// Who a request is from, what they may do, and whether the request is their own: the gate that every request passes.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/attempts.h"
#include "access/sessions.h"
#include "access/users.h"
#include "http/message.h"

namespace front
{

struct GateSettings {
    std::vector<std::string> hosts = {}; // names by which browsers may know the server, beside addresses and localhost
    bool encrypted = false;              // clients come by TLS, of this server or of a proxy before it
};

struct Identity {
    std::optional<std::string> user = {}; // none: nobody, or anybody where there are no users
    std::optional<Role> role = {};        // none: may do nothing
    std::string token = {};               // of the session, against forged requests; empty without one

    bool may(Role needed) const { return role && *role >= needed; }
};

struct LogIn {
    Identity identity;
    std::string cookie; // the header that gives it to the browser
};

// Any thread may call all functions. They throw a Refusal.
class Gate
{
public:
    Gate(GateSettings gate_settings, std::shared_ptr<Users> known, SteadyClock steady);

    // Refuses a request for another host: a page of another site whose name was made to mean this server.
    void check_host(const HttpRequest &request) const;
    // Returns whom the request is from.
    Identity identity_of(const HttpRequest &request);
    // Refuses a change that another site had the browser ask for.
    static void check_own(const HttpRequest &request, const Identity &identity);
    // As above, of a request to log in, which belongs to no session yet.
    static void check_origin(const HttpRequest &request);
    // Counts an attempt to log in, and refuses it when there were too many.
    void begin_attempt(const HttpRequest &request, const std::string &name);
    // Takes a tenth of a second, and 64 MiB, whoever asks.
    LogIn log_in(const HttpRequest &request, const std::string &name, const std::string &password);
    // Returns the header that takes the cookie back.
    std::string log_out(const HttpRequest &request);

    bool has_users() const { return users->is_kept(); }

private:
    std::string cookie_name() const;
    std::string cookie_of(const HttpRequest &request) const;
    std::string set_cookie(const std::string &value, int64_t seconds) const;

    const GateSettings settings;
    const std::shared_ptr<Users> users;
    const SteadyClock clock;
    Sessions sessions;
    Attempts of_addresses, of_names; // the latter by address and name
};

// Returns the headers that keep a browser from loading and sending anything elsewhere.
std::vector<std::pair<std::string, std::string>> browser_rules(bool encrypted);

} // namespace front
