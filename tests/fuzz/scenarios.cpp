// Texts of scenarios.
#include "scenario/scenario.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    // Another file would be read from the disk.
    if (text.find("include") != std::string_view::npos) return 0;
    try {
        ponsim::read_scenario(text, "fuzz.toml");
    } catch (const ponsim::ScenarioError &) {
        return 0;
    }
    return 0;
}
