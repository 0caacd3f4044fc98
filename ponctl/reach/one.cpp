#include "reach/one.h"

#include "call/record_call.h"
#include "fleet/carrier/carrier.h"
#include "fleet/client/mqtt_link.h"
#include "fleet/client/process_link.h"
#include "fleet/rollout/run_file.h"
#include "fleet/selection/selector.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "reach/fleet.h"

namespace ponctl
{
namespace
{

constexpr std::string_view over_ssh = "ssh://";
bool is_over_ssh(const std::string &olt)
{
    return olt.starts_with(over_ssh);
}

// Reaches the OLT over the broker.
class Brokered : public fleet::Link
{
public:
    explicit Brokered(const FleetOptions &options) : client(fleet_settings(options.settings)), link(client, options.olt)
    {
        connect(client);
        if (!client.find(options.olt))
            throw UsageError("--olt: the fleet has no OLT '" + options.olt + "'; `ponctl fleet list` shows them");
    }
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override
    {
        return link.exchange(request, impact, milliseconds);
    }

private:
    fleet::Client client;
    fleet::MqttLink link;
};

std::unique_ptr<fleet::Link> link_to(const FleetOptions &options)
{
    if (!is_over_ssh(options.olt)) return std::make_unique<Brokered>(options);
    const std::string host = options.olt.substr(over_ssh.size());
    if (host.empty() || host.starts_with('-')) throw UsageError("--olt: ssh:// needs a host, as in ssh://olt-3");
    constexpr uint32_t connecting = 15'000; // milliseconds
    try {
        return std::make_unique<fleet::ProcessLink>(fleet::ssh_words(host), connecting);
    } catch (const fleet::Unreachable &error) {
        throw NotReached(error.what());
    }
}

} // namespace

class OneOlt::Reached
{
public:
    Reached(const FleetOptions &options, const FleetRequests &requests)
        : link(link_to(options)),
          carrier(*link, {.run = fleet::new_run_id(static_cast<uint64_t>(time(nullptr))),
                          .olt = options.olt,
                          .deadline = requests.timeout}),
          carriage(carrier)
    {
        name_asked_olt(options.olt);
    }
    // The command has said that an exchange failed, and not why nobody was reached.
    ~Reached()
    {
        name_asked_olt({});
        if (!carrier.reason().empty()) complain(carrier.reason());
    }
    Reached(const Reached &) = delete;
    Reached &operator=(const Reached &) = delete;

private:
    const std::unique_ptr<fleet::Link> link;
    fleet::OltCarrier carrier;
    call::Carriage carriage;
};

bool is_one_olt(const FleetOptions &options)
{
    return is_over_ssh(options.olt) || fleet::is_single_name(options.olt);
}

OneOlt::OneOlt(const FleetOptions &options, const FleetRequests &requests)
    : reached(std::make_unique<Reached>(options, requests))
{
}

OneOlt::~OneOlt() = default;

} // namespace ponctl
