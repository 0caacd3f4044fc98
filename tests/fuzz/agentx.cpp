// What a master agent sends to a session of AgentX, from its first byte on or after everything was registered.
#include <string>

#include "input.h"
#include "snmp/agentx/session.h"
#include "target.h"

namespace
{

using namespace front;
using namespace front::snmp;
using namespace front::snmp::agentx;

constexpr uint32_t session_id = 77;

std::shared_ptr<const Objects> objects_of_an_olt()
{
    auto snapshot = std::make_shared<Snapshot>();
    auto ports = std::make_shared<Rows<view::port_info>>();
    for (uint32_t number = 1; number <= 16; ++number)
        ports->rows.emplace_back().pon_port = number;
    snapshot->ports = ports;
    const Source olts[] = {{.index = 1, .name = "olt", .snapshot = snapshot}};
    return Mib(MibSettings()).objects(olts, {});
}

// Reads what the session says, and returns the header of its last PDU.
Header check(const std::string &said)
{
    Header last{};
    for (std::string_view rest = said; !rest.empty(); rest.remove_prefix(Header::size + last.length)) {
        last = read_header(rest);
        fuzz::require(rest.size() >= Header::size + last.length, "each PDU is complete");
    }
    return last;
}

// Answers what the session asks until everything is registered.
void open(Session &session, const Objects &objects)
{
    while (session.state() != Session::State::open) {
        Header header = check(session.take_output());
        header.type = PduType::response;
        header.session = session_id;
        Writer response(header);
        response.u32(0);
        response.u32(0); // no error
        session.receive(response.finish(), objects);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::shared_ptr<const Objects> objects = objects_of_an_olt();
    fuzz::Input input(data, size);
    const auto how = input.take<uint8_t>();
    const Oid own{1, 3, 6, 1, 4, 1, 8072, 9999, 9999};
    Session session({.mib = {}, .id = own, .description = "fuzz", .regions = {own}},
                    [how](const Order &) { return how & 2 ? Error::no_access : Error::none; });
    if (how & 1) open(session, *objects);
    if (how & 4) session.ping();
    while (!input.empty()) {
        const auto part = input.take_bytes(1 + 3 * how);
        session.receive({reinterpret_cast<const char *>(part.data()), part.size()}, *objects);
        check(session.take_output());
        while (auto commit = session.take_commit())
            session.committed(*commit, {.failed = how & 8u, .changed_nothing = (how & 16) == 0});
        check(session.take_output());
    }
    fuzz::require(session.state() != Session::State::closed || !session.reason().empty(), "an end has a reason");
    return 0;
}
