// A server of HTTP for browsers, scripts and monitoring systems.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "http/message.h"

namespace front
{

struct HttpSettings {
    std::string address = "127.0.0.1"; // IPv4 or IPv6
    uint16_t port = 0;                 // 0: a free one
    std::string certificate, key;      // in PEM; both or none
    unsigned most_connections = 1024, most_of_an_address = 512;
    unsigned idle_limit = 30;                   // seconds without a byte, after which a connection ends
    std::chrono::milliseconds longest{120'000}; // that a request may take to come, and its answer to go
    std::chrono::milliseconds beat{15000};      // streams say at least so often that they live
};

class HttpServer
{
public:
    // The handler must outlive the server. Throws std::runtime_error when it cannot listen.
    HttpServer(const HttpSettings &wanted, HttpHandler &handler);
    ~HttpServer(); // waits for answers that are being made
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    uint16_t port() const { return bound; }
    // Has every stream look for what there is to send. Any thread may call this, while it holds nothing that a stream's
    // source needs.
    void wake_streams();

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
    uint16_t bound = 0;
};

} // namespace front
