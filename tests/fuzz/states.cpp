// State files. What is opened has to work.
#include <algorithm>
#include <string>

#include "input.h"
#include "olt.h"
#include "store/store.h"
#include "target.h"

namespace
{

using namespace ponsim;

std::string make_good_file()
{
    Store store({}, false);
    Simulator simulator(store, {.seed = fuzz::settings.seed,
                                .ports = fuzz::settings.ports,
                                .arrivals = fuzz::settings.arrivals,
                                .silent = fuzz::settings.silent});
    for (const Arrival &arrival : simulator.olt().port(1)->arrivals)
        simulator.change(fuzz::bind(simulator.olt(), arrival));
    simulator.advance(120 * ms_per_second);
    simulator.keep_time();
    return store.image().bytes;
}

// Changes bytes of a file that can be opened. Each change is a position of three bytes, a number of bytes, and these.
std::string changed_file(fuzz::Input changes)
{
    static const std::string good = make_good_file();
    std::string file = good;
    while (!changes.empty()) {
        const auto low = changes.take<uint16_t>();
        const size_t at = (low + 0x10000u * changes.take<uint8_t>()) % file.size();
        const std::span<const uint8_t> bytes = changes.take_bytes(changes.take<uint8_t>());
        std::ranges::copy(bytes.first(std::min(bytes.size(), file.size() - at)),
                          file.begin() + static_cast<ptrdiff_t>(at));
    }
    return file;
}

} // namespace

// An input is a byte that says whether it is a file itself or what changes in a file, and that.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::Input input(data, size);
    const bool whole = input.take<uint8_t>() == 0;
    std::string file;
    if (whole) {
        const std::span<const uint8_t> bytes = input.take_bytes(size);
        file.assign(bytes.begin(), bytes.end());
    } else {
        file = changed_file(input);
    }
    try {
        const Store store(StoreImage{std::move(file)});
        const std::optional<Settings> settings = store.settings();
        if (!settings) return 0;
        Olt olt(*settings);
        olt.apply(store.load());
        fuzz::catch_up(olt);
        fuzz::pass(olt, 3600 * ms_per_second);
    } catch (const StoreError &) {
        return 0;
    }
    return 0;
}
