#include "reach/fleet.h"

#include <filesystem>

#include "output/exit_code.h"
#include "output/report.h"
#include "toml_file/section.h"

namespace ponctl
{

fleet::Settings fleet_settings(const std::string &given)
{
    const std::string file = fleet::settings_file(given);
    if (file.empty()) throw UsageError("--fleet: missing; there is no HOME with a fleet.toml of yours");
    if (!std::filesystem::exists(file))
        throw UsageError(file + " is not there; it says how the fleet is reached, as in\n  [broker]\n"
                                "  host = \"broker.example.net\"\n  ca = \"ca.pem\"\n"
                                "  certificate = \"me.pem\"\n  key = \"me.key\"");
    try {
        return fleet::read_settings(file);
    } catch (const toml_file::Error &error) {
        throw UsageError(error.what());
    }
}

void connect(fleet::Client &client)
{
    constexpr uint32_t connecting = 10'000; // milliseconds
    try {
        client.connect(connecting);
    } catch (const fleet::Unreachable &error) {
        throw NotReached(error.what());
    }
    for (const std::string &problem : client.take_problems())
        complain(problem);
}

} // namespace ponctl
