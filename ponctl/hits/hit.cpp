#include "hits/hit.h"

#include "text/words.h"

namespace ponctl
{
namespace
{

std::string or_dash(const std::string &text)
{
    return text.empty() ? "-" : text;
}

} // namespace

std::string Hit::name() const
{
    return std::to_string(port) + "/" + (id ? std::to_string(*id) : mac);
}

std::string changes_text(std::span<const Change> changes)
{
    std::vector<std::string> texts;
    for (const auto &[field, before, after] : changes)
        texts.push_back(field + " " + or_dash(before) + " -> " + or_dash(after));
    return texts.empty() ? "nothing" : text::join(texts);
}

void write_hits(call::JsonText &json, std::span<const Hit> hits)
{
    json->StartArray();
    for (const Hit &hit : hits) {
        json->StartObject();
        json.member("onu", hit.name());
        json.member_or_null("mac", hit.mac);
        json.member_or_null("state", hit.state);
        json.member_or_null("description", hit.description);
        json.truth("goes_offline", hit.goes_offline);
        json.key("changes");
        json->StartArray();
        for (const auto &[field, before, after] : hit.changes) {
            json->StartObject();
            json.member("field", field);
            json.member_or_null("before", before);
            json.member_or_null("after", after);
            json->EndObject();
        }
        json->EndArray();
        json->EndObject();
    }
    json->EndArray();
}

} // namespace ponctl
