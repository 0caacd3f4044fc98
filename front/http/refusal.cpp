#include "http/refusal.h"

#include "text/json.h"
#include "text/utf8.h"

namespace front
{

HttpResponse response_of(const Refusal &refusal)
{
    text::json::Buffer buffer;
    text::json::Writer writer(buffer);
    const auto put = [&writer](const char *key, const std::string &value) {
        writer.Key(key);
        writer.String(value.c_str(), static_cast<rapidjson::SizeType>(value.size()));
    };
    writer.StartObject();
    writer.Key("error");
    writer.StartObject();
    put("code", refusal.code);
    put("message", text::printable(refusal.what()));
    writer.EndObject();
    writer.EndObject();
    return {.status = refusal.status,
            .type = "application/json",
            .body = {buffer.GetString(), buffer.GetSize()},
            .headers = refusal.headers};
}

} // namespace front
