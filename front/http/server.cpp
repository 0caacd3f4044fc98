#include "http/server.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <microhttpd.h>

#include "http/address.h"
#include "http/deadlines.h"
#include "http/encoding.h"
#include "http/streams.h"
#include "http/workers.h"
#include "text/words.h"

namespace front
{
namespace
{

constexpr unsigned threads = 2;
constexpr size_t memory_of_connection = 32 * 1024; // bytes, for all that a client sends before its body
constexpr size_t most_passed_over = 4;             // so many times the longest body is read before a client is cut off

int socket_of(MHD_Connection *connection)
{
    return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
}

struct Body {
    std::string own;
    std::shared_ptr<const std::string> shared;
};

void drop_body(void *body)
{
    delete static_cast<Body *>(body);
}

MHD_Result send_response(MHD_Connection *connection, HttpResponse response)
{
    // A body can be long: the library has it until it is sent.
    auto body = std::make_unique<Body>(std::move(response.body), std::move(response.shared));
    const std::string &text = body->shared ? *body->shared : body->own;
    MHD_Response *const made = MHD_create_response_from_buffer_with_free_callback_cls(
        text.size(), const_cast<char *>(text.data()), drop_body, body.get());
    if (!made) return MHD_NO;
    static_cast<void>(body.release());
    if (!response.type.empty()) MHD_add_response_header(made, MHD_HTTP_HEADER_CONTENT_TYPE, response.type.c_str());
    MHD_add_response_header(made, "X-Content-Type-Options", "nosniff");
    for (const auto &[name, value] : response.headers)
        MHD_add_response_header(made, name.c_str(), value.c_str());
    const MHD_Result result = MHD_queue_response(connection, response.status, made);
    MHD_destroy_response(made);
    return result;
}

MHD_Result add_to_query(void *query, MHD_ValueKind, const char *name, const char *value)
{
    (*static_cast<std::map<std::string, std::string> *>(query))[name] = value ? value : "";
    return MHD_YES;
}

// Of a header that is there twice both values count, so that none of them can be passed over.
MHD_Result add_to_headers(void *headers, MHD_ValueKind, const char *name, const char *value)
{
    std::string &kept = (*static_cast<std::map<std::string, std::string> *>(headers))[text::lower_case(name)];
    kept += (kept.empty() ? "" : ", ") + std::string(value ? value : "");
    return MHD_YES;
}

HttpRequest request_of(MHD_Connection *connection, const char *url, const char *method)
{
    HttpRequest request{.method = method, .path = url, .peer = {}, .query = {}, .headers = {}, .body = {}};
    if (request.method == MHD_HTTP_METHOD_HEAD) request.method = MHD_HTTP_METHOD_GET;
    MHD_get_connection_values(connection, MHD_GET_ARGUMENT_KIND, add_to_query, &request.query);
    MHD_get_connection_values(connection, MHD_HEADER_KIND, add_to_headers, &request.headers);
    const MHD_ConnectionInfo *const info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
    if (info && info->client_addr) request.peer = text_of(*info->client_addr);
    return request;
}

bool is_longer(const std::string &length, size_t most)
{
    return length.size() > 18 || (!length.empty() && std::strtoull(length.c_str(), nullptr, 10) > most);
}

// An Exchange is a request under way.
struct Exchange {
    HttpRequest request;
    size_t longest_body = 0;
    size_t received = 0;
    std::optional<HttpResponse> made; // by a worker
};

} // namespace

const std::string &HttpRequest::header(const std::string &name) const
{
    static const std::string none;
    const auto found = headers.find(name);
    return found == headers.end() ? none : found->second;
}

struct HttpServer::Impl {
    Impl(HttpSettings wanted, HttpHandler &answers)
        : settings(std::move(wanted)), handler(answers), deadlines(settings.longest), streams(settings.beat)
    {
    }

    const HttpSettings settings; // the library reads its texts
    HttpHandler &handler;
    Deadlines deadlines;
    Streams streams;
    MHD_Daemon *daemon = nullptr;

