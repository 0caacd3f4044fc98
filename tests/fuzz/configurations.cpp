// Texts that are loaded as the configuration of an OLT. What is accepted has to work.
#include "olt.h"
#include "store/configuration.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace ponsim;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    try {
        const Change configuration = read_configuration(text, fuzz::settings);
        Olt olt(fuzz::settings);
        olt.apply(configuration);
        fuzz::pass(olt, 3600 * ms_per_second);
    } catch (const ConfigurationError &) {
        return 0;
    }
    return 0;
}
