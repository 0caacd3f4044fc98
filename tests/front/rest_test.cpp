// These tests run ponfront against a simulated OLT, as web browsers and scripts see it.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include "access/secrets.h"
#include "access/users.h"
#include "catalogue.h"
#include "http/encoding.h"
#include "http_client.h"
#include "ponfront.h"
#include "simulator.h"
#include "text/json.h"

namespace
{

using testing::AllOf;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using text::json::Document;

constexpr char password[] = "correct horse battery";

std::string with_token(const std::string &token)
{
    return "Authorization: Bearer " + token + "\r\n";
}

Document document_of(const std::string &answer)
{
    Document document;
    const std::string body = body_of(answer);
    document.Parse(body.data(), body.size());
    EXPECT_FALSE(document.HasParseError()) << answer;
    return document;
}

class Rest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        simulator = std::make_unique<Simulator>(
            std::vector<std::string>{"--ports", "2", "--arrivals", "4", "--silent", "0", "--speed", "100"});
        const std::string folder = Simulator::folder();
        tokens = {front::new_token(), front::new_token(), front::new_token()};
        front::write_users(
            folder + "/users",
            {{"reader", front::Role::read, front::hash_of_password(password), front::hash_of_token(tokens[0])},
             {"writer", front::Role::write, "", front::hash_of_token(tokens[1])},
             {"chief", front::Role::service_affecting, "", front::hash_of_token(tokens[2])}});
        std::ofstream(folder + "/front.toml")
            << "[[olt]]\nname = \"north\"\nsocket_dir = \"" << folder
            << "/ipc\"\n[periods]\nonus = 1\nalarms = 1\nports = 1\n[http]\nlisten = \"127.0.0.1:0\"\nusers = \""
            << folder << "/users\"\n[audit]\nfile = \"" << folder << "/audit.log\"\n";
        ponfront = std::make_unique<Ponfront>(std::vector<std::string>{"--config", folder + "/front.toml"});
        port = ponfront->port();
        wait_for("/api/v1/olts/north/alarms", "{\"alarms\"");
        wait_for("/api/v1/olts", "\"waiting\":8");
    }
    static void TearDownTestSuite()
    {
        EXPECT_EQ(ponfront->end(SIGTERM), 0);
        ponfront.reset();
        simulator.reset();
        for (const char *name : {"/users", "/front.toml", "/audit.log"})
            std::remove((Simulator::folder() + name).c_str());
    }

    static std::string get(const std::string &path, const std::string &lines = with_token(tokens[2]))
    {
        return http_get(port, path, lines);
    }
    static std::string post(const std::string &path, const std::string &body,
                            const std::string &lines = with_token(tokens[2]))
    {
        return http_post(port, path, body, lines);
    }
    static std::string call(const std::string &operation, const std::string &body,
                            const std::string &lines = with_token(tokens[2]))
    {
        return post("/api/v1/olts/north/calls/" + operation, body, lines);
    }
    // Asks for what affects service, and confirms it. The body has no brace at its end.
    static std::string confirmed(const std::string &path, const std::string &body)
    {
        const std::string asked = post(path, body + "}");
        EXPECT_THAT(asked, StartsWith("HTTP/1.1 428 "));
        return post(path, body + ",\"confirm\":\"" + document_of(asked)["confirmation"]["confirm"].GetString() + "\"}");
    }
    // Waits until an answer has this text, for half a minute at most.
    static void wait_for(const std::string &path, const std::string &text)
    {
        std::string answer;
        for (int turn = 0; turn < 300; ++turn) {
            answer = get(path);
            if (answer.find(text) != answer.npos) return;
            usleep(100'000);
        }
        FAIL() << "no '" << text << "':\n" << answer;
    }
    static std::string audit()
    {
        std::ifstream log(Simulator::folder() + "/audit.log");
        return {std::istreambuf_iterator<char>(log), {}};
    }

    static inline std::unique_ptr<Simulator> simulator;
    static inline std::unique_ptr<Ponfront> ponfront;
    static inline uint16_t port = 0;
    static inline std::vector<std::string> tokens; // of a reader, a writer, and who may do everything
};