    std::mutex guard; // held by whoever uses the rest
    std::condition_variable changed;
    size_t being_made = 0; // answers, by workers
    bool stopping = false;

    static MHD_Result access(void *self, MHD_Connection *connection, const char *url, const char *method, const char *,
                             const char *upload, size_t *upload_size, void **context)
    {
        auto &server = *static_cast<Impl *>(self);
        try {
            if (!*context) return server.begin(connection, url, method, context);
            auto &exchange = *static_cast<Exchange *>(*context);
            if (*upload_size == 0) return server.finish(connection, exchange);
            const size_t size = std::exchange(*upload_size, 0);
            return take(exchange, upload, size) ? MHD_YES : MHD_NO;
        } catch (const std::exception &) {
            return send_response(connection,
                                 server.handler.refusal(MHD_HTTP_INTERNAL_SERVER_ERROR, "it cannot be answered now"));
        }
    }

    MHD_Result begin(MHD_Connection *connection, const char *url, const char *method, void **context)
    {
        auto exchange = std::make_unique<Exchange>();
        exchange->request = request_of(connection, url, method);
        Admission admission = handler.admit(exchange->request);
        exchange->longest_body = admission.longest_body;
        *context = exchange.release();
        const HttpRequest &request = static_cast<Exchange *>(*context)->request;
        if (admission.refusal) return send_response(connection, std::move(*admission.refusal));
        if (is_longer(request.header("content-length"), admission.longest_body))
            return send_response(connection, too_long(admission.longest_body));
        return MHD_YES;
    }

    // Takes a part of the body. A body that is too long is read on for a while, because the library answers only behind
    // it.
    static bool take(Exchange &exchange, const char *bytes, size_t size)
    {
        exchange.received += size;
        if (exchange.received <= exchange.longest_body)
            exchange.request.body.append(bytes, size);
        else
            exchange.request.body = {};
        return exchange.received <= most_passed_over * (exchange.longest_body + memory_of_connection);
    }

    HttpResponse too_long(size_t most)
    {
        return handler.refusal(MHD_HTTP_CONTENT_TOO_LARGE,
                               "the body is longer than " + std::to_string(most) + " bytes, which are taken here");
    }

    MHD_Result finish(MHD_Connection *connection, Exchange &exchange)
    {
        deadlines.begin(socket_of(connection));
        if (exchange.made) return send_response(connection, std::move(*exchange.made));
        if (exchange.received > exchange.longest_body)
            return send_response(connection, too_long(exchange.longest_body));
        HttpAnswer answer = handler.answer(exchange.request);
        if (auto *response = std::get_if<HttpResponse>(&answer))
            return send_response(connection, encoded(exchange.request, std::move(*response)));
        deadlines.suspend(socket_of(connection));
        if (auto *stream = std::get_if<Stream>(&answer)) return streams.begin(connection, std::move(stream->source));
        defer(connection, exchange, std::move(std::get<Deferred>(answer)));
        return MHD_YES;
    }

    void defer(MHD_Connection *connection, Exchange &exchange, Deferred deferred)
    {
        {
            const std::lock_guard lock(guard);
            ++being_made;
        }
        MHD_suspend_connection(connection);
        const auto finish_with = [this, connection, &exchange](HttpResponse response) {
            exchange.made = std::move(response);
            MHD_resume_connection(connection);
            const std::lock_guard lock(guard);
            --being_made;
            changed.notify_all();
        };
        const bool taken = deferred.workers->post([this, finish_with, &exchange, make = std::move(deferred.make)] {
            finish_with(made_by(exchange.request, make));
        });
        if (!taken)
            finish_with(handler.refusal(MHD_HTTP_TOO_MANY_REQUESTS, "too much is being done; try again in a moment"));
    }

