#include "daemon/web_door.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "collector/clock.h"
#include "http/address.h"

namespace front
{
namespace
{

bool is_encrypted(const ListenSettings &where)
{
    return where.behind_tls || !where.certificate.empty();
}

std::string contents_of(const std::string &file)
{
    if (file.empty()) return {};
    std::ifstream stream(file);
    std::string text(std::istreambuf_iterator<char>(stream), {});
    if (!stream || text.empty()) throw std::runtime_error(file + ": cannot be read");
    return text;
}

HttpSettings settings_of(const ListenSettings &where)
{
    HttpSettings settings;
    settings.address = where.address;
    settings.port = where.port;
    settings.certificate = contents_of(where.certificate);
    settings.key = contents_of(where.key);
    return settings;
}

// Returns the services with a gate.
Services guarded(const ListenSettings &where, Services services)
{
    const auto users = std::make_shared<Users>(where.users);
    if (!is_of_this_machine(where.address) && users->count() == 0)
        throw std::runtime_error("listening on " + where.address +
                                 " needs users, as other machines reach it; name a file in [http] users, and add the "
                                 "first one with 'ponfront user add'");
    services.gate = std::make_shared<Gate>(GateSettings{.hosts = where.hosts, .encrypted = is_encrypted(where)}, users,
                                           steady_time_now);
    return services;
}

} // namespace

WebDoor::WebDoor(const ListenSettings &where, Services services, Console::Metrics metrics,
                 std::span<const PageFile> page)
    : console({.encrypted = is_encrypted(where), .metrics_need_user = where.metrics_need_user},
              guarded(where, std::move(services)), std::move(metrics), page),
      server(settings_of(where), console)
{
}

} // namespace front
