#include "http/server.h"

#include <cstring>
#include <stdexcept>
#include <string_view>

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace front
{
namespace
{

constexpr unsigned threads = 2;
constexpr unsigned most_connections = 128;
constexpr unsigned idle_limit = 30;                // seconds
constexpr size_t memory_of_connection = 16 * 1024; // bytes, for all that a client sends before its body

struct Address {
    sockaddr_storage storage{};
    socklen_t length = 0;
};

Address address_of(const std::string &text, uint16_t port)
{
    Address address;
    auto *const four = reinterpret_cast<sockaddr_in *>(&address.storage);
    auto *const six = reinterpret_cast<sockaddr_in6 *>(&address.storage);
    if (inet_pton(AF_INET, text.c_str(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = htons(port);
        address.length = sizeof *four;
    } else if (inet_pton(AF_INET6, text.c_str(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = htons(port);
        address.length = sizeof *six;
    } else {
        throw std::runtime_error(text + ": no IPv4 or IPv6 address");
    }
    return address;
}

void drop_body(void *body)
{
    delete static_cast<std::string *>(body);
}

MHD_Result send_response(MHD_Connection *connection, HttpResponse response)
{
    // A body can be long: the library has it until it is sent.
    auto body = std::make_unique<std::string>(std::move(response.body));
    MHD_Response *const made =
        MHD_create_response_from_buffer_with_free_callback_cls(body->size(), body->data(), drop_body, body.get());
    if (!made) return MHD_NO;
    static_cast<void>(body.release());
    MHD_add_response_header(made, MHD_HTTP_HEADER_CONTENT_TYPE, response.type.c_str());
    MHD_add_response_header(made, "X-Content-Type-Options", "nosniff");
    if (response.status == MHD_HTTP_METHOD_NOT_ALLOWED)
        MHD_add_response_header(made, MHD_HTTP_HEADER_ALLOW, "GET, HEAD");
    const MHD_Result result = MHD_queue_response(connection, response.status, made);
    MHD_destroy_response(made);
    return result;
}

MHD_Result add_to_query(void *query, MHD_ValueKind, const char *name, const char *value)
{
    (*static_cast<std::map<std::string, std::string> *>(query))[name] = value ? value : "";
    return MHD_YES;
}

} // namespace

struct HttpServer::Impl {
    Handler handler;
    MHD_Daemon *daemon = nullptr;

    static MHD_Result answer(void *self, MHD_Connection *connection, const char *url, const char *method, const char *,
                             const char *, size_t *upload_size, void **context)
    {
        // The library calls once for the head of a request, and again when the whole request is there.
        static int head_seen;
        if (!*context) {
            *context = &head_seen;
            return MHD_YES;
        }
        if (*upload_size > 0) {
            *upload_size = 0; // nothing that is read takes a body
            return MHD_YES;
        }
        const std::string_view verb = method;
        if (verb != MHD_HTTP_METHOD_GET && verb != MHD_HTTP_METHOD_HEAD)
            return send_response(connection, {.status = MHD_HTTP_METHOD_NOT_ALLOWED, .body = "GET it\n"});
        HttpRequest request{.path = url, .accept = {}, .query = {}};
        if (const char *accept = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, MHD_HTTP_HEADER_ACCEPT))
            request.accept = accept;
        MHD_get_connection_values(connection, MHD_GET_ARGUMENT_KIND, add_to_query, &request.query);
        try {
            return send_response(connection, static_cast<Impl *>(self)->handler(request));
        } catch (const std::exception &) {
            return send_response(connection,
                                 {.status = MHD_HTTP_INTERNAL_SERVER_ERROR, .body = "it cannot be answered now\n"});
        }
    }
};

HttpServer::HttpServer(const std::string &address, uint16_t port, Handler handler) : impl(std::make_unique<Impl>())
{
    impl->handler = std::move(handler);
    Address at = address_of(address, port);
    const unsigned family = at.storage.ss_family == AF_INET6 ? MHD_USE_IPv6 : MHD_NO_FLAG;
    impl->daemon =
        MHD_start_daemon(family | MHD_USE_AUTO_INTERNAL_THREAD, port, nullptr, nullptr, &Impl::answer, impl.get(),
                         MHD_OPTION_SOCK_ADDR, reinterpret_cast<sockaddr *>(&at.storage), MHD_OPTION_THREAD_POOL_SIZE,
                         threads, MHD_OPTION_CONNECTION_LIMIT, most_connections, MHD_OPTION_CONNECTION_TIMEOUT,
                         idle_limit, MHD_OPTION_CONNECTION_MEMORY_LIMIT, memory_of_connection, MHD_OPTION_END);
    if (!impl->daemon)
        throw std::runtime_error("cannot listen on " + address + " port " + std::to_string(port) + ": " +
                                 std::strerror(errno));
    const MHD_DaemonInfo *const info = MHD_get_daemon_info(impl->daemon, MHD_DAEMON_INFO_BIND_PORT);
    bound = info ? info->port : port;
}

HttpServer::~HttpServer()
{
    MHD_stop_daemon(impl->daemon);
}

} // namespace front
