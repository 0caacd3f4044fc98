// The search for ONUs by whatever somebody knows of them.
#include <algorithm>
#include <map>

#include "rest/answers.h"
#include "text/words.h"
#include "web/index.h"

namespace front
{
namespace
{

constexpr uint64_t most_matches = 200, usual_matches = 20;
constexpr size_t longest_text = 200;

// Returns the digits of a text that may be a part of a MAC address, in any spelling, and otherwise nothing.
std::string mac_digits(std::string_view text)
{
    std::string digits = text::lower_case(text);
    std::erase_if(digits, [](char c) { return c == ':' || c == '-' || c == '.'; });
    return digits.find_first_not_of("0123456789abcdef") == digits.npos ? digits : std::string();
}

// A Wanted is what is looked for.
struct Wanted {
    std::string lower, digits;

    bool in(const std::optional<std::string_view> &value) const
    {
        return value && text::lower_case(*value).find(lower) != std::string::npos;
    }
};

// Returns in which member of an ONU the text is, or an empty text.
std::string_view found_in(const view::onu_info &onu, const std::string &serial, const Wanted &wanted)
{
    if (onu.onu_id && wanted.lower == std::to_string(onu.pon_port) + "/" + std::to_string(*onu.onu_id)) return "onu";
    if (!wanted.digits.empty() && text::to_hex(onu.mac).find(wanted.digits) != std::string::npos) return "mac";
    if (wanted.in(onu.loid)) return "loid";
    if (wanted.in(serial)) return "serial";
    if (wanted.in(onu.description)) return "description";
    if (wanted.in(onu.text_a)) return "text_a";
    if (wanted.in(onu.text_b)) return "text_b";
    return wanted.in(onu.text_c) ? "text_c" : "";
}

void write_match(Json &json, const OltState &state, const view::onu_info &onu, const std::string &serial,
                 const view::onu_capabilities *able, std::string_view found)
{
    json->StartObject();
    json.member("olt", state.name);
    json.member("pon_port", onu.pon_port);
    json.member("onu_id", onu.onu_id);
    json.member("mac", onu.mac);
    json.member("state", onu.state);
    json.member("description", onu.description);
    json.member("loid", onu.loid);
    json.member_or_null("serial", serial);
    json.member("model", able ? std::optional(able->model) : std::nullopt);
    json.member("found", found);
    json->EndObject();
}

} // namespace

HttpResponse answer_search(const Context &context)
{
    const std::string text = context.query("q");
    if (text.empty() || text.size() > longest_text)
        bad_request("q: expected from 1 to " + std::to_string(longest_text) + " bytes to look for");
    const uint64_t limit =
        std::clamp<uint64_t>(context.number("limit", most_matches).value_or(usual_matches), 1, most_matches);
    const Wanted wanted{text::lower_case(text), mac_digits(text)};
    uint64_t count = 0;
    Json json;
    json->StartObject();
    json.key("matches");
    json->StartArray();
    for (const OltDoor &olt : context.services.known.olts()) {
        const auto capabilities = by_place(olt.state->snapshot->capabilities);
        for (const view::onu_info &onu : rows_of(olt.state->snapshot->onus)) {
            if (count > limit) break;
            const auto able = onu.onu_id ? capabilities.find({onu.pon_port, *onu.onu_id}) : capabilities.end();
            const auto *const kind = able == capabilities.end() ? nullptr : able->second;
            const std::string serial = kind ? serial_of(kind->vendor, onu.mac) : "";
            const std::string_view found = found_in(onu, serial, wanted);
            if (!found.empty() && ++count <= limit) write_match(json, *olt.state, onu, serial, kind, found);
        }
    }
    json->EndArray();
    json.member("more", count > limit);
    json->EndObject();
    return json_response(json.text());
}

} // namespace front
