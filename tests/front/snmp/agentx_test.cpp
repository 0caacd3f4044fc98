// These tests are the master agent: they answer a session, ask it, and send it what no master should send.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "snmp/agentx/session.h"
#include "text/hex.h"

namespace
{

using namespace front;
using namespace front::snmp;
using namespace front::snmp::agentx;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

const Oid root = MibSettings().root;
constexpr uint32_t session_id = 77;

Oid below(Oid top, const Oid &rest)
{
    top.insert(top.end(), rest.begin(), rest.end());
    return top;
}

const Oid power = below(root, {1, 2, 1, 5}); // of ports

std::shared_ptr<const Objects> two_ports()
{
    auto snapshot = std::make_shared<Snapshot>();
    auto table = std::make_shared<Rows<view::port_info>>();
    for (const uint32_t number : {1u, 2u}) {
        view::port_info &port = table->rows.emplace_back();
        port.pon_port = number;
        port.tx_power = -3.25 - number;
    }
    snapshot->ports = table;
    auto onus = std::make_shared<Rows<view::onu_info>>();
    view::onu_info &onu = onus->rows.emplace_back();
    onu.pon_port = 1;
    onu.onu_id = 5;
    onu.mac = {2, 0, 0, 0, 0, 1};
    onu.state = "online";
    snapshot->onus = onus;
    const Source olts[] = {{.index = 1, .name = "north", .snapshot = snapshot}};
    return Mib(MibSettings()).objects(olts, {});
}

std::string hex(std::string_view bytes)
{
    return text::to_hex({reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size()});
}

// What the session says: a PDU with its payload.
struct Said {
    Header header;
    std::string payload;

    Reader reader() const { return {payload, header.order()}; }
    Error error() const
    {
        Reader response = reader();
        response.skip(4);
        return static_cast<Error>(response.u16());
    }
    uint16_t index() const
    {
        Reader response = reader();
        response.skip(6);
        return response.u16();
    }
    // Returns the names of what a response has, and the numbers or exceptions.
    std::vector<std::pair<Oid, uint64_t>> values() const
    {
        Reader response = reader();
        response.skip(8);
        std::vector<std::pair<Oid, uint64_t>> found;
        while (!response.at_end()) {
            Reader before = response;
            const uint16_t type = before.u16();
            if (type >= 128) {
                Oid name;
                response.skip(4);
                response.oid(name);
                found.emplace_back(name, type);
            } else {
                Binding binding = response.binding();
                found.emplace_back(binding.name, binding.value.number);
            }
        }
        return found;
    }
};

constexpr uint64_t no_object = 128, no_instance = 129, end_of_view = 130;
// As a 32-bit integer.
constexpr uint64_t minus(uint64_t number)
{
    return static_cast<uint32_t>(-number);
}

class Agentx : public testing::TestWithParam<ByteOrder>
{
protected:
    static std::vector<Said> read_all(std::string_view bytes)
    {
        std::vector<Said> all;
        while (!bytes.empty()) {
            const Header header = read_header(bytes);
            all.push_back({header, std::string(bytes.substr(Header::size, header.length))});
            bytes.remove_prefix(Header::size + header.length);
        }
        return all;
    }
    std::vector<Said> said() { return read_all(session.take_output()); }
    Said said_once()
    {
        std::vector<Said> all = said();
        EXPECT_THAT(all, SizeIs(1));
        return all.empty() ? Said{} : all[0];
    }

    Writer pdu(PduType type, uint32_t transaction = 5)
    {
        const bool big = GetParam() == ByteOrder::big;
        return Writer({.type = type,
                       .flags = big ? Header::network_order : uint8_t{0},
                       .session = session_id,
                       .transaction = transaction,
                       .packet = ++packet,
                       .length = 0});
    }
    void send(Writer writer) { session.receive(writer.finish(), *objects); }
    Said ask(Writer writer)
    {
        send(std::move(writer));
        return said_once();
    }
    static void range(Writer &writer, const Oid &start, bool included = false, const Oid &end = {})
    {
        writer.oid(start, included);
        writer.oid(end);
    }

    // Answers what the session asked last.
    void respond(const Header &asked, Error error = Error::none)
    {
        Header header = asked;
        header.type = PduType::response;
        header.session = session_id;
        header.flags = GetParam() == ByteOrder::big ? Header::network_order : uint8_t{0};
        Writer writer(header);
        writer.u32(4200);
        writer.u16(static_cast<uint16_t>(error));
        writer.u16(0);
        send(std::move(writer));
    }
    // Answers until everything is registered.
    void open()
    {
        while (session.state() != Session::State::open)
            respond(said_once().header);
    }

