// State files. What is opened has to work.
#include <string>

#include "olt.h"
#include "store/store.h"
#include "target.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace ponsim;
    try {
        const Store store(StoreImage{std::string(reinterpret_cast<const char *>(data), size)});
        const std::optional<Settings> settings = store.settings();
        if (!settings) return 0;
        Olt olt(*settings);
        olt.apply(store.load());
        fuzz::pass(olt, 3600 * ms_per_second);
    } catch (const StoreError &) {
        return 0;
    }
    return 0;
}
