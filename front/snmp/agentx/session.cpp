#include "snmp/agentx/session.h"

#include <utility>

#include "snmp/agentx/values.h"

namespace front::snmp::agentx
{
namespace
{

constexpr size_t most_sets = 16; // that are under way at a time

const Oid trap_oid{1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

Header header_of_response(const Header &header)
{
    Header response = header;
    response.type = PduType::response;
    response.flags = header.flags & Header::network_order;
    return response;
}

Writer response_to(const Header &header, Error error, size_t index)
{
    Writer writer(header_of_response(header));
    writer.u32(0); // only the master's own count of time counts
    writer.u16(static_cast<uint16_t>(error));
    writer.u16(static_cast<uint16_t>(index));
    return writer;
}

} // namespace

Session::Session(Plan wanted, Permit permitted) : plan(std::move(wanted)), permit(std::move(permitted))
{
    Writer writer = writer_of(PduType::open);
    writer.u8(plan.timeout);
    for (int reserved = 0; reserved < 3; ++reserved)
        writer.u8(0);
    writer.oid(plan.id);
    writer.octets(plan.description);
    send_and_wait(std::move(writer));
}

Writer Session::writer_of(PduType type)
{
    return Writer({.type = type,
                   .flags = Header::network_order,
                   .session = id,
                   .transaction = 0,
                   .packet = ++last_packet,
                   .length = 0});
}

void Session::send_and_wait(Writer writer)
{
    const std::string bytes = writer.finish();
    awaited = {last_packet, static_cast<PduType>(bytes[1])};
    output += bytes;
}

void Session::register_next()
{
    if (registered == plan.regions.size()) {
        now = State::open;
        return;
    }
    Writer writer = writer_of(PduType::register_region);
    writer.u8(plan.timeout);
    writer.u8(plan.priority);
    writer.u8(0); // it is one region, and no range of them
    writer.u8(0);
    writer.oid(plan.regions[registered++]);
    send_and_wait(std::move(writer));
}

void Session::notify(const Notification &notification)
{
    Writer writer = writer_of(PduType::notify);
    writer.binding(trap_oid, {.type = Type::oid, .oid = notification.name});
    for (const auto &[name, value] : notification.objects)
        writer.binding(name, value);
    send_and_wait(std::move(writer));
}

void Session::close(CloseReason reason, std::string text)
{
    if (now == State::closed) return;
    Writer writer = writer_of(PduType::close);
    writer.u8(static_cast<uint8_t>(reason));
    for (int reserved = 0; reserved < 3; ++reserved)
        writer.u8(0);
    output += writer.finish();
    why_closed = std::move(text);
    now = State::closed;
}

void Session::receive(std::string_view bytes, const Objects &objects)
{
    input += bytes;
    size_t done = 0;
    try {
        while (now != State::closed && input.size() - done >= Header::size) {
            const std::string_view rest = std::string_view(input).substr(done);
            const Header header = read_header(rest);
            if (rest.size() - Header::size < header.length) break;
            handle(header, rest.substr(Header::size, header.length), objects);
            done += Header::size + header.length;
        }
    } catch (const Malformed &error) {
        close(CloseReason::parse_error, "it sends what is not AgentX: " + std::string(error.what()));
    }
    input.erase(0, done);
}

void Session::handle(const Header &header, std::string_view payload, const Objects &objects)
{
    const Reader reader(payload, header.order());
    if (header.type == PduType::response) return take_response(header, reader);
    if (header.type == PduType::close && header.session == id) {
        const auto reason = payload.empty() ? CloseReason::other : static_cast<CloseReason>(payload[0]);
        why_closed = "it closed the session, because " + std::string(text_of(reason));
        now = State::closed;
        return;
    }
    if (header.session != id || now == State::opening) return respond(header, Error::not_open);
    try {
        answer(header, reader, objects);
    } catch (const Malformed &) {
        respond(header, Error::parse);
    }
}

void Session::take_response(const Header &header, Reader reader)
{
    if (!awaited || awaited->packet != header.packet) return; // it was not waited for any more
    const PduType type = awaited->type;
    master_up_time = reader.u32();
    const auto error = static_cast<Error>(reader.u16());
    awaited.reset();
    if (type == PduType::open) {
        if (error != Error::none)
            return close(CloseReason::other, "it refuses a session: " + std::string(text_of(error)));
        id = header.session;
        now = State::registering;
        register_next();
    } else if (type == PduType::register_region) {
        if (error != Error::none) refusals.push_back({plan.regions[registered - 1], error});
        register_next();
    } else if (type == PduType::notify) {
        answer_to_notification = error;
    } else if (error != Error::none) {
        close(CloseReason::other, "it knows the session no more: " + std::string(text_of(error)));
    }
}

void Session::answer(const Header &header, Reader reader, const Objects &objects)
{
    // The sets have no context; those that follow a test have no payload at all.
    if (header.flags & Header::with_context) return respond(header, Error::unsupported_context);
    switch (header.type) {
    case PduType::get:
    case PduType::get_next:
    case PduType::get_bulk:
        return answer_values(header, reader, objects);
    case PduType::test_set:
        return answer_test(header, reader, objects);
    case PduType::commit_set:
        return answer_commit(header);
    case PduType::undo_set:
        return answer_undo(header);
    case PduType::cleanup_set:
        sets.erase(header.transaction);
        return;
    default:
        return respond(header, Error::processing);
    }
}

void Session::answer_values(const Header &header, Reader reader, const Objects &objects)
{
    Writer writer = response_to(header, Error::none, 0);
    if (!write_values(writer, header.type, reader, objects)) return respond(header, Error::too_big);
    output += writer.finish();
}

void Session::answer_test(const Header &header, Reader reader, const Objects &objects)
{
    std::vector<Order> orders;
    for (size_t index = 1; !reader.at_end(); ++index) {
        const Binding wanted = reader.binding();
        if (!permit) return respond(header, Error::not_writable, index);
        const auto order = order_of(objects, plan.mib, wanted.name, wanted.value);
        if (const auto *const wrong = std::get_if<SetError>(&order))
            return respond(header, static_cast<Error>(*wrong), index);
        orders.push_back(std::get<Order>(order));
        if (const Error error = permit(orders.back()); error != Error::none) return respond(header, error, index);
    }
    if (sets.size() >= most_sets || sets.contains(header.transaction))
        return respond(header, Error::resource_unavailable, 1);
    sets[header.transaction].orders = std::move(orders);
    respond(header, Error::none);
}

void Session::answer_commit(const Header &header)
{
    const auto set = sets.find(header.transaction);
    if (set == sets.end()) return respond(header, Error::commit_failed, 1);
    if (std::exchange(set->second.running, true)) return; // it is asked again, and is answered once
    commits.push_back({header, set->second.orders});
}

void Session::answer_undo(const Header &header)
{
    const auto set = sets.find(header.transaction);
    const bool nothing = set == sets.end() || (!set->second.running && set->second.result.changed_nothing);
    respond(header, nothing ? Error::none : Error::undo_failed);
    if (set != sets.end()) sets.erase(set);
}

std::optional<Commit> Session::take_commit()
{
    if (commits.empty()) return {};
    Commit first = std::move(commits.front());
    commits.erase(commits.begin());
    return first;
}

void Session::committed(const Commit &commit, const Committed &result)
{
    const auto set = sets.find(commit.asked.transaction);
    if (set == sets.end() || now == State::closed) return; // the master waits no longer
    set->second.running = false;
    set->second.result = result;
    respond(commit.asked, result.failed ? Error::commit_failed : Error::none, result.failed);
}

void Session::respond(const Header &header, Error error, size_t index)
{
    if (header.type == PduType::cleanup_set) return; // it has no response
    output += response_to(header, error, index).finish();
}

} // namespace front::snmp::agentx
