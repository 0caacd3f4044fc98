#include "master.h"

#include <algorithm>
#include <stdexcept>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "snmp/core/oid.h"

using namespace front::snmp;
using namespace front::snmp::agentx;

namespace
{

constexpr uint32_t session_id = 5;
constexpr int patience = 30'000; // milliseconds

void wait_for(int descriptor, const char *what)
{
    pollfd ready{descriptor, POLLIN, 0};
    if (poll(&ready, 1, patience) != 1) throw std::runtime_error(std::string("no ") + what + " came");
}

} // namespace

Master::Master(std::string socket_path)
    : path(std::move(socket_path)), listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(path.c_str());
    if (bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address) || listen(listener, 5))
        throw std::runtime_error("cannot listen on " + path);
}

Master::~Master()
{
    drop_subagent();
    close(listener);
    unlink(path.c_str());
}

std::vector<Oid> Master::take_subagent(size_t regions, Error error)
{
    wait_for(listener, "subagent");
    connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    respond(next_of(PduType::open).header, Error::none);
    std::vector<Oid> registered(regions);
    for (Oid &region : registered) {
        const Pdu pdu = next_of(PduType::register_region);
        Reader reader(pdu.payload, pdu.header.order());
        reader.skip(4);
        reader.oid(region);
        respond(pdu.header, error);
    }
    return registered;
}

void Master::drop_subagent()
{
    if (connection >= 0) close(connection);
    connection = -1;
    told.clear();
}

void Master::send(const std::string &bytes) const
{
    if (::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("the subagent is gone");
}

std::string Master::read_bytes(size_t count) const
{
    std::string bytes(count, '\0');
    for (size_t done = 0; done < count;) {
        wait_for(connection, "PDU");
        const ssize_t more = recv(connection, bytes.data() + done, count - done, 0);
        if (more <= 0) throw std::runtime_error("the subagent is gone");
        done += static_cast<size_t>(more);
    }
    return bytes;
}

Master::Pdu Master::read_pdu()
{
    const Header header = read_header(read_bytes(Header::size));
    return {header, read_bytes(header.length)};
}

Master::Pdu Master::next_of(PduType type)
{
    while (true) {
        const auto found = std::ranges::find_if(told, [&](const Pdu &pdu) { return pdu.header.type == type; });
        if (found != told.end()) {
            Pdu pdu = std::move(*found);
            told.erase(found);
            return pdu;
        }
        told.push_back(read_pdu());
        // What it is told it answers at once, because the subagent waits for that.
        const Header &header = told.back().header;
        if (header.type == PduType::notify || header.type == PduType::ping) respond(header, Error::none);
    }
}

void Master::respond(const Header &header, Error error) const
{
    Header response = header;
    response.type = PduType::response;
    response.session = session_id;
    Writer writer(response);
    writer.u32(100);
    writer.u16(static_cast<uint16_t>(error));
    writer.u16(0);
    send(writer.finish());
}

Writer Master::request(PduType type)
{
    return Writer({.type = type, .flags = 0, .session = session_id, .transaction = 1, .packet = ++packet, .length = 0});
}

std::string Master::answer_to(Writer asked)
{
    send(asked.finish());
    return next_of(PduType::response).payload;
}

Error Master::error_of(const std::string &response) const
{
    Reader reader(response, ByteOrder::little);
    reader.skip(4);
    return static_cast<Error>(reader.u16());
}

std::vector<Binding> Master::walk(const Oid &top)
{
    std::vector<Binding> found;
    Oid at = top, end = top;
    ++end.back();
    while (true) {
        Writer next = request(PduType::get_next);
        next.oid(at);
        next.oid(end);
        const std::string response = answer_to(std::move(next));
        if (error_of(response) != Error::none) throw std::runtime_error("a walk ends with an error");
        Reader reader(response, ByteOrder::little);
        reader.skip(8);
        Reader type = reader;
        if (constexpr uint16_t end_of_view = 130; type.u16() == end_of_view) return found;
        found.push_back(reader.binding());
        at = found.back().name;
    }
}

Error Master::set(const Binding &binding)
{
    Writer test = request(PduType::test_set);
    test.binding(binding.name, binding.value);
    Error error = error_of(answer_to(std::move(test)));
    if (error == Error::none) error = error_of(answer_to(request(PduType::commit_set)));
    send(request(PduType::cleanup_set).finish());
    return error;
}

Oid Master::take_notification()
{
    const Pdu pdu = next_of(PduType::notify);
    Reader reader(pdu.payload, pdu.header.order());
    return reader.binding().value.oid;
}

void Master::expect_leave()
{
    next_of(PduType::close);
}
