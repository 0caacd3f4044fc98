#include "http_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

int connection_to(uint16_t port, const std::string &sent)
{
    const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(client, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    // Who is turned away may close the connection before all of it is sent.
    send(client, sent.data(), sent.size(), MSG_NOSIGNAL);
    return client;
}

std::string answer_of(uint16_t port, const std::string &sent)
{
    const int client = connection_to(port, sent);
    std::string received;
    char bytes[4096];
    for (ssize_t count; (count = recv(client, bytes, sizeof bytes, 0)) > 0;)
        received.append(bytes, static_cast<size_t>(count));
    close(client);
    return received;
}

std::string http_get(uint16_t port, const std::string &path, const std::string &lines, const std::string &method)
{
    return answer_of(port,
                     method + " " + path + " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n" + lines + "\r\n");
}

std::string http_post(uint16_t port, const std::string &path, const std::string &body, const std::string &lines)
{
    return http_get(port, path,
                    lines + "Content-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
                        "\r\n\r\n" + body,
                    "POST");
}

std::string body_of(const std::string &answer)
{
    const size_t end = answer.find("\r\n\r\n");
    return end == answer.npos ? "" : answer.substr(end + 4);
}
