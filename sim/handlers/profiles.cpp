// These commands concern profiles, which are stored under action codes.
#include "model/onu/profiles.h"

#include "generated/service_words.h"
#include "handlers/record.h"
#include "views/profiles.h"

namespace ponsim
{
namespace
{

constexpr uint32_t payload_at = offsetof(bsp_profile_msg, data);
constexpr uint32_t name_size = 32;

// All kinds of records have name and id at the same offsets.
namespace common = layout::profile_line;
static_assert(common::name.offset == payload_at && common::name == layout::profile_name::name);
static_assert(common::name == layout::profile_sla::name && common::id == layout::profile_sla::id);
static_assert(common::name == layout::profile_alarm::name && common::id == layout::profile_alarm::id);

// Returns the length of a payload that is a profile.
size_t length_of(ProfileKind kind)
{
    return fields_of(kind).back().at.end() - payload_at;
}

bool get_name(const Request &request, std::string &name)
{
    return get_text(request.payload().data(), name_size, name);
}

// Returns the name in the payload. The payload is either the name alone, or has room for the whole profile after it.
std::optional<std::string> named(const Request &request, ProfileKind kind)
{
    const size_t length = request.payload().size();
    std::string name;
    if ((length != name_size && length != length_of(kind)) || !get_name(request, name)) return std::nullopt;
    return name;
}

bsp_profile_msg head_of(const Request &request)
{
    bsp_profile_msg head{};
    head.action = request.read<uint32_t>(offsetof(bsp_profile_msg, action));
    head.is_get = 1;
    return head;
}

template <ProfileKind kind>
Outcome store(const Olt &olt, const Request &request)
{
    Profile profile;
    if (request.payload().size() != length_of(kind) || !get_name(request, profile.name)) return {PON_ERR_BAD_RECORD};
    for (const ProfileField &field : fields_of(kind))
        profile.values.push_back(request.get(field.at));
    return to_outcome(store_profile(olt, kind, request.get(common::id), profile));
}

template <ProfileKind kind>
Outcome fetch(const Olt &olt, const Request &request)
{
    const std::optional<std::string> name = named(request, kind);
    if (!name) return {PON_ERR_BAD_RECORD};
    const std::optional<uint32_t> id = find_profile(olt, kind, *name);
    if (!id) return {PON_ERR_NO_PROFILE};
    const Profile &profile = olt.profiles(kind).at(*id);
    Answer answer(head_of(request));
    answer.put(common::name, profile.name);
    answer.put(common::id, *id);
    for (size_t index = 0; index < profile.values.size(); ++index)
        answer.put(fields_of(kind)[index].at, profile.values[index]);
    return answer.outcome();
}

template <ProfileKind kind>
Outcome remove(const Olt &olt, const Request &request)
{
    const std::optional<std::string> name = named(request, kind);
    if (!name) return {PON_ERR_BAD_RECORD};
    return to_outcome(delete_profile(olt, kind, *name));
}

template <ProfileKind kind>
Outcome list(const Olt &olt, const Request &request)
{
    namespace at = layout::profile_list;
    // Without a payload, this reads the four bytes of zeros that follow it.
    const auto from = request.get(layout::profile_list_from::from);
    const std::map<uint32_t, Profile> &profiles = olt.profiles(kind);
    Answer answer(head_of(request));
    uint32_t listed = 0;
    for (auto entry = profiles.lower_bound(from); entry != profiles.end() && listed < at::id.count; ++entry, ++listed) {
        answer.put(at::id[listed], entry->first);
        answer.put(at::name[listed], entry->second.name);
    }
    answer.put(at::listed, listed);
    return answer.outcome();
}

template <ProfileKind kind>
Outcome table(const Olt &olt, const Request &)
{
    Outcome outcome{BSP_OK};
    outcome.file = {profile_table(olt, kind), payload_at};
    return outcome;
}

template <ProfileKind kind>
Outcome text(const Olt &olt, const Request &request)
{
    ResultFile file{profile_text(olt, kind), payload_at};
    bsp_profile_msg answer = head_of(request);
    answer.count = static_cast<uint32_t>(file.content.size());
    Outcome outcome = Answer(answer).outcome();
    outcome.file = std::move(file);
    return outcome;
}

using catalogue::Call;

constexpr Handler handlers[] = {
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_LINE_STORE, store<ProfileKind::line>, Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_LINE_FETCH, fetch<ProfileKind::line>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_LINE_DELETE, remove<ProfileKind::line>, Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_LINE_LIST, list<ProfileKind::line>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_LINE_TABLE, table<ProfileKind::line>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_LINE_TEXT, text<ProfileKind::line>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_SLA_STORE, store<ProfileKind::sla>, Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_SLA_FETCH, fetch<ProfileKind::sla>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_SLA_DELETE, remove<ProfileKind::sla>, Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_SLA_LIST, list<ProfileKind::sla>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_SLA_TABLE, table<ProfileKind::sla>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_SLA_TEXT, text<ProfileKind::sla>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_ALARM_STORE, store<ProfileKind::alarm>, Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_ALARM_FETCH, fetch<ProfileKind::alarm>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_ALARM_DELETE, remove<ProfileKind::alarm>, Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_ALARM_LIST, list<ProfileKind::alarm>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_ALARM_TABLE, table<ProfileKind::alarm>, Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_PROFILE_ALARM_TEXT, text<ProfileKind::alarm>, Call::dgram_get},
};

} // namespace

std::span<const Handler> profiles_handlers()
{
    return handlers;
}

} // namespace ponsim