TEST_F(Rest, LetsNobodyInWithoutALogIn)
{
    EXPECT_THAT(get("/api/v1/olts", ""), AllOf(StartsWith("HTTP/1.1 401 "), HasSubstr("\"code\":\"login_needed\"")));
    EXPECT_THAT(get("/api/v1/session", ""),
                AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("\"user\":null,\"role\":null")));
    EXPECT_THAT(call("bsp_pon_get_basic_info", "{}", ""), StartsWith("HTTP/1.1 401 "));
    EXPECT_THAT(get("/metrics", ""), HasSubstr("pon_olt_up{olt=\"north\"} 1\n"));
    EXPECT_THAT(post("/api/v1/session", R"({"user":"reader","password":"wrong"})", ""), StartsWith("HTTP/1.1 401 "));
}

TEST_F(Rest, HasSessionsThatOtherSitesCannotUse)
{
    const std::string said =
        post("/api/v1/session", R"({"user":"reader","password":")" + std::string(password) + "\"}", "");
    ASSERT_THAT(said, AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("; HttpOnly; SameSite=Strict"),
                            HasSubstr("default-src 'self'")));
    const size_t start = said.find("ponfront=");
    const std::string cookie = "Cookie: " + said.substr(start, said.find(';', start) - start) + "\r\n";
    const std::string token = "X-CSRF-Token: " + std::string(document_of(said)["token"].GetString()) + "\r\n";
    EXPECT_THAT(get("/api/v1/olts", cookie), StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(call("bsp_pon_get_basic_info", "{}", cookie), HasSubstr("\"code\":\"forged\""));
    EXPECT_THAT(call("bsp_pon_get_basic_info", "{}", cookie + token), StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(call("bsp_pon_get_basic_info", "{}", cookie + token + "Origin: https://evil.example\r\n"),
                HasSubstr("\"code\":\"forged\""));
    EXPECT_THAT(http_get(port, "/api/v1/session", cookie + token, "DELETE"), StartsWith("HTTP/1.1 204 "));
    EXPECT_THAT(get("/api/v1/olts", cookie), StartsWith("HTTP/1.1 401 "));
    EXPECT_THAT(answer_of(port, "GET /api/v1/session HTTP/1.1\r\nHost: evil.example\r\nConnection: close\r\n\r\n"),
                AllOf(StartsWith("HTTP/1.1 421 "), HasSubstr("\"code\":\"host\"")));
}

TEST_F(Rest, SaysThatNothingChanged)
{
    const std::string first = get("/api/v1/operations");
    const size_t start = first.find("ETag: ") + 6;
    const std::string tag = first.substr(start, first.find("\r\n", start) - start);
    EXPECT_THAT(get("/api/v1/operations", with_token(tokens[0]) + "If-None-Match: " + tag + "\r\n"),
                AllOf(StartsWith("HTTP/1.1 304 "), Not(HasSubstr("bsp_"))));
    EXPECT_THAT(get("/api/v1/operations", with_token(tokens[0]) + "If-None-Match: \"1\"\r\n"),
                StartsWith("HTTP/1.1 200 "));
}

// The daemon's own answers are packed: files of the page, tables, the description and metrics; streams are not.
TEST_F(Rest, PacksItsAnswers)
{
    const std::string gzip = "Accept-Encoding: gzip, deflate, br\r\n", plain = "Accept-Encoding: gzip;q=0\r\n";
    const std::string page = body_of(get("/", plain));
    ASSERT_THAT(page, HasSubstr("<!doctype html>"));
    const size_t start = page.find("/assets/main-");
    const std::string script = page.substr(start, page.find('"', start) - start);
    for (const std::string &path : {std::string("/"), script, std::string("/openapi.json"), std::string("/metrics"),
                                    std::string("/api/v1/operations")}) {
        const std::string packed = get(path, with_token(tokens[0]) + gzip);
        EXPECT_THAT(packed, AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("\r\nContent-Encoding: gzip\r\n"),
                                  HasSubstr("\r\nVary: Accept-Encoding\r\n")))
            << path;
        const std::string whole = get(path, with_token(tokens[0]) + plain);
        EXPECT_THAT(whole, AllOf(Not(HasSubstr("Content-Encoding")), HasSubstr("\r\nVary: Accept-Encoding\r\n")))
            << path;
        if (path != "/metrics") { // ages grow
            EXPECT_EQ(front::gunzip(body_of(packed)), body_of(whole)) << path;
        }
        EXPECT_THAT(http_get(port, path, with_token(tokens[0]) + gzip, "HEAD"),
                    AllOf(HasSubstr("\r\nContent-Encoding: gzip\r\n"), testing::EndsWith("\r\n\r\n")))
            << path;
    }
    EXPECT_THAT(get("/api/v1/session", with_token(tokens[0]) + gzip), Not(HasSubstr("Content-Encoding")))
        << "a token is never packed beside what somebody else may have chosen";
    const int stream = connection_to(port, "GET /api/v1/events/stream HTTP/1.1\r\nHost: localhost\r\n" +
                                               with_token(tokens[0]) + gzip + "\r\n");
    std::string said;
    char bytes[4096];
    for (ssize_t count = 1; count > 0 && said.find("event: tables") == said.npos;) {
        count = recv(stream, bytes, sizeof bytes, 0);
        if (count > 0) said.append(bytes, static_cast<size_t>(count));
    }
    close(stream);
    EXPECT_THAT(said,
                AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("event: tables"), Not(HasSubstr("Content-Encoding"))));
}

