#include "web/context.h"

#include <algorithm>
#include <charconv>
#include <functional>

#include "access/secrets.h"
#include "http/refusal.h"

namespace front
{
namespace
{

std::optional<uint64_t> to_number(const std::string &text, uint64_t greatest)
{
    uint64_t number = 0;
    const char *const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || behind != end || number > greatest) return std::nullopt;
    return number;
}

} // namespace

std::string Context::query(const std::string &name) const
{
    const auto found = request.query.find(name);
    return found == request.query.end() ? std::string() : found->second;
}

std::optional<uint64_t> Context::number(const std::string &name, uint64_t greatest) const
{
    const std::string text = query(name);
    if (text.empty()) return std::nullopt;
    const std::optional<uint64_t> number = to_number(text, greatest);
    if (!number) bad_request(name + ": expected a number from 0 to " + std::to_string(greatest));
    return number;
}

uint32_t Context::place_number(const std::string &name) const
{
    const std::optional<uint64_t> number = to_number(place(name), UINT32_MAX);
    if (!number) not_found(place(name) + ": no number");
    return static_cast<uint32_t>(*number);
}

HttpResponse json_response(std::string body)
{
    return {.type = "application/json", .body = std::move(body), .headers = {{"Cache-Control", "no-store"}}};
}

void not_found(const std::string &what)
{
    throw Refusal(404, "not_found", what);
}

void bad_request(const std::string &what)
{
    throw Refusal(400, "bad_request", what);
}

void expect_read(const OltState &state, Table table)
{
    if (state.snapshot->state(table).generation == 0)
        throw Refusal(503, "not_yet",
                      state.name + ": the table " + table_kinds()[static_cast<size_t>(table)].name +
                          " has not been read yet");
}

HttpResponse versioned(const Context &context, const std::string &version, const std::function<std::string()> &make)
{
    std::string name = context.request.path;
    for (const auto &[key, value] : context.request.query)
        name += '\n' + key + '=' + value;
    return versioned(context.services.pages, context.request, name, version, make);
}

HttpResponse versioned(Pages &pages, const HttpRequest &request, const std::string &name, const std::string &version,
                       const std::function<std::string()> &make)
{
    const std::string tag = pages.tag_of(name + '\n' + version);
    const std::string &known = request.header("if-none-match");
    HttpResponse response{.status = 304, .type = {}, .headers = {{"Vary", "Accept-Encoding"}}};
    if (known != "*" && known.find(tag) == std::string::npos) {
        response = pages.page(name, version, make)->response_to(request);
        response.type = "application/json";
    }
    // The tag is weak: it is the same whether the answer is compressed or not.
    response.headers.emplace_back("ETag", "W/" + tag);
    response.headers.emplace_back("Cache-Control", "no-cache");
    return response;
}

Pages::Pages() : run(new_token().substr(0, 8)) {}

std::string Pages::tag_of(const std::string &version) const
{
    return "\"" + run + "-" + std::to_string(std::hash<std::string>()(version)) + "\"";
}

std::shared_ptr<const PackableText> Pages::page(const std::string &name, const std::string &version,
                                                const std::function<std::string()> &make)
{
    {
        const std::lock_guard lock(guard);
        const auto found = pages.find(name);
        if (found != pages.end() && found->second.version == version) {
            found->second.used = ++uses;
            return found->second.text;
        }
    }
    auto text = std::make_shared<const PackableText>(make());
    const std::lock_guard lock(guard);
    if (pages.size() >= most && !pages.contains(name))
        pages.erase(std::ranges::min_element(pages, {}, [](const auto &entry) { return entry.second.used; }));
    pages[name] = {version, text, ++uses};
    return text;
}

} // namespace front
