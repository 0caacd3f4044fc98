// What a client asks, and what it is answered.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace front
{

class Workers;

struct HttpRequest {
    std::string method;                         // GET also for HEAD, whose answer has no body
    std::string path;                           // without its query, and decoded
    std::string peer;                           // address of the client
    std::map<std::string, std::string> query;   // behind the path, decoded
    std::map<std::string, std::string> headers; // by names in lower case
    std::string body;

    // Returns an empty text where there is none.
    const std::string &header(const std::string &name) const;
};

struct HttpResponse {
    unsigned status = 200;
    std::string type = "text/plain; charset=utf-8";
    std::string body = {};
    std::shared_ptr<const std::string> shared = nullptr; // in place of the body: one that many answers have
    std::vector<std::pair<std::string, std::string>> headers = {};
};

// A Deferred is an answer that takes its time: a worker makes it, while the server goes on with other requests.
struct Deferred {
    std::shared_ptr<Workers> workers;
    std::function<HttpResponse()> make;
};

// A MessageSource is what a client hears for as long as it listens. One thread at a time calls it.
class MessageSource
{
public:
    virtual ~MessageSource() = default;
    // Returns what there is to send now, which may be nothing, or none when the stream has ended.
    virtual std::optional<std::string> next() = 0;
};
struct Stream {
    std::unique_ptr<MessageSource> source;
};

using HttpAnswer = std::variant<HttpResponse, Deferred, Stream>;

// An Admission says, by the head of a request, whether its body is taken, and how long it may be.
struct Admission {
    std::optional<HttpResponse> refusal = {};
    size_t longest_body = 0;
};

// A HttpHandler answers requests. Several threads call it at once.
class HttpHandler
{
public:
    virtual ~HttpHandler() = default;
    virtual Admission admit(const HttpRequest &head) = 0;
    virtual HttpAnswer answer(const HttpRequest &request) = 0;
    // Returns the answer to a request that the server itself refuses.
    virtual HttpResponse refusal(unsigned status, const std::string &reason) = 0;
};

} // namespace front
