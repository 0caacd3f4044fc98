// In these tests memory ends: the n-th allocation of a request fails, for each n, wherever it is made. The request is
// refused, and the service goes on as if it had not been sent.
#include <cerrno>
#include <cstdlib>
#include <new>

#include "catalogue.h"
#include "store/configuration.h"
#include "support.h"
#include "text/sha256.h"

namespace
{

// So many allocations of this thread succeed before one fails; negative: none fails.
thread_local long left = -1;
// All that come after it fail, too.
thread_local bool for_good = false;
thread_local bool has_failed = false;

bool fails()
{
    if (left < 0) return false;
    if (left == 0) {
        if (!for_good) left = -1;
        has_failed = true;
        errno = ENOMEM;
        return true;
    }
    --left;
    return false;
}

} // namespace

// These take the place of the C library's functions for the whole program: operator new, SQLite and RapidJSON call
// them.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);

void *malloc(size_t size)
{
    return fails() ? nullptr : __libc_malloc(size);
}
void *calloc(size_t count, size_t size)
{
    return fails() ? nullptr : __libc_calloc(count, size);
}
void *realloc(void *block, size_t size)
{
    return fails() ? nullptr : __libc_realloc(block, size);
}
}

namespace ponsim
{
namespace
{

constexpr WantedSettings small{.seed = 5, .ports = 1, .arrivals = 3, .silent = 0};

enum class Outcome { done, refused };

// Does the work while the n-th allocation fails, or all from it on.
template <class Work>
Outcome without_memory(long n, bool good, Work work)
{
    for_good = good;
    has_failed = false;
    left = n;
    try {
        const bool done = work();
        left = -1;
        return done ? Outcome::done : Outcome::refused;
    } catch (const std::bad_alloc &) {
        left = -1;
        return Outcome::refused;
    } catch (const StoreError &) {
        left = -1;
        return Outcome::refused;
    }
}

// Does the work again and again, with one more allocation each time, until it is done. `look` looks at what it left.
template <class Work, class Look>
void with_ever_more_memory(Work work, Look look)
{
    for (const bool good : {false, true}) {
        long n = 0;
        do {
            const Outcome outcome = without_memory(n, good, work);
            ASSERT_NO_FATAL_FAILURE(look(outcome)) << "allocation " << n << (good ? " and all after it" : "");
            // The first allocations are failed one by one, and after these every third.
            n += n < 300 ? 1 : 3;
        } while (has_failed && n < 100000);
        EXPECT_FALSE(has_failed);
        EXPECT_GT(n, 3);
    }
}

std::string saved(ServiceFixture &fixture)
{
    return write_configuration(fixture.simulator.settings(), fixture.store.rows());
}

TEST(Memory, AViewIsRefusedWithoutMemoryAndShowsTheSameLater)
{
    for (const uint32_t command : {BSP_CMD_VIEW_ONU_INFO_SNMP, BSP_CMD_VIEW_BASE_INFO_WEB, BSP_CMD_VIEW_ONU_ALARM}) {
        ServiceFixture fixture(small);
        ASSERT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 1, fixture.port(1).arrivals[0].mac)), BSP_OK);
        const std::string view = fixture.view(command);
        bsp_pon_msg record = record_of(command);
        Message message = message_of(record);
        message.call = catalogue::Call::get;
        std::string shown;
        const auto ask = [&] {
            // What is kept of replies is not asked for: each time the view is made anew.
            fixture.simulator.change(change_of<PortRecord>(1, {}));
            shown = fixture.simulator.handle(message).result.value_or("");
            return shown == view;
        };
        with_ever_more_memory(ask, [&](Outcome) { ASSERT_EQ(fixture.view(command), view); });
    }
}

TEST(Memory, AChangeWithoutMemoryIsMadeWhollyOrNotAtAll)
{
    const Folder folder;
    ServiceFixture fixture(small, folder.file("olt.db"));
    const bsp_pon_msg bind = record_of(BSP_CMD_ONU_BIND, 1, 2, fixture.port(1).arrivals[0].mac);
    const bsp_pon_msg release = record_of(BSP_CMD_ONU_RELEASE, 1, 2);
    with_ever_more_memory([&] { return fixture.send(bind) == BSP_OK; },
                          [&](Outcome outcome) {
                              // The first request after it finds the OLT as it is kept.
                              const std::string view = fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP);
                              const bool bound = fixture.port(1).bindings[2].has_value();
                              ASSERT_TRUE(bound || outcome == Outcome::refused);
                              Olt again(fixture.simulator.settings());
                              again.apply(fixture.store.load());
                              ASSERT_EQ(again.port(1)->bindings[2].has_value(), bound);
                              if (bound) {
                                  ASSERT_EQ(fixture.send(release), BSP_OK);
                              }
                          });
}

TEST(Memory, AConfigurationIsLoadedWhollyOrNotAtAll)
{
    ServiceFixture fixture(small);
    ServiceFixture other(small);
    ASSERT_EQ(other.send(record_of(BSP_CMD_ONU_BIND, 1, 2, other.port(1).arrivals[0].mac)), BSP_OK);
    const std::string text = saved(other);
    namespace at = layout::config_part;
    constexpr uint32_t before = offsetof(bsp_profile_msg, data);
    const text::Sha256 digest = text::sha256(text);
    std::string head(at::bytes.offset - before, '\0');
    layout::store(head.data() - before, at::total, static_cast<uint32_t>(text.size()));
    layout::store(head.data() - before, at::length, static_cast<uint32_t>(text.size()));
    layout::store(head.data() - before, at::digest, digest);
    const auto profile = [&](uint32_t action, const std::string &payload) {
        std::vector<char> bytes(payload_header + payload.size() + sizeof(bsp_profile_msg));
        bsp_profile_msg record{};
        record.action = action;
        std::memcpy(bytes.data(), &record, offsetof(bsp_profile_msg, data));
        payload.copy(bytes.data() + offsetof(bsp_profile_msg, data), payload.size());
        return fixture.simulator.handle({BSP_MSG_PROFILE, bytes.data(),
                                         payload_header + static_cast<uint32_t>(payload.size()),
                                         catalogue::Call::dgram_set});
    };
    const auto load = [&] {
        return profile(BSP_CMD_CONFIG_LOAD_PART, head + text).status == BSP_OK &&
               profile(BSP_CMD_CONFIG_LOAD, std::string(digest.begin(), digest.end())).status == BSP_OK;
    };
    with_ever_more_memory(load, [&](Outcome outcome) {
        const std::string view = fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP);
        const bool bound = fixture.port(1).bindings[2].has_value();
        ASSERT_TRUE(bound || outcome == Outcome::refused);
        ASSERT_EQ(ServiceFixture(fixture.simulator.settings(), fixture.store.load()).view(BSP_CMD_VIEW_ONU_INFO_SNMP),
                  view);
        if (bound) {
            ASSERT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 2)), BSP_OK);
        }
    });
}

} // namespace
} // namespace ponsim
