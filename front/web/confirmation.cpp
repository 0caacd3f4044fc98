#include "web/confirmation.h"

#include <algorithm>
#include <cstdlib>

#include "access/secrets.h"

namespace front
{
namespace
{

constexpr size_t most_named = 500;

} // namespace

std::string Hits::names() const
{
    std::string text = scope;
    for (const view::onu_info *onu : onus)
        text += " " + std::to_string(onu->pon_port) + "/" + text::to_hex(onu->mac);
    return text;
}

Hits hits_of(const OltState &state, const call::Target &target)
{
    const uint32_t port =
        target.port ? static_cast<uint32_t>(std::strtoul(target.port->c_str(), nullptr, 10)) : 0; // 0: all of them
    Hits hits{.scope = target.names_onus() ? "onus" : port > 0 ? "port" : "olt"};
    for (const view::onu_info &onu : rows_of(state.snapshot->onus)) {
        if (port > 0 && onu.pon_port != port) continue;
        if (!onu.onu_id && !target.names_onus()) continue; // it waits, and nothing is taken from it
        if (!target.names(onu.onu_id, text::mac_text(onu.mac))) continue;
        hits.onus.push_back(&onu);
        hits.online += onu.state == "online";
    }
    return hits;
}

Hits all_of(const OltState &state)
{
    return hits_of(state, {});
}

void write(Json &json, const Hits &hits)
{
    json.member("scope", hits.scope);
    json.member("count", hits.onus.size());
    json.member("online", hits.online);
    json.key("onus");
    json->StartArray();
    for (size_t number = 0; number < std::min(hits.onus.size(), most_named); ++number) {
        const view::onu_info &onu = *hits.onus[number];
        json->StartObject();
        json.member("pon_port", onu.pon_port);
        json.member("onu_id", onu.onu_id);
        json.member("mac", onu.mac);
        json.member("state", onu.state);
        json.member("description", onu.description);
        json->EndObject();
    }
    json->EndArray();
}

std::string Confirmations::promise(const std::string &what, int64_t now)
{
    const std::string confirm = new_token();
    const std::lock_guard lock(guard);
    std::erase_if(promises, [now](const auto &entry) { return entry.second.ends <= now; });
    if (promises.size() >= most)
        promises.erase(std::ranges::min_element(promises, {}, [](const auto &entry) { return entry.second.ends; }));
    promises[hash_of_token(confirm)] = {hash_of_token(what), now + good_for};
    return confirm;
}

bool Confirmations::redeem(const std::string &confirm, const std::string &what, int64_t now)
{
    const std::lock_guard lock(guard);
    const auto found = promises.find(hash_of_token(confirm));
    if (found == promises.end()) return false;
    const bool good = found->second.ends > now && found->second.what == hash_of_token(what);
    promises.erase(found);
    return good;
}

} // namespace front