    std::shared_ptr<const Objects> objects = two_ports();
    uint32_t packet = 900;
    Error permitted = Error::none;
    Session session{
        {.mib = {}, .id = root, .description = "test", .regions = {root, {1, 3, 6, 1, 2, 1, 2, 2}}, .timeout = 5},
        [this](const Order &) { return permitted; }};
};

INSTANTIATE_TEST_SUITE_P(, Agentx, testing::Values(ByteOrder::little, ByteOrder::big),
                         [](const auto &order) { return order.param == ByteOrder::big ? "Big" : "Little"; });

TEST_P(Agentx, OpensItselfAndRegistersItsRegions)
{
    // The numbers of RFC 2741: version, type and flags; session, transaction, packet and length; the time-out; the
    // object identifier with its prefix; the description.
    EXPECT_EQ(hex(session.take_output()), "01011000"
                                          "000000000000000000000001"
                                          "00000020"
                                          "05000000"
                                          "04040000"
                                          "0000000100001f88"
                                          "0000270f0000270f"
                                          "0000000474657374");
    EXPECT_TRUE(session.waits());
    respond({.type = PduType::open, .flags = 0, .session = 0, .transaction = 0, .packet = 1, .length = 0});
    EXPECT_EQ(session.up_time(), 4200u);
    EXPECT_EQ(hex(session.take_output()), "01031000"
                                          "0000004d0000000000000002"
                                          "00000018"
                                          "057f0000"
                                          "04040000"
                                          "0000000100001f88"
                                          "0000270f0000270f");
    respond({.type = PduType::register_region, .flags = 0, .session = 0, .transaction = 0, .packet = 2, .length = 0});
    const Said second = said_once();
    EXPECT_EQ(second.header.type, PduType::register_region);
    respond(second.header, Error::duplicate_registration);
    EXPECT_EQ(session.state(), Session::State::open);
    EXPECT_FALSE(session.waits());
    ASSERT_THAT(session.refused(), SizeIs(1));
    EXPECT_EQ(session.refused()[0].region, (Oid{1, 3, 6, 1, 2, 1, 2, 2}));
    EXPECT_EQ(session.refused()[0].error, Error::duplicate_registration);
}

TEST_P(Agentx, IsClosedWhereTheMasterRefuses)
{
    respond(said_once().header, Error::open_failed);
    EXPECT_EQ(session.state(), Session::State::closed);
    EXPECT_EQ(session.reason(), "it refuses a session: the session cannot be opened");
}

TEST_P(Agentx, AnswersWhatThereIsAndWhatThereIsNot)
{
    open();
    Writer get = pdu(PduType::get);
    range(get, below(power, {1, 2}));
    range(get, below(power, {1, 9}));
    range(get, below(root, {99, 1}));
    const Said answer = ask(std::move(get));
    EXPECT_EQ(answer.header.type, PduType::response);
    EXPECT_EQ(answer.header.order(), GetParam());
    EXPECT_EQ(answer.header.session, session_id);
    EXPECT_EQ(answer.header.transaction, 5u);
    EXPECT_EQ(answer.header.packet, packet);
    EXPECT_EQ(answer.error(), Error::none);
    EXPECT_THAT(answer.values(),
                ElementsAre(std::pair(below(power, {1, 2}), minus(525)), std::pair(below(power, {1, 9}), no_instance),
                            std::pair(below(root, {99, 1}), no_object)));
}

TEST_P(Agentx, AnswersWhatIsNext)
{
    open();
    Writer next = pdu(PduType::get_next);
    range(next, power);
    range(next, below(power, {1, 2}), true);
    range(next, below(power, {1, 2}), false, below(power, {2}));
    EXPECT_THAT(ask(std::move(next)).values(),
                ElementsAre(std::pair(below(power, {1, 1}), minus(425)), std::pair(below(power, {1, 2}), minus(525)),
                            std::pair(below(power, {1, 2}), end_of_view)));
}

TEST_P(Agentx, AnswersInBulk)
{
    open();
    Writer bulk = pdu(PduType::get_bulk);
    bulk.u16(1);
    bulk.u16(9);
    range(bulk, power);
    range(bulk, power, false, below(power, {9}));
    EXPECT_THAT(ask(std::move(bulk)).values(),
                ElementsAre(std::pair(below(power, {1, 1}), minus(425)), std::pair(below(power, {1, 1}), minus(425)),
                            std::pair(below(power, {1, 2}), minus(525)), std::pair(below(power, {1, 2}), end_of_view)));
}

TEST_P(Agentx, AnswersNoMoreThanThereIsRoomFor)
{
    open();
    Writer bulk = pdu(PduType::get_bulk);
    bulk.u16(0);
    bulk.u16(0xffff);
    for (int i = 0; i < 2000; ++i)
        range(bulk, power);
    EXPECT_LE(ask(std::move(bulk)).header.length, most_payload);
}

TEST_P(Agentx, TakesBytesAsTheyCome)
{
    open();
    Writer get = pdu(PduType::get);
    range(get, below(power, {1, 1}));
    for (const char byte : get.finish()) {
        EXPECT_EQ(session.take_output(), "");
        session.receive({&byte, 1}, *objects);
    }
    EXPECT_EQ(said_once().error(), Error::none);
}

TEST_P(Agentx, HasNoContexts)
{
    open();
    Writer get = pdu(PduType::get);
    Header header = read_header(get.finish());
    header.flags |= Header::with_context;
    Writer named(header);
    named.octets("elsewhere");
    range(named, power);
    EXPECT_EQ(ask(std::move(named)).error(), Error::unsupported_context);
}

TEST_P(Agentx, KnowsItsSessionOnly)
{
    open();
    Header header = read_header(pdu(PduType::get).finish());
    header.session = session_id + 1;
    EXPECT_EQ(ask(Writer(header)).error(), Error::not_open);
}

TEST_P(Agentx, RefusesWhatCannotBeRead)
{
    open();
    Writer cut = pdu(PduType::get);
    cut.u32(0xff000000); // 255 numbers that do not come
    EXPECT_EQ(ask(std::move(cut)).error(), Error::parse);
    Writer index = pdu(PduType::index_allocate);
    EXPECT_EQ(ask(std::move(index)).error(), Error::processing);
    Writer text = pdu(PduType::test_set);
    text.u32(0); // no type
    text.oid(power);
    EXPECT_EQ(ask(std::move(text)).error(), Error::parse);
    EXPECT_EQ(session.state(), Session::State::open);
}

TEST_P(Agentx, EndsWhereNoPduComes)
{
    open();
    session.receive("HTTP/1.1 400 Bad Request\r\n", *objects);
    EXPECT_EQ(session.state(), Session::State::closed);
    EXPECT_THAT(session.reason(), HasSubstr("a PDU has the version 72"));
    const Said close = said_once();
    EXPECT_EQ(close.header.type, PduType::close);
    EXPECT_EQ(static_cast<CloseReason>(close.payload[0]), CloseReason::parse_error);
}

TEST_P(Agentx, EndsWhereAPduIsTooLong)
{
    open();
    Header header = read_header(pdu(PduType::get).finish());
    std::string bytes = Writer(header).finish();
    for (size_t at = 16; at < 20; ++at)
        bytes[at] = '\x7f';
    session.receive(bytes, *objects);
    EXPECT_EQ(session.state(), Session::State::closed);
}

TEST_P(Agentx, EndsWhereTheMasterEndsIt)
{
    open();
    Writer close = pdu(PduType::close);
    close.u32(GetParam() == ByteOrder::big ? 5u << 24 : 5u);
    send(std::move(close));
    EXPECT_EQ(session.state(), Session::State::closed);
    EXPECT_EQ(session.reason(), "it closed the session, because it ends");
}

TEST_P(Agentx, TellsWhatHappenedAndHearsTheAnswer)
{
    open();
    session.notify(
        {.name = below(root, {0, 1}), .objects = {{power, {.type = Type::counter64, .number = 1ull << 40}}}});
    const Said told = said_once();
    EXPECT_EQ(told.header.type, PduType::notify);
    Reader reader = told.reader();
    const Binding name = reader.binding(), object = reader.binding();
    EXPECT_EQ(name, (Binding{{1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0}, {.type = Type::oid, .oid = below(root, {0, 1})}}));
    EXPECT_EQ(object.value.number, 1ull << 40);
    EXPECT_TRUE(reader.at_end());
    EXPECT_EQ(session.take_answer(), std::nullopt);
    respond(told.header);
    EXPECT_EQ(session.take_answer(), Error::none);
    EXPECT_EQ(session.take_answer(), std::nullopt);
}

// The way of a set that nothing speaks against.
const Oid name_of_onu = below(root, {1, 4, 1, 3, 1, 1, 5});
const Value new_name{.type = Type::octets, .octets = "customer 1207"};

TEST_P(Agentx, HandsOutWhatIsSetAndAnswersWhenItIsDone)
{
    open();
    Writer test = pdu(PduType::test_set);
    test.binding(name_of_onu, new_name);
    EXPECT_EQ(ask(std::move(test)).error(), Error::none);
    EXPECT_FALSE(session.take_commit());
    send(pdu(PduType::commit_set));
    EXPECT_THAT(said(), SizeIs(0)) << "others are answered until it is done";
    Writer get = pdu(PduType::get);
    range(get, power);
    EXPECT_EQ(ask(std::move(get)).error(), Error::none);
    const std::optional<Commit> commit = session.take_commit();
    ASSERT_TRUE(commit);
    ASSERT_THAT(commit->orders, SizeIs(1));
    EXPECT_EQ(commit->orders[0].olt_index, 1u);
    send(pdu(PduType::commit_set));
    EXPECT_FALSE(session.take_commit()) << "a master that asks again wants the same";
    session.committed(*commit, {});
    const Said done = said_once();
    EXPECT_EQ(done.header.transaction, 5u);
    EXPECT_EQ(done.header.packet, commit->asked.packet);
    EXPECT_EQ(done.error(), Error::none);
    send(pdu(PduType::cleanup_set));
    EXPECT_THAT(said(), SizeIs(0));
    EXPECT_EQ(ask(pdu(PduType::commit_set)).error(), Error::commit_failed) << "there is nothing left to commit";
}

TEST_P(Agentx, SaysWhetherAFailedSetIsUndone)
{
    open();
    for (const bool changed_nothing : {true, false}) {
        Writer test = pdu(PduType::test_set);
        test.binding(name_of_onu, new_name);
        EXPECT_EQ(ask(std::move(test)).error(), Error::none);
        send(pdu(PduType::commit_set));
        session.committed(session.take_commit().value(), {.failed = 1, .changed_nothing = changed_nothing});
        const Said failed = said_once();
        EXPECT_EQ(failed.error(), Error::commit_failed);
        EXPECT_EQ(failed.index(), 1);
        EXPECT_EQ(ask(pdu(PduType::undo_set)).error(), changed_nothing ? Error::none : Error::undo_failed);
    }
}

TEST_P(Agentx, CannotUndoWhatIsStillUnderWay)
{
    open();
    Writer test = pdu(PduType::test_set);
    test.binding(name_of_onu, new_name);
    EXPECT_EQ(ask(std::move(test)).error(), Error::none);
    send(pdu(PduType::commit_set));
    EXPECT_EQ(ask(pdu(PduType::undo_set)).error(), Error::undo_failed);
    session.committed(session.take_commit().value(), {});
    EXPECT_THAT(said(), SizeIs(0)) << "nobody waits for it any more";
}

TEST_P(Agentx, RefusesWhatMayNotBeSet)
{
    open();
    const auto test = [this](const Oid &name, const Value &value) {
        Writer writer = pdu(PduType::test_set);
        writer.binding(name_of_onu, new_name);
        writer.binding(name, value);
        return ask(std::move(writer));
    };
    permitted = Error::no_access;
    EXPECT_EQ(test(name_of_onu, new_name).error(), Error::no_access);
    permitted = Error::none;
    const Said wrong = test(name_of_onu, {.type = Type::integer, .number = 1});
    EXPECT_EQ(wrong.error(), Error::wrong_type);
    EXPECT_EQ(wrong.index(), 2);
    EXPECT_EQ(test(below(power, {1, 1}), {.type = Type::integer, .number = 1}).error(), Error::not_writable);
    Session without({.mib = {}, .id = root, .description = {}, .regions = {}}, nullptr);
    session = std::move(without);
    open();
    EXPECT_EQ(test(name_of_onu, new_name).error(), Error::not_writable);
}

TEST_P(Agentx, TakesOnlySoManySetsAtATime)
{
    open();
    Error error = Error::none;
    for (uint32_t transaction = 1; error == Error::none && transaction < 100; ++transaction) {
        Writer test = pdu(PduType::test_set, transaction);
        test.binding(name_of_onu, new_name);
        error = ask(std::move(test)).error();
    }
    EXPECT_EQ(error, Error::resource_unavailable);
}

TEST_P(Agentx, NoticesThatTheMasterKnowsItNoMore)
{
    open();
    session.ping();
    const Said ping = said_once();
    EXPECT_EQ(ping.header.type, PduType::ping);
    respond(ping.header);
    EXPECT_FALSE(session.waits());
    session.ping();
    respond(said_once().header, Error::not_open);
    EXPECT_EQ(session.state(), Session::State::closed);
}

} // namespace
