#include "http/encoding.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>

#include <zlib.h>

#include "text/words.h"

namespace front
{
namespace
{

// What is shorter is one packet of the network either way.
constexpr size_t least_to_pack = 1400; // bytes
constexpr int gzip_window = MAX_WBITS + 16, level = 6, memory_level = 8;
constexpr std::string_view encoding = "Content-Encoding";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    const size_t start = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

// Returns the weight of an encoding in a line, or none when the line does not name it. What is no weight is 0.
std::optional<double> weight_of(const std::string &accepted, std::string_view name)
{
    for (const std::string &part : text::split(accepted, ',')) {
        const std::vector<std::string> words = text::split(part, ';');
        if (trimmed(words[0]) != name) continue;
        double weight = 1;
        for (size_t number = 1; number < words.size(); ++number) {
            const std::string_view word = trimmed(words[number]);
            if (!word.starts_with("q=")) continue;
            const char *const end = word.data() + word.size();
            const auto [behind, error] = std::from_chars(word.data() + 2, end, weight);
            if (error != std::errc{} || behind != end) weight = 0;
        }
        return weight;
    }
    return std::nullopt;
}

struct Weights {
    double gzip, identity;
};
Weights weights_of(std::string_view line)
{
    const std::string accepted = text::lower_case(line);
    const std::optional<double> any = weight_of(accepted, "*"), identity = weight_of(accepted, "identity");
    const std::optional<double> named = weight_of(accepted, "gzip"), old = weight_of(accepted, "x-gzip");
    // An answer as it is may be sent unless it is refused, and is what a client likes least where it does not name it.
    return {.gzip = named.value_or(old.value_or(any.value_or(0))),
            .identity = identity.value_or(any == 0 ? 0 : 0.0001)};
}

bool is_text(const std::string &type)
{
    return type.starts_with("text/") || type.starts_with("application/json") ||
           type.starts_with("application/openmetrics-text") || type.starts_with("image/svg+xml");
}

bool has_header(const HttpResponse &response, std::string_view name)
{
    return std::ranges::any_of(response.headers, [name](const auto &header) { return header.first == name; });
}

bool wants_packed(const HttpRequest &request, size_t size)
{
    const std::string &accepted = request.header("accept-encoding");
    return takes_gzip(accepted) && (size >= least_to_pack || !takes_identity(accepted));
}

} // namespace

bool takes_gzip(std::string_view accepted)
{
    const Weights weights = weights_of(accepted);
    return weights.gzip > 0 && weights.gzip >= weights.identity;
}

bool takes_identity(std::string_view accepted)
{
    return weights_of(accepted).identity > 0;
}

std::string gzip(std::string_view text)
{
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, gzip_window, memory_level, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("no memory to compress");
    std::string packed(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END) throw std::runtime_error("it cannot be compressed");
    return packed;
}

std::string gunzip(std::string_view packed)
{
    constexpr size_t block = 64 * 1024;
    z_stream stream{};
    if (inflateInit2(&stream, gzip_window) != Z_OK) throw std::runtime_error("no memory to decompress");
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    std::string text;
    int result = Z_OK;
    while (result == Z_OK) {
        text.resize(stream.total_out + block);
        stream.next_out = reinterpret_cast<Bytef *>(text.data()) + stream.total_out;
        stream.avail_out = block;
        result = inflate(&stream, Z_NO_FLUSH);
    }
    text.resize(stream.total_out);
    inflateEnd(&stream);
    if (result != Z_STREAM_END) throw std::runtime_error("it is no gzip");
    return text;
}

HttpResponse PackableText::response_to(const HttpRequest &request) const
{
    HttpResponse response{.shared = text, .headers = {{"Vary", "Accept-Encoding"}}};
    if (!wants_packed(request, text->size())) return response;
    const std::lock_guard lock(guard);
    if (!packed) packed = std::make_shared<const std::string>(gzip(*text));
    response.shared = packed;
    response.headers.emplace_back(encoding, "gzip");
    return response;
}

HttpResponse encoded(const HttpRequest &request, HttpResponse response)
{
    if (!is_text(response.type) || has_header(response, encoding) || has_header(response, "Vary")) return response;
    response.headers.emplace_back("Vary", "Accept-Encoding");
    const std::string &text = response.shared ? *response.shared : response.body;
    if (!wants_packed(request, text.size())) return response;
    response.body = gzip(text);
    response.shared.reset();
    response.headers.emplace_back(encoding, "gzip");
    return response;
}

} // namespace front
