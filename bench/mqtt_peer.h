// This file has the yardstick of what a fleet costs: a client of a broker with nothing around it. It has one
// connection, a poll loop of its own, and what MQTT 5 itself offers for requests and responses.
#pragma once

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <poll.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

// A Place is where a broker is, and whose certificate is shown to it.
struct Place {
    int port;
    std::string certificates; // a folder that `authority` made
    std::string name;
};

class Peer
{
public:
    struct Message {
        std::string topic, text, reply_to, correlation;
    };

    explicit Peer(const Place &place)
    {
        mosquitto_lib_init();
        peer = mosquitto_new(nullptr, true, this);
        if (!peer) die("mosquitto_new");
        check(mosquitto_int_option(peer, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5), "MQTT 5");
        check(mosquitto_int_option(peer, MOSQ_OPT_TCP_NODELAY, 1), "TCP_NODELAY");
        check(mosquitto_int_option(peer, MOSQ_OPT_RECEIVE_MAXIMUM, most_in_flight), "receive maximum");
        const std::string own = place.certificates + "/" + place.name;
        check(mosquitto_tls_set(peer, (place.certificates + "/ca.crt").c_str(), nullptr, (own + ".crt").c_str(),
                                (own + ".key").c_str(), nullptr),
              "TLS");
        mosquitto_connect_v5_callback_set(peer,
                                          [](mosquitto *, void *self, int reason, int, const mosquitto_property *) {
                                              check(reason, "CONNACK");
                                              static_cast<Peer *>(self)->awaited = false;
                                          });
        mosquitto_subscribe_v5_callback_set(
            peer, [](mosquitto *, void *self, int, int, const int *, const mosquitto_property *) {
                static_cast<Peer *>(self)->awaited = false;
            });
        mosquitto_publish_v5_callback_set(peer,
                                          [](mosquitto *, void *self, int, int reason, const mosquitto_property *) {
                                              if (reason >= MQTT_RC_UNSPECIFIED) check(reason, "PUBACK");
                                              static_cast<Peer *>(self)->unacknowledged -= 1;
                                          });
        mosquitto_message_v5_callback_set(peer, take);
        check(mosquitto_connect_bind_v5(peer, "127.0.0.1", place.port, 60, nullptr, nullptr), "connect");
        await([this] { return !awaited; });
    }
    ~Peer() { mosquitto_destroy(peer); }
    Peer(const Peer &) = delete;

    void subscribe(const std::string &topic)
    {
        awaited = true;
        check(mosquitto_subscribe_v5(peer, nullptr, topic.c_str(), 1, 0, nullptr), "subscribe");
        await([this] { return !awaited; });
    }

    // `reply_to` and `correlation` are left out where they are empty.
    void publish(const std::string &topic, const std::string &text, const std::string &reply_to,
                 const std::string &correlation, bool retained = false)
    {
        mosquitto_property *properties = nullptr;
        if (!reply_to.empty())
            check(mosquitto_property_add_string(&properties, MQTT_PROP_RESPONSE_TOPIC, reply_to.c_str()), "property");
        if (!correlation.empty())
            check(mosquitto_property_add_binary(&properties, MQTT_PROP_CORRELATION_DATA, correlation.data(),
                                                static_cast<uint16_t>(correlation.size())),
                  "property");
        unacknowledged += 1;
        check(mosquitto_publish_v5(peer, nullptr, topic.c_str(), static_cast<int>(text.size()), text.data(), 1,
                                   retained, properties),
              "publish");
        mosquitto_property_free_all(&properties);
    }

    // What came is given to this function.
    std::function<void(const Message &)> on_message;

    size_t waiting() const { return unacknowledged; }

    // Lets the connection work until it is so. A broker that is silent for a minute is an error.
    void await(const std::function<bool()> &is_so)
    {
        while (!is_so()) {
            const short events = mosquitto_want_write(peer) ? POLLIN | POLLOUT : POLLIN;
            pollfd ready{.fd = mosquitto_socket(peer), .events = events, .revents = 0};
            if (poll(&ready, 1, patience) != 1) die("the broker is silent");
            if (ready.revents & POLLOUT) check(mosquitto_loop_write(peer, 1), "write");
            if (ready.revents & ~POLLOUT) check(mosquitto_loop_read(peer, 1), "read");
            check(mosquitto_loop_misc(peer), "connection");
        }
    }

private:
    static constexpr int patience = 60'000; // milliseconds
    static constexpr int most_in_flight = 256;

    [[noreturn]] static void die(const char *what)
    {
        std::fprintf(stderr, "MQTT: %s\n", what);
        std::exit(1);
    }
    static void check(int result, const char *what)
    {
        if (result == MOSQ_ERR_SUCCESS) return;
        std::fprintf(stderr, "MQTT: %s: %d\n", what, result);
        std::exit(1);
    }

    static void take(mosquitto *, void *self, const mosquitto_message *message, const mosquitto_property *properties)
    {
        Peer &peer = *static_cast<Peer *>(self);
        if (!peer.on_message) return;
        Message taken{
            message->topic, {static_cast<const char *>(message->payload), size_t(message->payloadlen)}, {}, {}};
        char *text = nullptr;
        if (mosquitto_property_read_string(properties, MQTT_PROP_RESPONSE_TOPIC, &text, false)) taken.reply_to = text;
        std::free(text);
        void *data = nullptr;
        uint16_t size = 0;
        if (mosquitto_property_read_binary(properties, MQTT_PROP_CORRELATION_DATA, &data, &size, false))
            taken.correlation.assign(static_cast<const char *>(data), size);
        std::free(data);
        peer.on_message(taken);
    }

    mosquitto *peer;
    bool awaited = true; // CONNACK or SUBACK
    size_t unacknowledged = 0;
};