TEST_F(Rest, AsksAgainBeforeWhatAffectsService)
{
    const std::string waiting = "/api/v1/olts/north/waiting";
    const Document found = document_of(get(waiting));
    const std::string mac = found["waiting"][0]["mac"].GetString();
    const std::string where = std::to_string(found["waiting"][0]["pon_port"].GetUint());
    const std::string what =
        "\"arguments\":{\"pon_port\":" + where + ",\"onu_id\":7,\"value\":0,\"mac\":\"" + mac + "\"}";
    const char *const bind = "bsp_pon_bind_onu_spec_id";
    EXPECT_THAT(call(bind, "{" + what + "}", with_token(tokens[0])), StartsWith("HTTP/1.1 403 "));
    EXPECT_THAT(call(bind, "{" + what + "}", with_token(tokens[1])), StartsWith("HTTP/1.1 403 "));

    const std::string asked = call(bind, "{" + what + "}");
    ASSERT_THAT(asked, AllOf(StartsWith("HTTP/1.1 428 "), HasSubstr(mac)));
    const std::string confirm =
        ",\"confirm\":\"" + std::string(document_of(asked)["confirmation"]["confirm"].GetString()) + "\"}";
    EXPECT_THAT(call(bind, "{\"arguments\":{\"pon_port\":" + where + ",\"onu_id\":8,\"value\":0,\"mac\":\"" + mac +
                               "\"}" + confirm),
                StartsWith("HTTP/1.1 428 "))
        << "another request";
    const std::string again = call(bind, "{" + what + "}");
    const std::string good =
        ",\"confirm\":\"" + std::string(document_of(again)["confirmation"]["confirm"].GetString()) + "\"}";
    EXPECT_THAT(call(bind, "{" + what + good),
                AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("\"status_name\":\"BSP_OK\"")));
    EXPECT_THAT(call(bind, "{" + what + good), StartsWith("HTTP/1.1 428 ")) << "it is good once";
    EXPECT_THAT(audit(), AllOf(HasSubstr("\"user\":\"chief\""), HasSubstr("\"result\":\"BSP_OK\""),
                               HasSubstr("\"refused: "), HasSubstr("\"user\":\"reader\"")));

    wait_for("/api/v1/olts/north/onus/" + where + "/7", "\"state\":\"online\"");
    wait_for("/api/v1/olts/north/onus", "[" + where + ",7,\"" + mac + "\",\"online\"");
    wait_for("/api/v1/events?kind=onu_online", "\"onu_id\":7");
    EXPECT_THAT(get("/api/v1/search?q=" + mac.substr(9)), HasSubstr("\"onu_id\":7"));
    EXPECT_THAT(get("/api/v1/search?q=" + where + "/7"), HasSubstr("\"found\":\"onu\""));
    const std::string stream = get("/api/v1/events/stream?last_event_id=0", "Authorization: Bearer wrong\r\n");
    EXPECT_THAT(stream, StartsWith("HTTP/1.1 401 "));
}

