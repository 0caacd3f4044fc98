#include "http/address.h"

#include <cstring>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace front
{

SocketAddress address_of(const std::string &text, uint16_t port)
{
    SocketAddress address;
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

std::string text_of(const sockaddr &address)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (address.sa_family == AF_INET) {
        inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in &>(address).sin_addr, text, sizeof text);
    } else if (address.sa_family == AF_INET6) {
        const in6_addr &six = reinterpret_cast<const sockaddr_in6 &>(address).sin6_addr;
        if (IN6_IS_ADDR_V4MAPPED(&six))
            inet_ntop(AF_INET, &six.s6_addr[12], text, sizeof text);
        else
            inet_ntop(AF_INET6, &six, text, sizeof text);
    }
    return text;
}

bool is_address(const std::string &text)
{
    in6_addr any;
    return inet_pton(AF_INET, text.c_str(), &any) == 1 || inet_pton(AF_INET6, text.c_str(), &any) == 1;
}

bool is_of_this_machine(const std::string &address)
{
    return address == "::1" || (is_address(address) && address.starts_with("127."));
}

} // namespace front
