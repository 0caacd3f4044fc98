// ponfront with a simulated OLT and users of all roles, for tests that ask it as scripts do.
#pragma once

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include "access/secrets.h"
#include "access/users.h"
#include "http_client.h"
#include "ponfront.h"
#include "simulator.h"
#include "text/json.h"

inline constexpr char password[] = "correct horse battery";

inline std::string with_token(const std::string &token)
{
    return "Authorization: Bearer " + token + "\r\n";
}

inline text::json::Document document_of(const std::string &answer)
{
    text::json::Document document;
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
        EXPECT_THAT(asked, testing::StartsWith("HTTP/1.1 428 "));
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
