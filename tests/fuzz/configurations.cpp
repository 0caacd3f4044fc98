// Texts that are loaded as the configuration of an OLT. What is accepted has to work.
#include <algorithm>
#include <string>

#include "olt.h"
#include "store/configuration.h"
#include "target.h"

namespace
{

using namespace ponsim;

// Puts the first and the last line of a configuration around the lines of its rows. Few changed texts have the right
// version and number of rows by chance.
std::string completed(const std::string &rows)
{
    static const std::string empty = write_configuration(fuzz::settings, {});
    const std::string header = empty.substr(0, empty.find('\n') + 1);
    return header + rows + "{\"rows\":" + std::to_string(std::ranges::count(rows, '\n')) + "}\n";
}

} // namespace

// An input is the lines of the rows, or a whole text.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::string text(reinterpret_cast<const char *>(data), size);
    if (!text.starts_with("{\"ponsim_configuration\"")) text = completed(text);
    try {
        const Change configuration = read_configuration(text, fuzz::settings);
        Olt olt(fuzz::settings);
        olt.apply(configuration);
        fuzz::catch_up(olt);
        fuzz::pass(olt, 3600 * ms_per_second);
    } catch (const ConfigurationError &) {
        return 0;
    }
    return 0;
}
