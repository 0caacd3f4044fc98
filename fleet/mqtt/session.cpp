#include "fleet/mqtt/session.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace fleet
{
namespace
{

// How many messages may be on their way to or from a broker that allows so many.
constexpr int most_in_flight = 1000;

constexpr int first_error = 128; // of the reasons of MQTT 5

// Properties are a list that has to be freed.
class Properties
{
public:
    Properties() = default;
    Properties(const Properties &) = delete;
    Properties &operator=(const Properties &) = delete;
    ~Properties() { mosquitto_property_free_all(&list); }

    explicit Properties(const Message &message)
    {
        if (!message.response_topic.empty())
            mosquitto_property_add_string(&list, MQTT_PROP_RESPONSE_TOPIC, message.response_topic.c_str());
        if (!message.correlation.empty())
            mosquitto_property_add_binary(&list, MQTT_PROP_CORRELATION_DATA, message.correlation.data(),
                                          static_cast<uint16_t>(message.correlation.size()));
        if (message.expiry) mosquitto_property_add_int32(&list, MQTT_PROP_MESSAGE_EXPIRY_INTERVAL, *message.expiry);
    }

    const mosquitto_property *get() const { return list; }
    // Gives the list to whoever frees it.
    mosquitto_property *release() { return std::exchange(list, nullptr); }

private:
    mosquitto_property *list = nullptr;
};

Message message_of(const mosquitto_message &received, const mosquitto_property *properties)
{
    Message message{.topic = received.topic,
                    .payload = {static_cast<const char *>(received.payload), static_cast<size_t>(received.payloadlen)},
                    .retained = received.retain};
    char *topic = nullptr;
    if (mosquitto_property_read_string(properties, MQTT_PROP_RESPONSE_TOPIC, &topic, false)) {
        message.response_topic = topic;
        std::free(topic);
    }
    void *bytes = nullptr;
    uint16_t length = 0;
    if (mosquitto_property_read_binary(properties, MQTT_PROP_CORRELATION_DATA, &bytes, &length, false)) {
        message.correlation.assign(static_cast<const char *>(bytes), length);
        std::free(bytes);
    }
    uint32_t expiry = 0;
    if (mosquitto_property_read_int32(properties, MQTT_PROP_MESSAGE_EXPIRY_INTERVAL, &expiry, false))
        message.expiry = expiry;
    return message;
}

// Nobody is asked for the password of a key.
int no_password(char *, int, int, void *)
{
    return 0;
}

std::string text_of(int result)
{
    return result == MOSQ_ERR_ERRNO ? std::strerror(errno) : mosquitto_strerror(result);
}

} // namespace

// The library calls these while it is called itself.
struct Session::Callbacks {
    static Session &of(void *context) { return *static_cast<Session *>(context); }

    static void connected(mosquitto *used, void *context, int reason, int, const mosquitto_property *)
    {
        // What fails before says why in the log only. Later the library would write a line for each packet.
        mosquitto_log_callback_set(used, nullptr);
        if (reason == 0)
            of(context).heard.push_back(Accepted{});
        else
            of(context).failure = std::string("the broker refuses: ") + mosquitto_reason_string(reason);
    }
    static void disconnected(mosquitto *, void *context, int reason, const mosquitto_property *)
    {
        if (reason >= first_error && of(context).failure.empty())
            of(context).failure = std::string("the broker ends the connection: ") + mosquitto_reason_string(reason);
    }
    static void subscribed(mosquitto *, void *context, int number, int count, const int *granted,
                           const mosquitto_property *)
    {
        size_t refused = 0;
        for (int i = 0; i < count; ++i)
            refused += granted[i] >= first_error;
        of(context).heard.push_back(Subscribed{number, refused});
    }
    static void acknowledged(mosquitto *, void *context, int number, int reason, const mosquitto_property *)
    {
        of(context).heard.push_back(Acknowledged{number, reason});
    }
    static void arrived(mosquitto *, void *context, const mosquitto_message *message,
                        const mosquitto_property *properties)
    {
        of(context).heard.push_back(message_of(*message, properties));
    }
    static void logged(mosquitto *, void *context, int level, const char *text)
    {
        if (level == MOSQ_LOG_ERR) of(context).logged = text;
    }
};

void Session::Destroy::operator()(mosquitto *handle) const
{
    mosquitto_destroy(handle);
}

Session::Session(const Broker &broker, const std::string &client, const std::optional<Message> &will)
{
    static const int ready = mosquitto_lib_init();
    handle.reset(ready == MOSQ_ERR_SUCCESS ? mosquitto_new(client.c_str(), true, this) : nullptr);
    if (!handle) throw std::runtime_error("libmosquitto cannot be used: " + text_of(ready ? ready : MOSQ_ERR_ERRNO));
    mosquitto *const made = handle.get();
    mosquitto_int_option(made, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    mosquitto_int_option(made, MOSQ_OPT_RECEIVE_MAXIMUM, most_in_flight);
    mosquitto_int_option(made, MOSQ_OPT_SEND_MAXIMUM, most_in_flight);
    if (broker.socket.empty()) mosquitto_int_option(made, MOSQ_OPT_TCP_NODELAY, 1);
    mosquitto_connect_v5_callback_set(made, Callbacks::connected);
    mosquitto_disconnect_v5_callback_set(made, Callbacks::disconnected);
    mosquitto_subscribe_v5_callback_set(made, Callbacks::subscribed);
    mosquitto_publish_v5_callback_set(made, Callbacks::acknowledged);
    mosquitto_message_v5_callback_set(made, Callbacks::arrived);
    mosquitto_log_callback_set(made, Callbacks::logged);
    if (will) {
        Properties properties(*will);
        note(mosquitto_will_set_v5(made, will->topic.c_str(), static_cast<int>(will->payload.size()),
                                   will->payload.data(), 1, will->retained, properties.release()));
    }
    const auto or_null = [](const std::string &file) { return file.empty() ? nullptr : file.c_str(); };
    if (!broker.ca.empty() && failure.empty())
        note(mosquitto_tls_set(made, broker.ca.c_str(), nullptr, or_null(broker.certificate), or_null(broker.key),
                               no_password));
    if (!failure.empty()) return;
    const bool is_local = !broker.socket.empty();
    note(mosquitto_connect_bind_async(made, is_local ? broker.socket.c_str() : broker.host.c_str(),
                                      is_local ? 0 : broker.port, broker.keepalive, nullptr));
}

Session::~Session() = default;

// What the library logged says more than its result, as of certificates.
void Session::note(int result)
{
    if (result == MOSQ_ERR_SUCCESS || result == MOSQ_ERR_CONN_PENDING || !failure.empty()) return;
    failure = logged.empty() ? text_of(result) : logged;
}

int Session::descriptor() const
{
    return mosquitto_socket(handle.get());
}

bool Session::wants_to_write() const
{
    return mosquitto_want_write(handle.get());
}

void Session::go_on(bool readable, bool writable)
{
    mosquitto *const used = handle.get();
    if (readable) note(mosquitto_loop_read(used, 1));
    if (writable && descriptor() >= 0) note(mosquitto_loop_write(used, 1));
    if (descriptor() >= 0) note(mosquitto_loop_misc(used));
}

std::vector<Heard> Session::take_heard()
{
    return std::exchange(heard, {});
}

std::string Session::lost() const
{
    if (!failure.empty() || descriptor() >= 0) return failure;
    return ended ? "it was ended" : "the connection was lost";
}

int Session::publish(const Message &message)
{
    if (descriptor() < 0) return 0;
    const Properties properties(message);
    int number = 0;
    const int result =
        mosquitto_publish_v5(handle.get(), &number, message.topic.c_str(), static_cast<int>(message.payload.size()),
                             message.payload.data(), 1, message.retained, properties.get());
    switch (result) {
    case MOSQ_ERR_SUCCESS:
        return number;
    case MOSQ_ERR_INVAL:
    case MOSQ_ERR_PAYLOAD_SIZE:
    case MOSQ_ERR_MALFORMED_UTF8:
    case MOSQ_ERR_OVERSIZE_PACKET:
    case MOSQ_ERR_QOS_NOT_SUPPORTED:
    case MOSQ_ERR_RETAIN_NOT_SUPPORTED:
        throw std::runtime_error("the broker does not take a message to " + message.topic + ": " + text_of(result));
    default:
        note(result);
        return 0;
    }
}

int Session::subscribe(std::span<const std::string> topics)
{
    std::vector<char *> names;
    for (const std::string &topic : topics)
        names.push_back(const_cast<char *>(topic.c_str()));
    int number = 0;
    note(mosquitto_subscribe_multiple(handle.get(), &number, static_cast<int>(names.size()), names.data(), 1, 0,
                                      nullptr));
    return number;
}

void Session::unsubscribe(const std::string &topic)
{
    note(mosquitto_unsubscribe(handle.get(), nullptr, topic.c_str()));
}

void Session::end()
{
    ended = true;
    mosquitto_disconnect(handle.get());
}

} // namespace fleet
