// Lines of ponsim ctl, each followed by some time of the OLT.
#include <string_view>

#include "control/control.h"
#include "olt.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace ponsim;
    constexpr uint32_t most = 16; // lines
    std::string_view text(reinterpret_cast<const char *>(data), size);
    Olt olt = fuzz::registered_olt();
    for (uint32_t count = 0; count < most && !text.empty(); ++count) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        try {
            fuzz::make(olt, plan_control(olt, line).change);
        } catch (const ControlError &) {
            continue;
        }
        fuzz::pass(olt, 2 * ms_per_second);
    }
    return 0;
}
