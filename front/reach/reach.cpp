#include "reach/reach.h"

#include <ctime>
#include <mutex>
#include <optional>

#include "board/service.h"
#include "fleet/carrier/carrier.h"
#include "fleet/client/shared_client.h"
#include "fleet/rollout/run_file.h"

namespace front
{

class Fleet::Door
{
public:
    explicit Door(const std::string &file) : settings(fleet::read_settings(fleet::settings_file(file))) {}

    // Returns the connection, which is begun when it is first needed.
    fleet::SharedClient &client()
    {
        std::call_once(begun, [this] { connection.emplace(settings); });
        return *connection;
    }

    const fleet::Settings settings;

private:
    std::once_flag begun;
    std::optional<fleet::SharedClient> connection;
};

Fleet::Fleet(const std::string &file) : door(std::make_shared<Door>(file)) {}

Fleet::~Fleet() = default;

namespace
{

// The link of a thread to an OLT. That nobody answers is said as an answer: a thread that collects goes on.
class FleetLink : public fleet::Link
{
public:
    FleetLink(std::shared_ptr<Fleet::Door> to, std::string of) : door(std::move(to)), olt(std::move(of)) {}

    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override
    {
        try {
            return fleet::SharedLink(door->client(), olt).exchange(request, impact, milliseconds);
        } catch (const fleet::Unreachable &error) {
            return fleet::answer_of(fleet::Failure{fleet::Problem::unavailable, error.what()});
        } catch (const call::Refused &error) {
            return fleet::answer_of(fleet::Failure{fleet::Problem::refused, error.what()});
        }
    }

private:
    const std::shared_ptr<Fleet::Door> door;
    const std::string olt;
};

// What a thread reaches an OLT of a fleet with. Each thread has ids of its own for what it asks.
struct Entered {
    explicit Entered(const Reach &olt)
        : link(olt.fleet->door, olt.olt),
          carrier(link, {.run = fleet::new_run_id(static_cast<uint64_t>(std::time(nullptr))), .olt = olt.olt}),
          carriage(carrier)
    {
    }

    FleetLink link;
    fleet::OltCarrier carrier;
    call::Carriage carriage;
};

thread_local std::optional<Entered> entered;

} // namespace

bool Reach::operator==(const Reach &other) const
{
    if (folder != other.folder || olt != other.olt || !fleet != !other.fleet) return false;
    return !fleet || fleet->door->settings == other.fleet->door->settings;
}

void reach(const Reach &olt)
{
    entered.reset();
    board_ipc_use_thread_directory(olt.folder.empty() ? nullptr : olt.folder.c_str());
    if (olt.fleet) entered.emplace(olt);
}

} // namespace front
