#include "http_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

std::string answer_of(uint16_t port, const std::string &sent)
{
    const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(client, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(send(client, sent.data(), sent.size(), MSG_NOSIGNAL), static_cast<ssize_t>(sent.size()));
    std::string received;
    char bytes[4096];
    for (ssize_t count; (count = recv(client, bytes, sizeof bytes, 0)) > 0;)
        received.append(bytes, static_cast<size_t>(count));
    close(client);
    return received;
}

std::string http_get(uint16_t port, const std::string &path, const std::string &lines, const std::string &method)
{
    return answer_of(port, method + " " + path + " HTTP/1.1\r\nHost: x\r\nConnection: close\r\n" + lines + "\r\n");
}
