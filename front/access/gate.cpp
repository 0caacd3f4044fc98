#include "access/gate.h"

#include <algorithm>

#include "access/secrets.h"
#include "http/address.h"
#include "http/refusal.h"
#include "text/hex.h"
#include "text/words.h"

namespace front
{
namespace
{

constexpr int64_t attempts_span = 5 * 60 * 1000;
constexpr uint32_t most_of_address = 20, most_of_name = 10; // the latter from one address
constexpr std::string_view bearer = "Bearer ";

// Returns the name of a host without its port.
std::string without_port(const std::string &host)
{
    if (host.starts_with('[')) return host.substr(1, host.find(']') == host.npos ? host.npos : host.find(']') - 1);
    return host.substr(0, host.find(':'));
}

[[noreturn]] void refuse_forged(const std::string &message)
{
    throw Refusal(403, "forged", message);
}

[[noreturn]] void refuse_attempts(uint32_t seconds)
{
    Refusal refusal(429, "too_many", "too many attempts to log in; try again in " + std::to_string(seconds) + " s");
    refusal.headers.emplace_back("Retry-After", std::to_string(seconds));
    throw refusal;
}

// Whoever has one address of IPv6 has all of its network.
std::string network_of(const std::string &peer)
{
    const SocketAddress address = address_of(peer.empty() ? "0.0.0.0" : peer, 0);
    if (address.storage.ss_family != AF_INET6) return peer;
    constexpr size_t offset = 8, size = 8; // of the network in a socket address
    const auto *const bytes = reinterpret_cast<const uint8_t *>(&address.storage) + offset;
    return text::to_hex({bytes, size});
}

// Names what is counted: one name tried from one address, so that nobody keeps others out by trying their names.
std::string attempt_on(const std::string &network, const std::string &name)
{
    return network + " " + (is_user_name(name) ? name : "");
}

} // namespace

Gate::Gate(GateSettings gate_settings, std::shared_ptr<Users> known, SteadyClock steady)
    : settings(std::move(gate_settings)),
      users(std::move(known)),
      clock(steady),
      sessions(std::move(steady)),
      of_addresses(most_of_address, attempts_span),
      of_names(most_of_name, attempts_span)
{
}

void Gate::check_host(const HttpRequest &request) const
{
    const std::string host = text::lower_case(without_port(request.header("host")));
    if (is_address(host) || host == "localhost" || std::ranges::find(settings.hosts, host) != settings.hosts.end())
        return;
    throw Refusal(421, "host",
                  "this server is not known as '" + host + "'; name it in [http] hosts of the configuration");
}

Identity Gate::identity_of(const HttpRequest &request)
{
    if (!has_users()) return {.role = Role::read};
    const std::string &authorization = request.header("authorization");
    if (authorization.starts_with(bearer)) {
        const std::optional<User> user = users->with_token(authorization.substr(bearer.size()));
        return user ? Identity{.user = user->name, .role = user->role} : Identity{};
    }
    const std::string cookie = cookie_of(request);
    const std::optional<Session> session = cookie.empty() ? std::nullopt : sessions.find(cookie);
    const std::optional<User> user = session ? users->named(session->user) : std::nullopt;
    if (!user || user->password != session->password) return {};
    return {.user = user->name, .role = user->role, .token = session->token};
}

void Gate::check_origin(const HttpRequest &request)
{
    const std::string &origin = request.header("origin"), &site = request.header("sec-fetch-site");
    if (!site.empty() && site != "same-origin" && site != "none")
        refuse_forged("a page of another site asked for this");
    if (origin.empty()) return;
    const size_t start = origin.find("://");
    if (start == origin.npos || text::lower_case(origin.substr(start + 3)) != text::lower_case(request.header("host")))
        refuse_forged("a page of '" + origin + "' asked for this");
}

void Gate::check_own(const HttpRequest &request, const Identity &identity)
{
    check_origin(request);
    if (!identity.token.empty() && !is_same_secret(request.header("x-csrf-token"), identity.token))
        refuse_forged("the header X-CSRF-Token is missing, or not the session's token");
}

void Gate::begin_attempt(const HttpRequest &request, const std::string &name)
{
    const std::string network = network_of(request.peer);
    const uint32_t wait =
        std::max(of_addresses.begin(network, clock()), of_names.begin(attempt_on(network, name), clock()));
    if (wait > 0) refuse_attempts(wait);
}

LogIn Gate::log_in(const HttpRequest &request, const std::string &name, const std::string &password)
{
    const std::optional<User> user = users->named(name);
    const bool known = user && !user->password.empty();
    if (!known) pretend_to_check(password);
    if (!known || !is_password(user->password, password))
        throw Refusal(401, "login_needed", "the name or the password is wrong");
    const std::string network = network_of(request.peer);
    of_addresses.forgive(network);
    of_names.forgive(attempt_on(network, name));
    const std::string session = sessions.begin(*user);
    const std::optional<Session> begun = sessions.find(session);
    return {.identity = {.user = user->name, .role = user->role, .token = begun ? begun->token : ""},
            .cookie = set_cookie(session, Sessions::longest / 1000)};
}

std::string Gate::log_out(const HttpRequest &request)
{
    sessions.end(cookie_of(request));
    return set_cookie("", 0);
}

// A browser takes a cookie with this beginning only from TLS, and from no other host of the same domain.
std::string Gate::cookie_name() const
{
    return settings.encrypted ? "__Host-ponfront" : "ponfront";
}

std::string Gate::cookie_of(const HttpRequest &request) const
{
    const std::string start = cookie_name() + "=";
    for (std::string &pair : text::split(request.header("cookie"), ';')) {
        pair.erase(0, pair.find_first_not_of(' '));
        if (pair.starts_with(start)) return pair.substr(start.size());
    }
    return {};
}

std::string Gate::set_cookie(const std::string &value, int64_t seconds) const
{
    return cookie_name() + "=" + value + "; Path=/; Max-Age=" + std::to_string(seconds) +
           "; HttpOnly; SameSite=Strict" + (settings.encrypted ? "; Secure" : "");
}

std::vector<std::pair<std::string, std::string>> browser_rules(bool encrypted)
{
    std::vector<std::pair<std::string, std::string>> rules{
        {"Content-Security-Policy", "default-src 'self'; img-src 'self' data:; object-src 'none'; base-uri 'none'; "
                                    "form-action 'self'; frame-ancestors 'none'"},
        {"X-Frame-Options", "DENY"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cross-Origin-Resource-Policy", "same-origin"}};
    if (encrypted) rules.emplace_back("Strict-Transport-Security", "max-age=31536000");
    return rules;
}

} // namespace front
