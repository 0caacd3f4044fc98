// What becomes of requests at an OLT: which are executed, and how often.
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <future>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include "board/ipc.h"
#include "fake_service.h"
#include "fleet/bridge/engine.h"
#include "fleet/journal/journal.h"
#include "fleet/protocol/message.h"

namespace
{

using namespace fleet;
using catalogue::Class;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

std::string call_of(const std::string &operation, const std::string &arguments, const std::string &more = {})
{
    return R"({"id":"w-1",)" + more + R"("call":{"operation":")" + operation + R"(","arguments":)" + arguments + "}}";
}

const std::string reading = R"({"call":{"operation":"bsp_pon_exec_get_json_","arguments":{"cmd":384,"pon_port":1}}})";
const std::string writing = call_of("bsp_pon_onu_description", R"({"pon_port":1,"onu_id":5,"text":"shop"})");
const std::string affecting = call_of("bsp_pon_no_bind_onu_all", R"({"pon_port":1})");

// A Gate keeps a service from answering.
class Gate
{
public:
    void open()
    {
        const std::lock_guard lock(mutex);
        is_open = true;
        changed.notify_all();
    }
    void close()
    {
        const std::lock_guard lock(mutex);
        is_open = false;
        came = 0;
    }
    void pass()
    {
        std::unique_lock lock(mutex);
        ++came;
        changed.notify_all();
        changed.wait(lock, [this] { return is_open; });
    }
    // Waits until so many requests came.
    void wait_for(int count)
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return came >= count; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool is_open = false;
    int came = 0;
};

class AtAnOlt : public testing::Test
{
protected:
    AtAnOlt() { state = mkdtemp(state.data()); }
    ~AtAnOlt() override
    {
        engine.reset();
        std::filesystem::remove_all(state);
    }

    void serve(FakeService::Handler handler = {}, std::optional<Clients> clients = {})
    {
        service.emplace(std::move(handler));
        restart(std::move(clients));
    }
    // Has an engine as after a restart of the program.
    void restart(std::optional<Clients> clients = {})
    {
        engine.reset();
        engine = std::make_unique<Engine>(EngineSettings{.threads = 2, .queue = 2},
                                          Notes{.audit =
                                                    [this](const std::string &olt, const std::string &line) {
                                                        EXPECT_EQ(olt, "north");
                                                        const std::lock_guard lock(mutex);
                                                        audit.push_back(line);
                                                    },
                                                .complain =
                                                    [this](const std::string &text) {
                                                        const std::lock_guard lock(mutex);
                                                        complaints.push_back(text);
                                                    }});
        engine->serve({olt()}, clients);
    }
    ServedOlt olt() const
    {
        return {.name = "north", .socket_dir = service->folder(), .allow = allow, .journal = state + "/north"};
    }

    std::future<std::string> ask(Incoming incoming, const std::string &name = "north")
    {
        auto answer = std::make_shared<std::promise<std::string>>();
        engine->ask(name, std::move(incoming), [answer](std::string text) { answer->set_value(std::move(text)); });
        return answer->get_future();
    }
    std::string answer(const std::string &text, Class impact = Class::service_affecting)
    {
        return ask({.client = "ann", .address = "mqtt", .impact = impact, .text = text}).get();
    }
    static auto problem(const std::string &name, const std::string &text = {})
    {
        return AllOf(StartsWith("{\"problem\":\"" + name + "\","), HasSubstr(text));
    }

