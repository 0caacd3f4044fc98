// This file has profiles, and a fixture that stores and fetches them.
#pragma once

#include "support.h"

namespace ponsim
{

using catalogue::Call;

inline constexpr uint32_t all_kinds[] = {16, 32, 48};
enum Action : uint32_t { put_in = 1, fetch, drop, list, table, text };

// Words are the values as a payload has them after the name.
using Words = std::vector<int32_t>;
inline const Words gold_line{0, 100, 5, 20000, 100000, 16}; // the id comes first
inline const Words gold_sla{0, 1000, 2000, 5000, 7, 100};
inline const Words cold_alarm{0, -4000, 7050, -100, 600, -2850, -800};

inline Words words_of_kind(uint32_t kind)
{
    return kind == 16 ? gold_line : kind == 32 ? gold_sla : cold_alarm;
}

inline std::string name_field(const std::string &name)
{
    std::string field = name;
    field.resize(32);
    return field;
}

inline std::string payload_of(const std::string &name, const Words &words)
{
    return name_field(name) + std::string(reinterpret_cast<const char *>(words.data()), words.size() * 4);
}

inline Words with_id(Words words, int32_t id)
{
    words[0] = id;
    return words;
}

struct ProfileFixture : ServiceFixture {
    using ServiceFixture::ServiceFixture;

    Reply exchange(uint32_t action, const std::string &payload, Call call)
    {
        std::string record(24, '\0');
        memcpy(record.data(), &action, sizeof action);
        record += payload + std::string(4, '\0');
        // The copy has exactly the size of the record, so that reading beyond it is detected.
        const std::vector<char> bytes(record.begin(), record.end());
        return simulator.handle({BSP_MSG_PROFILE, bytes.data(), static_cast<uint32_t>(bytes.size()), call});
    }
    uint32_t set(uint32_t action, const std::string &payload)
    {
        return exchange(action, payload, Call::dgram_set).status;
    }
    Reply get(uint32_t action, const std::string &payload = {}) { return exchange(action, payload, Call::dgram_get); }

    uint32_t keep(uint32_t kind, const std::string &name, const Words &words)
    {
        return set(kind + put_in, payload_of(name, words));
    }
    // Returns the payload of the answer, cut to the length of the one that stored the profile.
    std::string fetched(uint32_t kind, const std::string &name)
    {
        const Reply reply = get(kind + fetch, name_field(name));
        EXPECT_EQ(reply.status, BSP_OK);
        return reply.answer.value_or("").substr(24, payload_of("", words_of_kind(kind)).size());
    }
    // Returns the content of the file.
    std::string file(uint32_t action) { return get(action).file.value_or(ResultFile{"no file", 0}).content; }
};

} // namespace ponsim