TEST_F(Rest, ComparesAppliesAndRollsBack)
{
    const std::string root = "/api/v1/olts/north/configuration";
    EXPECT_THAT(get(root + "/text", with_token(tokens[1])), StartsWith("HTTP/1.1 403 "));
    const std::string text = body_of(get(root + "/text"));
    ASSERT_THAT(text, StartsWith("{"));
    Document body(rapidjson::kObjectType);
    body.AddMember("text", rapidjson::StringRef(text.c_str(), text.size()), body.GetAllocator());
    body.AddMember("seconds", 3600, body.GetAllocator());
    text::json::Buffer buffer;
    text::json::Writer writer(buffer);
    body.Accept(writer);
    const std::string apply(buffer.GetString(), buffer.GetSize() - 1); // without the brace at its end

    // Something becomes different, which the configuration that was saved does not have.
    const std::string bound = "\"key\":\"2/9\"";
    EXPECT_THAT(get(root), Not(HasSubstr(bound)));
    confirmed("/api/v1/olts/north/calls/bsp_pon_bind_onu_spec_id",
              R"({"arguments":{"pon_port":2,"onu_id":9,"mac":"06:00:00:00:00:01","value":0})");
    EXPECT_THAT(get(root), HasSubstr(bound));
    const std::string first = post(root + "/apply", apply + "}");
    ASSERT_THAT(first, AllOf(StartsWith("HTTP/1.1 428 "), HasSubstr(bound)));
    const std::string confirm =
        ",\"confirm\":\"" + std::string(document_of(first)["confirmation"]["confirm"].GetString()) + "\"}";
    EXPECT_THAT(post(root + "/confirm", ""), StartsWith("HTTP/1.1 409 "));
    EXPECT_THAT(post(root + "/apply", apply + confirm),
                AllOf(StartsWith("HTTP/1.1 200 "), HasSubstr("\"applied\":true")));
    EXPECT_THAT(get(root), Not(HasSubstr(bound)));
    EXPECT_THAT(get(root + "/pending"), AllOf(HasSubstr("\"state\":\"waiting\""), HasSubstr("\"user\":\"chief\"")));
    EXPECT_THAT(post(root + "/rollback", ""), StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(get(root), HasSubstr(bound));
    EXPECT_THAT(get(root + "/pending"), HasSubstr("\"state\":\"rolled_back\""));
    EXPECT_THAT(post(root + "/rollback", ""), StartsWith("HTTP/1.1 409 "));
    EXPECT_THAT(post(root + "/compare", R"({"text":"nonsense"})"), StartsWith("HTTP/1.1 400 "));
}

TEST_F(Rest, AnswersWhatIsWrongClearly)
{
    for (const auto &[path, status] :
         std::vector<std::pair<std::string, const char *>>{{"/api/v1/olts/south", "404"},
                                                           {"/api/v1/olts/north/ports/9", "404"},
                                                           {"/api/v1/olts/north/onus/1/x", "404"},
                                                           {"/api/v1/nothing", "404"},
                                                           {"/api/v1/olts/north/onus?port=x", "400"},
                                                           {"/api/v1/search", "400"},
                                                           {"/api/v1/events?kind=nothing", "400"},
                                                           {"/api/v1/events?limit=100000", "400"},
                                                           {"/api/v1/events?mac=1", "400"},
                                                           {"/api/v1/olts/north/calls/bsp_pon_get_basic_info", "405"},
                                                           {"/nothing", "404"}})
        EXPECT_THAT(get(path), AllOf(StartsWith("HTTP/1.1 " + std::string(status)), HasSubstr("{\"error\":{"))) << path;
    for (const auto &[body, status] :
         std::vector<std::pair<std::string, const char *>>{{"{", "400"},
                                                           {"[]", "400"},
                                                           {R"({"nothing":1})", "400"},
                                                           {R"({"arguments":1})", "400"},
                                                           {R"({"arguments":{"nothing":1}})", "400"},
                                                           {R"({"dry_run":1})", "400"},
                                                           {R"({"dry_run":true,"dry_run":true})", "400"},
                                                           {R"({"deadline_ms":0})", "400"},
                                                           {std::string(100'000, '['), "400"},
                                                           {std::string(2 << 20, ' '), "413"}})
        EXPECT_THAT(call("bsp_pon_get_basic_info", body), StartsWith("HTTP/1.1 " + std::string(status)))
            << body.substr(0, 100);
    EXPECT_THAT(call("bsp_nothing", "{}"), StartsWith("HTTP/1.1 404 "));
    EXPECT_THAT(http_get(port, "/api/v1/olts/north/calls/bsp_pon_get_basic_info",
                         with_token(tokens[2]) + "Content-Type: text/plain\r\nContent-Length: 2\r\n\r\n{}", "POST"),
                StartsWith("HTTP/1.1 415 "));
}

// The description says how every path is asked, and what it answers: each is asked so.
TEST_F(Rest, AnswersEveryPathOfItsDescription)
{
    const Document openapi = document_of(get("/openapi.json", ""));
    EXPECT_STREQ(openapi["openapi"].GetString(), "3.1.0");
    std::set<std::string> ids;
    size_t calls = 0;
    for (const auto &[name, item] : openapi["paths"].GetObject()) {
        for (const auto &[method, operation] : item.GetObject()) {
            std::string path = "/api/v1" + std::string(name.GetString());
            EXPECT_TRUE(ids.insert(operation["operationId"].GetString()).second) << path;
            for (const auto &parameter : operation["parameters"].GetArray()) {
                if (parameter["in"].GetString() != std::string("path")) continue;
                const std::string part = "{" + std::string(parameter["name"].GetString()) + "}";
                path.replace(path.find(part), part.size(), part == "{olt}" ? "north" : "1");
            }
            EXPECT_EQ(path.find('{'), path.npos) << path;
            const bool is_call = path.find("/calls/") != path.npos;
            calls += is_call;
            const std::string verb = method.GetString();
            // A stream goes on for ever; who may not listen is told so.
            const std::string who = path.ends_with("/stream") ? "" : with_token(tokens[2]);
            const std::string said = verb == "post"     ? post(path, is_call ? R"({"dry_run":true})" : "{}", who)
                                     : verb == "delete" ? http_get(port, path, who, "DELETE")
                                                        : get(path, who);
            const std::string status = said.substr(9, 3);
            const auto &responses = operation["responses"];
            EXPECT_TRUE(responses.HasMember(status.c_str())) << verb << " " << path << ": " << said.substr(0, 600);
            EXPECT_NE(status[0], '5') << said.substr(0, 600);
        }
    }
    EXPECT_EQ(calls, catalogue::operations().size());
}

} // namespace
