// A server of HTTP for browsers and monitoring systems. Encryption, and who may ask, are left to a proxy before it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace front
{

struct HttpRequest {
    std::string path;
    std::string accept;                       // the media types that the client takes
    std::map<std::string, std::string> query; // behind the path
};

struct HttpResponse {
    unsigned status = 200;
    std::string type = "text/plain; charset=utf-8";
    std::string body = {};
};

class HttpServer
{
public:
    using Handler = std::function<HttpResponse(const HttpRequest &)>;

    // Listens on an IPv4 or IPv6 address and a port; 0 takes a free one. Requests to read something are answered by the
    // handler, which several threads call at once. Throws std::runtime_error when it cannot listen.
    HttpServer(const std::string &address, uint16_t port, Handler handler);
    ~HttpServer();
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    uint16_t port() const { return bound; }

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
    uint16_t bound = 0;
};

} // namespace front
