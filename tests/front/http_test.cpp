// These tests check the server as its clients see it.
#include <condition_variable>
#include <mutex>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include "http/server.h"
#include "http/workers.h"
#include "http_client.h"

namespace
{

using namespace front;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// A Door lets a thread wait until another one opens it.
class Door
{
public:
    void open()
    {
        const std::lock_guard lock(guard);
        is_open = true;
        changed.notify_all();
    }
    void wait()
    {
        std::unique_lock lock(guard);
        changed.wait(lock, [this] { return is_open; });
    }

private:
    std::mutex guard;
    std::condition_variable changed;
    bool is_open = false;
};

class Messages : public MessageSource
{
public:
    explicit Messages(int how_many) : left(how_many) {}
    std::optional<std::string> next() override
    {
        if (left == 0) return std::nullopt;
        return --left < 2 ? std::string() : "data: " + std::to_string(left) + "\n\n";
    }

private:
    int left;
};

// Has nothing to say, so that only beats are heard.
class Silence : public MessageSource
{
public:
    std::optional<std::string> next() override { return std::string(); }
};

class Echo : public HttpHandler
{
public:
    Admission admit(const HttpRequest &head) override
    {
        if (head.path == "/refused") return {.refusal = HttpResponse{.status = 403, .body = "no"}};
        return {.longest_body = 1000};
    }
    HttpAnswer answer(const HttpRequest &request) override
    {
        if (request.path == "/throws") throw std::runtime_error("no");
        if (request.path == "/slow")
            return Deferred{workers, [this] {
                                door.wait();
                                return HttpResponse{.body = "slow"};
                            }};
        if (request.path == "/opens") door.open();
        if (request.path == "/ever") return Stream{std::make_unique<Silence>()};
        if (request.path == "/stream") return Stream{std::make_unique<Messages>(4)};
        const auto name = request.query.find("name");
        return HttpResponse{.body = request.method + "|" + request.path + "|" + request.header("accept") + "|" +
                                    (name == request.query.end() ? "" : name->second) + "|" + request.body + "|" +
                                    request.peer};
    }
    HttpResponse refusal(unsigned status, const std::string &reason) override
    {
        return {.status = status, .body = reason};
    }

    Door door;
    const std::shared_ptr<Workers> workers = std::make_shared<Workers>(1, 1);
};

HttpSettings settings()
{
    HttpSettings chosen;
    chosen.beat = std::chrono::milliseconds(20);
    return chosen;
}

class Http : public testing::Test
{
protected:
    std::string get(const std::string &path, const std::string &lines = {}, const char *method = "GET") const
    {
        return http_get(server.port(), path, lines, method);
    }

    Echo echo;
    const HttpServer server{settings(), echo};
};

TEST_F(Http, HandsOverWhatIsAsked)
{
    EXPECT_THAT(get("/a?name=b%20c", "Accept: text/plain\r\n"),
                AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("Content-Type: text/plain; charset=utf-8\r\n"),
                      HasSubstr("X-Content-Type-Options: nosniff\r\n"),
                      EndsWith("\r\n\r\nGET|/a|text/plain|b c||127.0.0.1")));
    EXPECT_THAT(get("/a", "Content-Length: 3\r\n\r\nxyz", "POST"), EndsWith("POST|/a|||xyz|127.0.0.1"));
}

TEST_F(Http, HasTheHeadAlone)
{
    EXPECT_THAT(get("/a", {}, "HEAD"), AllOf(HasSubstr("Content-Length: 19\r\n"), EndsWith("\r\n\r\n")));
}

TEST_F(Http, SaysWhenItCannotAnswer)
{
    EXPECT_THAT(get("/throws"), AllOf(StartsWith("HTTP/1.1 500 "), Not(HasSubstr("no\n"))));
}

TEST_F(Http, RefusesBeforeABodyIsSent)
{
    EXPECT_THAT(get("/refused", "Content-Length: 1000\r\n", "POST"), StartsWith("HTTP/1.1 403 "));
    EXPECT_THAT(get("/a", "Content-Length: 1001\r\n", "POST"), StartsWith("HTTP/1.1 413 "));
    EXPECT_THAT(get("/a", "Content-Length: 99999999999999999999\r\n", "POST"), StartsWith("HTTP/1.1 4"));
}

