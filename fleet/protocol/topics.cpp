#include "fleet/protocol/topics.h"

#include <algorithm>
#include <vector>

#include "text/words.h"

namespace fleet
{
namespace
{

constexpr size_t longest_name = 64;

bool is_name_character(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '_' || character == '.';
}

// Returns the levels of a topic below the root, or nothing when it is not below the root.
std::vector<std::string> levels_of(const std::string &root, std::string_view topic)
{
    const std::string start = root + "/";
    return topic.starts_with(start) ? text::split(topic.substr(start.size()), '/') : std::vector<std::string>();
}

} // namespace

bool is_name(std::string_view text)
{
    return !text.empty() && text.size() <= longest_name && std::ranges::all_of(text, is_name_character);
}

bool is_root(std::string_view text)
{
    return std::ranges::all_of(text::split(text, '/'), [](const std::string &level) { return is_name(level); });
}

std::string Topics::call(const CallTopic &topic) const
{
    return root + "/olt/" + topic.olt + "/call/" + std::string(catalogue::to_text(topic.impact)) + "/" + topic.client;
}

std::optional<CallTopic> Topics::read_call(std::string_view topic) const
{
    const std::vector<std::string> levels = levels_of(root, topic);
    if (levels.size() != 5 || levels[0] != "olt" || levels[2] != "call") return std::nullopt;
    const std::optional<catalogue::Class> impact = catalogue::find_class(levels[3]);
    if (!impact || !is_name(levels[1]) || !is_name(levels[4])) return std::nullopt;
    return CallTopic{levels[1], *impact, levels[4]};
}

std::string Topics::calls_of(std::string_view olt) const
{
    return root + "/olt/" + std::string(olt) + "/call/+/+";
}

std::string Topics::reply(std::string_view client, std::string_view session) const
{
    return root + "/client/" + std::string(client) + "/" + std::string(session);
}

bool Topics::is_reply_to(std::string_view client, std::string_view topic) const
{
    const std::vector<std::string> levels = levels_of(root, topic);
    return levels.size() == 3 && levels[0] == "client" && levels[1] == client && is_name(levels[2]);
}

std::string Topics::inventory(std::string_view olt) const
{
    return root + "/olt/" + std::string(olt) + "/inventory";
}

std::string Topics::event(std::string_view olt) const
{
    return root + "/olt/" + std::string(olt) + "/event";
}

std::string Topics::audit(std::string_view olt) const
{
    return root + "/olt/" + std::string(olt) + "/audit";
}

std::string Topics::bridge(std::string_view bridge) const
{
    return root + "/bridge/" + std::string(bridge) + "/state";
}

std::string Topics::olt_of(std::string_view topic) const
{
    const std::vector<std::string> levels = levels_of(root, topic);
    const bool is_known = levels.size() == 3 && levels[0] == "olt" && is_name(levels[1]) &&
                          (levels[2] == "inventory" || levels[2] == "event" || levels[2] == "audit");
    return is_known ? levels[1] : std::string();
}

std::string Topics::bridge_of(std::string_view topic) const
{
    const std::vector<std::string> levels = levels_of(root, topic);
    const bool is_known = levels.size() == 3 && levels[0] == "bridge" && is_name(levels[1]) && levels[2] == "state";
    return is_known ? levels[1] : std::string();
}

} // namespace fleet