    HttpResponse made_by(const HttpRequest &request, const std::function<HttpResponse()> &make)
    {
        {
            const std::lock_guard lock(guard);
            if (stopping) return handler.refusal(MHD_HTTP_SERVICE_UNAVAILABLE, "ponfront ends");
        }
        try {
            return encoded(request, make());
        } catch (const std::exception &) {
            return handler.refusal(MHD_HTTP_INTERNAL_SERVER_ERROR, "it cannot be answered now");
        }
    }

    static void forget(void *self, MHD_Connection *connection, void **context, MHD_RequestTerminationCode)
    {
        delete static_cast<Exchange *>(std::exchange(*context, nullptr));
        static_cast<Impl *>(self)->deadlines.begin(socket_of(connection)); // of the next request
    }

    static void note(void *self, MHD_Connection *connection, void **, MHD_ConnectionNotificationCode what)
    {
        Deadlines &deadlines = static_cast<Impl *>(self)->deadlines;
        if (what == MHD_CONNECTION_NOTIFY_STARTED)
            deadlines.begin(socket_of(connection));
        else
            deadlines.forget(socket_of(connection));
    }

    void stop()
    {
        streams.stop();
        std::unique_lock lock(guard);
        stopping = true;
        changed.wait(lock, [this] { return being_made == 0; });
        lock.unlock();
        if (daemon) MHD_stop_daemon(daemon);
    }
};

HttpServer::HttpServer(const HttpSettings &wanted, HttpHandler &handler) : impl(std::make_unique<Impl>(wanted, handler))
{
    const HttpSettings &settings = impl->settings;
    SocketAddress at = address_of(settings.address, settings.port);
    const bool encrypted = !settings.certificate.empty();
    unsigned flags = MHD_USE_EPOLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME;
    if (at.storage.ss_family == AF_INET6) flags |= MHD_USE_IPv6;
    if (encrypted) flags |= MHD_USE_TLS;
    std::vector<MHD_OptionItem> options;
    const auto add = [&options](MHD_OPTION option, intptr_t number, void *pointer = nullptr) {
        options.push_back({option, number, pointer});
    };
    add(MHD_OPTION_SOCK_ADDR, 0, &at.storage);
    add(MHD_OPTION_THREAD_POOL_SIZE, threads);
    add(MHD_OPTION_CONNECTION_LIMIT, settings.most_connections);
    add(MHD_OPTION_PER_IP_CONNECTION_LIMIT, settings.most_of_an_address);
    add(MHD_OPTION_CONNECTION_TIMEOUT, settings.idle_limit);
    add(MHD_OPTION_CONNECTION_MEMORY_LIMIT, static_cast<intptr_t>(memory_of_connection));
    if (encrypted) {
        add(MHD_OPTION_HTTPS_MEM_CERT, 0, const_cast<char *>(settings.certificate.c_str()));
        add(MHD_OPTION_HTTPS_MEM_KEY, 0, const_cast<char *>(settings.key.c_str()));
    }
    add(MHD_OPTION_END, 0);
    errno = 0;
    impl->daemon =
        MHD_start_daemon(flags, settings.port, nullptr, nullptr, &Impl::access, impl.get(), MHD_OPTION_NOTIFY_COMPLETED,
                         &Impl::forget, impl.get(), MHD_OPTION_NOTIFY_CONNECTION, &Impl::note, impl.get(),
                         MHD_OPTION_ARRAY, options.data(), MHD_OPTION_END);
    if (!impl->daemon)
        throw std::runtime_error("cannot listen on " + settings.address + " port " + std::to_string(settings.port) +
                                 ": " + (errno ? std::strerror(errno) : "the certificate or its key cannot be used"));
    const MHD_DaemonInfo *const info = MHD_get_daemon_info(impl->daemon, MHD_DAEMON_INFO_BIND_PORT);
    bound = info ? info->port : settings.port;
}

HttpServer::~HttpServer()
{
    impl->stop();
}

void HttpServer::wake_streams()
{
    impl->streams.wake();
}

} // namespace front