TEST_F(Http, TakesNoLongBodyInPieces)
{
    const auto chunked = [](size_t size) {
        char length[16];
        snprintf(length, sizeof length, "%zx", size);
        return "Transfer-Encoding: chunked\r\n\r\n" + std::string(length) + "\r\n" + std::string(size, 'x') +
               "\r\n0\r\n";
    };
    EXPECT_THAT(get("/a", chunked(1000), "POST"), StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(get("/a", chunked(1001), "POST"), StartsWith("HTTP/1.1 413 "));
    EXPECT_EQ(get("/a", chunked(1'000'000), "POST"), "") << "a client that goes on and on is cut off";
}

TEST_F(Http, TakesNoLongHead)
{
    EXPECT_THAT(get("/" + std::string(100'000, 'a')), StartsWith("HTTP/1.1 41"));
}

TEST_F(Http, GoesOnWhileAnAnswerIsMade)
{
    std::string slow;
    std::thread client([&] { slow = get("/slow"); });
    EXPECT_THAT(get("/a"), StartsWith("HTTP/1.1 200 "));
    get("/opens");
    client.join();
    EXPECT_THAT(slow, EndsWith("slow"));
}

TEST_F(Http, MakesOnlySoManyAnswersAtOnce)
{
    std::vector<std::string> answers(8);
    std::vector<std::thread> clients;
    // One is being made and one waits at most. Who is turned away at once lets them go on.
    for (std::string &answer : answers)
        clients.emplace_back([&] {
            answer = get("/slow");
            if (answer.find(" 429 ") != std::string::npos) echo.door.open();
        });
    for (std::thread &client : clients)
        client.join();
    EXPECT_THAT(answers, testing::Each(testing::AnyOf(StartsWith("HTTP/1.1 200 "), StartsWith("HTTP/1.1 429 "))));
    EXPECT_THAT(answers, testing::Contains(StartsWith("HTTP/1.1 200 ")));
}

TEST_F(Http, StreamsMessagesAndBeats)
{
    const std::string said = get("/stream");
    EXPECT_THAT(said, AllOf(HasSubstr("text/event-stream"), HasSubstr("data: 3\n\n"), HasSubstr("data: 2\n\n"),
                            HasSubstr(":\n\n")));
}

TEST_F(Http, LetsHalfRequestsWaitAlone)
{
    std::vector<int> clients;
    for (int number = 0; number < 50; ++number)
        clients.push_back(connection_to(server.port(), "POST /a HTTP/1.1\r\nHost: x\r\nContent-Le"));
    EXPECT_THAT(get("/a"), StartsWith("HTTP/1.1 200 "));
    for (const int client : clients)
        close(client);
}

// Returns whether the server ends the connection while a client sends it one byte after the other.
bool is_cut_off(int client, const std::string &byte)
{
    for (int turn = 0; turn < 1000; ++turn) {
        char answer;
        if (recv(client, &answer, 1, MSG_DONTWAIT) == 0) return true;
        if (send(client, byte.data(), byte.size(), MSG_NOSIGNAL) < 0) return true;
        usleep(10'000);
    }
    return false;
}

TEST(HttpServer, EndsConnectionsOnWhichARequestNeverComes)
{
    Echo echo;
    HttpSettings chosen = settings();
    chosen.longest = std::chrono::milliseconds(300);
    const HttpServer server(chosen, echo);
    for (const char *begun :
         {"", "GET /a HTTP/1.1\r\nX: ", "POST /a HTTP/1.1\r\nHost: x\r\nContent-Length: 1000\r\n\r\n"}) {
        const int client = connection_to(server.port(), begun);
        EXPECT_TRUE(is_cut_off(client, "a")) << begun;
        close(client);
    }
    const int listener = connection_to(server.port(), "GET /ever HTTP/1.1\r\nHost: x\r\n\r\n");
    const int other = connection_to(server.port(), "GET /a HTTP/1.1\r\nX: ");
    EXPECT_TRUE(is_cut_off(other, "a"));
    close(other);
    char bytes[4096];
    while (recv(listener, bytes, sizeof bytes, MSG_DONTWAIT) > 0)
        continue;
    EXPECT_GT(recv(listener, bytes, sizeof bytes, 0), 0) << "a stream goes on";
    close(listener);
    EXPECT_THAT(http_get(server.port(), "/a"), StartsWith("HTTP/1.1 200 "));
}

TEST_F(Http, AnswersNonsense)
{
    EXPECT_THAT(answer_of(server.port(), "\x16\x03\x01\x02\r\n\r\n"), testing::AnyOf("", StartsWith("HTTP/1.1 4")));
    EXPECT_THAT(answer_of(server.port(), "GET / HTTP/9.9\r\n\r\n"), testing::AnyOf("", StartsWith("HTTP/1.1 ")));
    EXPECT_THAT(get("/a", "Content-Length: -1\r\n", "POST"), testing::AnyOf("", StartsWith("HTTP/1.1 4")));
    EXPECT_THAT(get("/a"), StartsWith("HTTP/1.1 200 "));
}

TEST(HttpServer, LimitsTheConnectionsOfAnAddress)
{
    Echo echo;
    HttpSettings chosen = settings();
    chosen.most_of_an_address = 4;
    const HttpServer server(chosen, echo);
    std::vector<int> clients;
    for (int number = 0; number < 4; ++number)
        clients.push_back(connection_to(server.port(), "GET /a HT"));
    // The server takes connections in their order.
    EXPECT_EQ(http_get(server.port(), "/a"), "");
    for (const int client : clients)
        close(client);
}

TEST(HttpServer, EndsWhileClientsListen)
{
    int client = -1;
    {
        Echo echo;
        HttpSettings chosen = settings();
        chosen.beat = std::chrono::hours(1);
        const HttpServer server(chosen, echo);
        client = connection_to(server.port(), "GET /stream HTTP/1.1\r\nHost: x\r\n\r\n");
        char byte;
        EXPECT_EQ(recv(client, &byte, 1, 0), 1);
    }
    close(client);
}

TEST(HttpServer, NamesAnAddressThatIsNone)
{
    Echo echo;
    HttpSettings chosen = settings();
    chosen.address = "localhost";
    EXPECT_THROW(HttpServer(chosen, echo), std::runtime_error);
    const HttpServer first(settings(), echo);
    chosen = settings();
    chosen.port = first.port();
    EXPECT_THROW(HttpServer(chosen, echo), std::runtime_error);
    chosen.port = 0;
    chosen.certificate = chosen.key = "no certificate";
    EXPECT_THROW(HttpServer(chosen, echo), std::runtime_error);
}

} // namespace