    std::string state = "/tmp/engine_test_XXXXXX";
    Class allow = Class::service_affecting;
    std::optional<FakeService> service;
    std::mutex mutex;
    std::vector<std::string> audit, complaints;
    std::unique_ptr<Engine> engine;
};

TEST_F(AtAnOlt, ExecutesARead)
{
    serve(result(384, R"([{"pon_port":1}])"));
    EXPECT_THAT(answer(reading, Class::read), AllOf(StartsWith("{\"outcome\":"), HasSubstr("\"status\":0")));
    EXPECT_THAT(service->received(), SizeIs(1));
    EXPECT_THAT(audit, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(state + "/north")) << "a read is in no journal";
}

TEST_F(AtAnOlt, ExecutesAnExchangeOfARecord)
{
    serve(status(0));
    const Request request{.id = "x-1",
                          .what = call::RecordCall{
                              .channel = catalogue::find_channel("BSP_MSG_PON"),
                              .call = catalogue::Call::set,
                              .record = catalogue::find_channel("BSP_MSG_PON")->record,
                              .request = pon_record({{0, catalogue::find_command("BSP_CMD_ONU_RELEASE_ALL")->code}})}};
    EXPECT_THAT(answer(to_json(request)), StartsWith("{\"exchanged\":"));
    EXPECT_THAT(service->settings(), SizeIs(1));
    EXPECT_THAT(answer(to_json(request)), StartsWith("{\"exchanged\":"));
    EXPECT_THAT(service->settings(), SizeIs(1));
}

TEST_F(AtAnOlt, ExecutesAWriteOnceHoweverOftenItComes)
{
    serve(status(7));
    const std::string first = answer(writing);
    EXPECT_THAT(first, AllOf(StartsWith("{\"outcome\":"), HasSubstr("\"status\":7")));
    EXPECT_EQ(answer(writing), first);
    restart();
    EXPECT_EQ(answer(writing), first);
    EXPECT_THAT(service->settings(), SizeIs(1));
    EXPECT_THAT(audit, ElementsAre(AllOf(HasSubstr(R"("user":"ann","address":"mqtt","olt":"north","class":"write")"),
                                         HasSubstr(R"("result":"7")")),
                                   HasSubstr(R"("result":"repeated: )"), HasSubstr(R"("result":"repeated: )")));
}

TEST_F(AtAnOlt, TakesAnIdForOneRequestOnly)
{
    serve();
    EXPECT_THAT(answer(writing), StartsWith("{\"outcome\":"));
    EXPECT_THAT(answer(affecting), problem("wrong", "another request had this id: w-1"));
    EXPECT_THAT(service->settings(), SizeIs(1));
}

TEST_F(AtAnOlt, DoesNotKnowWhatBecameOfWhatNeverEnded)
{
    serve();
    Journal journal(state + "/north");
    journal.take(Clock::now())->begin("w-1", digest_of(request_from_json(writing)));
    EXPECT_THAT(answer(writing), problem("unknown", "begun before"));
    EXPECT_THAT(answer(writing), problem("unknown"));
    EXPECT_THAT(service->received(), IsEmpty());
}

TEST_F(AtAnOlt, DoesNotKnowWhatBecameOfAWriteThatWasNotAnswered)
{
    serve([](const board_request &, board_answer *answer) { board_answer_drop(answer); });
    const std::string write =
        call_of("bsp_pon_onu_description", R"({"pon_port":1,"onu_id":5,"text":"shop"})", R"("deadline_ms":100,)");
    const std::string first = answer(write);
    EXPECT_THAT(first, problem("unknown"));
    EXPECT_EQ(answer(write), first);
    EXPECT_THAT(service->settings(), SizeIs(1));
}

TEST_F(AtAnOlt, ExecutesAgainWhatSurelyWasNotDone)
{
    serve();
    const std::string folder = service->folder();
    service.reset();
    EXPECT_THAT(answer(writing), problem("unavailable"));
    EXPECT_THAT(answer(reading), problem("unavailable"));
    service.emplace();
    restart();
    EXPECT_THAT(answer(writing), StartsWith("{\"outcome\":"));
    EXPECT_THAT(service->settings(), SizeIs(1));
}

TEST_F(AtAnOlt, RefusesWhatIsOfAHigherClassThanItsTopic)
{
    serve();
    EXPECT_THAT(answer(writing, Class::read), problem("refused", "it is write, and it was sent as read"));
    EXPECT_THAT(answer(affecting, Class::write), problem("refused", "it is service-affecting"));
    EXPECT_THAT(service->received(), IsEmpty());
    EXPECT_THAT(audit, ElementsAre(HasSubstr("refused: "), HasSubstr("refused: ")));
    EXPECT_THAT(answer(writing, Class::write), StartsWith("{\"outcome\":")) << "it was not begun before";
}

TEST_F(AtAnOlt, RefusesWhatTheOltDoesNotAllow)
{
    allow = Class::write;
    serve();
    EXPECT_THAT(answer(affecting), problem("refused", "this OLT allows write"));
    EXPECT_THAT(answer(writing), StartsWith("{\"outcome\":"));
}

TEST_F(AtAnOlt, RefusesWhatItsClientMayNot)
{
    serve({}, Clients{{"ann", Class::write}});
    EXPECT_THAT(answer(affecting), problem("refused", "the client ann may write"));
    EXPECT_THAT(answer(writing), StartsWith("{\"outcome\":"));
    EXPECT_THAT(ask({.client = "bob", .address = "mqtt", .impact = Class::read, .text = reading}).get(),
                problem("refused", "bob"));
}

TEST_F(AtAnOlt, GivesAGenericOperationTheClassOfItsCommand)
{
    serve();
    const auto generic = [](const char *command) {
        return call_of("bsp_pon_exec_set", "{\"record\":{\"cmd\":\"" + std::string(command) + "\",\"pon_port\":1}}");
    };
    EXPECT_THAT(answer(generic("BSP_CMD_ONU_RELEASE_ALL"), Class::write),
                problem("refused", "it is service-affecting, and it was sent as write"));
    EXPECT_THAT(service->received(), IsEmpty());
    EXPECT_THAT(answer(generic("BSP_CMD_ONU_RELEASE_ALL")), StartsWith("{\"outcome\":"));
}

TEST_F(AtAnOlt, RefusesACommandThatTheCatalogueDoesNotKnow)
{
    serve();
    EXPECT_THAT(answer(call_of("bsp_profile_exec_get_json", R"({"action":64999})")), problem("wrong", "catalogue"));
    EXPECT_THAT(answer(call_of("bsp_pon_exec_set", R"({"record":{"cmd":64999}})")), problem("wrong", "catalogue"));
    EXPECT_THAT(service->received(), IsEmpty());
}

TEST_F(AtAnOlt, WantsAnIdForWhatIsNoReading)
{
    serve();
    std::string without = writing;
    without.erase(1, without.find("\"call\"") - 1);
    EXPECT_THAT(answer(without), problem("wrong", "id: missing"));
    EXPECT_THAT(service->received(), IsEmpty());
}

TEST_F(AtAnOlt, DoesNotBeginWhatIsTooLate)
{
    serve();
    const auto late = [&](std::optional<uint32_t> expiry, const std::string &text) {
        return ask({.client = "ann",
                    .address = "mqtt",
                    .impact = Class::write,
                    .text = text,
                    .expiry = expiry,
                    .came = Clock::now() - std::chrono::seconds(10)})
            .get();
    };
    const std::string in_a_second =
        call_of("bsp_pon_onu_description", R"({"pon_port":1,"onu_id":5,"text":"shop"})", R"("deadline_ms":1000,)");
    EXPECT_THAT(late({}, in_a_second), problem("expired"));
    EXPECT_THAT(late(10'000, writing), problem("expired"));
    EXPECT_THAT(late(1000, reading), problem("expired"));
    EXPECT_THAT(service->received(), IsEmpty());
    EXPECT_THAT(late(3'600'000, writing), StartsWith("{\"outcome\":"));
}

TEST_F(AtAnOlt, IsBusyWhenTooManyWaitAndAnswersTheOthers)
{
    Gate gate;
    serve([&](const board_request &, board_answer *) { gate.pass(); });
    std::vector<std::future<std::string>> asked;
    const auto next = [&](int number) {
        std::string text = writing;
        text.replace(text.find("w-1"), 3, "w-" + std::to_string(number));
        asked.push_back(ask({.client = "ann", .address = "mqtt", .impact = Class::write, .text = text}));
    };
    next(1);
    gate.wait_for(1);
    next(2);
    next(3);
    next(4);
    EXPECT_THAT(asked[3].get(), problem("busy", "2 requests wait"));
    gate.open();
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(asked[static_cast<size_t>(i)].get(), StartsWith("{\"outcome\":"));
    EXPECT_THAT(service->settings(), SizeIs(3));
}

TEST_F(AtAnOlt, HoldsOnlySoMuchInMemory)
{
    Gate gate;
    serve([&](const board_request &, board_answer *) { gate.pass(); });
    engine = std::make_unique<Engine>(EngineSettings{.threads = 1, .queue = 1000}, Notes{});
    engine->serve({olt()}, {});
    auto held = ask({.client = "ann", .address = "mqtt", .text = reading});
    gate.wait_for(1);
    const std::string long_one(longest_request, ' ');
    std::vector<std::future<std::string>> asked;
    for (int i = 0; i < 65; ++i)
        asked.push_back(ask({.client = "ann", .address = "mqtt", .text = long_one}));
    EXPECT_THAT(asked[64].get(), problem("busy", "too much waits"));
    engine->serve({}, {});
    EXPECT_THAT(asked[63].get(), problem("unavailable"));
    engine->serve({olt()}, {});
    gate.open();
    EXPECT_THAT(ask({.client = "ann", .address = "mqtt", .text = long_one}).get(), problem("wrong"))
        << "what was turned away waits no more";
    held.get();
}

TEST_F(AtAnOlt, ServesOltsSideBySideAndEachOneAfterTheOther)
{
    Gate gate;
    serve([&](const board_request &, board_answer *) { gate.pass(); });
    FakeService free;
    ServedOlt other = olt();
    other.name = "south";
    other.socket_dir = free.folder();
    engine->serve({olt(), other}, {});
    auto held = ask({.client = "ann", .address = "mqtt", .text = reading});
    gate.wait_for(1);
    auto second = ask({.client = "ann", .address = "mqtt", .text = reading});
    EXPECT_THAT(ask({.client = "ann", .address = "mqtt", .text = reading}, "south").get(), StartsWith("{\"outcome\":"));
    EXPECT_THAT(service->received(), SizeIs(1)) << "one after the other";
    gate.open();
    held.get();
    second.get();
}

// A Mailbox is how requests come in these tests.
class Mailbox
{
public:
    void put(std::function<void()> asking)
    {
        const std::lock_guard lock(mutex);
        letters.push_back(std::move(asking));
        changed.notify_all();
    }
    void turn()
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return awake || !letters.empty(); });
        awake = false; // one turn is woken
        const std::vector<std::function<void()>> came = std::exchange(letters, {});
        lock.unlock();
        for (const auto &letter : came)
            letter();
    }
    void wake()
    {
        const std::lock_guard lock(mutex);
        awake = true;
        changed.notify_all();
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::function<void()>> letters;
    bool awake = false;
};

TEST_F(AtAnOlt, ListensWhileItExecutes)
{
    constexpr int settling = 100;
    Gate gate;
    const auto handler = [&](const board_request &, board_answer *) { gate.pass(); };
    serve(handler);
    FakeService second(handler);
    ServedOlt other = olt();
    other.name = "south";
    other.socket_dir = second.folder();
    Mailbox mailbox;
    Engine listening({.threads = 2, .queue = 2}, {.audit = [](auto &, auto &) {}, .complain = [](auto &) {}});
    listening.serve({olt(), other}, {});
    listening.listen({.turn = [&] { mailbox.turn(); }, .wake = [&] { mailbox.wake(); }});
    const auto asked = [&](const std::string &name = "north") {
        auto answer = std::make_shared<std::promise<std::string>>();
        mailbox.put([&listening, answer, name] {
            listening.ask(name, {.client = "ann", .address = "mqtt", .text = reading},
                          [answer](std::string text) { answer->set_value(std::move(text)); });
        });
        return answer->get_future();
    };
    gate.open();
    for (int i = 0; i < settling; ++i) // until each thread has found its place
        EXPECT_THAT(asked(i % 2 == 0 ? "north" : "south").get(), StartsWith("{\"outcome\":"));
    gate.close();
    auto held = asked();
    gate.wait_for(1);
    auto other_held = asked("south");
    gate.wait_for(2);
    auto waiting = asked();
    auto last = asked();
    EXPECT_THAT(asked().get(), problem("busy")) << "it is heard while as many as may be are executed";
    EXPECT_EQ(held.wait_for(std::chrono::seconds(0)), std::future_status::timeout) << "and not behind them";
    gate.open();
    for (auto *answer : {&held, &other_held, &waiting, &last})
        EXPECT_THAT(answer->get(), StartsWith("{\"outcome\":"));
    EXPECT_THAT(asked().get(), StartsWith("{\"outcome\":"));
    listening.end();
    EXPECT_THAT(service->received(), SizeIs(4 + settling / 2));
}

TEST_F(AtAnOlt, TurnsAwayWhatItServesNoMore)
{
    Gate gate;
    serve([&](const board_request &, board_answer *) { gate.pass(); });
    auto held = ask({.client = "ann", .address = "mqtt", .text = reading});
    gate.wait_for(1);
    auto waiting = ask({.client = "ann", .address = "mqtt", .text = reading});
    engine->serve({}, {});
    EXPECT_THAT(waiting.get(), problem("unavailable", "served no more"));
    EXPECT_THAT(answer(reading), problem("unavailable", "no OLT north"));
    gate.open();
    EXPECT_THAT(held.get(), StartsWith("{\"outcome\":"));
}

TEST_F(AtAnOlt, VisitsAnOltInItsTurn)
{
    serve();
    std::promise<std::string> folder;
    engine->visit("north", [&] { folder.set_value(board_ipc_directory()); });
    EXPECT_EQ(folder.get_future().get(), service->folder());
}

TEST_F(AtAnOlt, RefusesWhatIsNoRequest)
{
    serve();
    for (const std::string &text :
         {std::string(), std::string("{"), std::string("[1]"), std::string(R"({"call":{}})"),
          std::string(R"({"id":"a b","call":{"operation":"x"}})"), std::string(R"({"call":{"operation":"bsp_none"}})"),
          "{\"call\":" + std::string(1000, '[') + std::string(1000, ']') + "}",
          "{\"call\":\"" + std::string(longest_request, 'x') + "\"}",
          std::string(R"({"call":{"operation":"bsp_pon_exec_get_json_","arguments":{"cmd":"x"}}})")})
        EXPECT_THAT(answer(text), problem("wrong")) << text.substr(0, 100);
    EXPECT_THAT(answer("{\"call\":" + std::string(100'000, '{')), problem("wrong", "nested deeper"));
    EXPECT_THAT(service->received(), IsEmpty());
}

TEST_F(AtAnOlt, NotesOnlySomeOfWhatIsRefused)
{
    serve();
    for (int i = 0; i < 100; ++i)
        answer(writing, Class::read);
    EXPECT_THAT(audit, SizeIs(testing::Le(32u))) << "a minute may end meanwhile";
    EXPECT_THAT(audit, SizeIs(testing::Ge(16u)));
}

TEST_F(AtAnOlt, SaysThatItsJournalIsDamaged)
{
    serve();
    std::ofstream(state + "/north") << "{\"begun\":\n";
    EXPECT_THAT(answer(writing), StartsWith("{\"outcome\":"));
    EXPECT_THAT(complaints, ElementsAre(HasSubstr("north: 1 lines of its journal are damaged")));
}

TEST_F(AtAnOlt, DoesNothingThatItCannotKeep)
{
    serve();
    std::filesystem::create_directory(state + "/north");
    EXPECT_THAT(answer(writing), problem("unavailable", "the journal"));
    EXPECT_THAT(service->received(), IsEmpty());
    EXPECT_THAT(complaints, ElementsAre(HasSubstr("north: the journal")));
    EXPECT_THAT(answer(reading), StartsWith("{\"outcome\":"));
}

} // namespace
