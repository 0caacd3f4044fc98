// These tests check who may do what: users, sessions, log-in, and requests that are forged.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "access/gate.h"
#include "access/secrets.h"
#include "http/refusal.h"

namespace
{

using namespace front;
using testing::HasSubstr;
using testing::Not;

const std::string password = "correct horse battery";
// To make one takes its time.
const std::string &hash()
{
    static const std::string made = hash_of_password(password);
    return made;
}

class Access : public testing::Test
{
protected:
    ~Access() override { std::remove(file.c_str()); }

    void write(const std::vector<User> &users) const { write_users(file, users); }
    Gate gate(bool encrypted = false) const
    {
        return {{.hosts = {"console.example"}, .encrypted = encrypted}, std::make_shared<Users>(file), [this] {
                    return now;
                }};
    }
    static HttpRequest request(std::map<std::string, std::string> headers)
    {
        headers.try_emplace("host", "localhost:9911");
        return {
            .method = "POST", .path = "/", .peer = "192.0.2.1", .query = {}, .headers = std::move(headers), .body = {}};
    }
    // Returns the code of the refusal, or an empty text.
    template <class Act>
    static std::string refusal(Act act)
    {
        try {
            act();
        } catch (const Refusal &refused) {
            return refused.code;
        }
        return {};
    }

    const std::string file = testing::TempDir() + "users." + std::to_string(getpid());
    int64_t now = 1000;
};

TEST_F(Access, KeepsUsersInAPrivateFile)
{
    const std::vector<User> users{{"ann", Role::service_affecting, hash(), ""}, {"bob", Role::read, "", "1234"}};
    write(users);
    EXPECT_EQ(read_users(file), users);
    EXPECT_THAT(std::filesystem::status(file).permissions(),
                std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    chmod(file.c_str(), 0644);
    EXPECT_THROW(read_users(file), std::runtime_error) << "others may read it";
    chmod(file.c_str(), 0600);
    for (const char *wrong :
         {"ann read -\n", "ann boss - -\n", "a/b read - -\n", "ann read - - -\n", "ann read - -\nann read - -\n"}) {
        std::ofstream(file, std::ios::trunc) << wrong;
        EXPECT_THROW(read_users(file), std::runtime_error) << wrong;
    }
}

TEST_F(Access, RecognisesPasswordsAndTokens)
{
    EXPECT_THAT(hash(), HasSubstr("$argon2id$"));
    EXPECT_TRUE(is_password(hash(), password));
    EXPECT_FALSE(is_password(hash(), password + " "));
    EXPECT_FALSE(is_password("nonsense", password));
    EXPECT_NE(new_token(), new_token());
    EXPECT_THAT(hash_of_token("token"), Not(HasSubstr("token")));
}

TEST_F(Access, LetsWhoeverConnectsReadWhereThereAreNoUsers)
{
    Gate open({}, std::make_shared<Users>(""), [this] { return now; });
    EXPECT_TRUE(open.identity_of(request({})).may(Role::read));
    EXPECT_FALSE(open.identity_of(request({})).may(Role::write));
}

TEST_F(Access, LogsInAndOut)
{
    write({{"ann", Role::write, hash(), ""}});
    Gate door = gate(true);
    EXPECT_FALSE(door.identity_of(request({})).may(Role::read));
    EXPECT_EQ(refusal([&] { door.log_in(request({}), "ann", "wrong"); }), "login_needed");
    EXPECT_EQ(refusal([&] { door.log_in(request({}), "eve", password); }), "login_needed");

    const LogIn done = door.log_in(request({}), "ann", password);
    EXPECT_THAT(done.cookie, HasSubstr("__Host-ponfront="));
    for (const char *attribute : {"; HttpOnly", "; SameSite=Strict", "; Secure", "; Path=/"})
        EXPECT_THAT(done.cookie, HasSubstr(attribute));
    const std::string cookie = "other=1; " + done.cookie.substr(0, done.cookie.find(';'));
    const Identity ann = door.identity_of(request({{"cookie", cookie}}));
    EXPECT_EQ(ann.user, "ann");
    EXPECT_TRUE(ann.may(Role::write));
    EXPECT_FALSE(ann.may(Role::service_affecting));

    EXPECT_EQ(refusal([&] { Gate::check_own(request({}), ann); }), "forged");
    EXPECT_EQ(refusal([&] { Gate::check_own(request({{"x-csrf-token", "x"}}), ann); }), "forged");
    EXPECT_EQ(refusal([&] { Gate::check_own(request({{"x-csrf-token", ann.token}}), ann); }), "");

    door.log_out(request({{"cookie", cookie}}));
    EXPECT_FALSE(door.identity_of(request({{"cookie", cookie}})).may(Role::read));
}

TEST_F(Access, EndsSessionsByTimeAndByTheFile)
{
    write({{"ann", Role::write, hash(), ""}});
    Gate door = gate();
    const auto log_in = [&] {
        const LogIn done = door.log_in(request({}), "ann", password);
        return request({{"cookie", done.cookie.substr(0, done.cookie.find(';'))}});
    };
    HttpRequest with_session = log_in();
    now += Sessions::longest_idle;
    EXPECT_TRUE(door.identity_of(with_session).may(Role::write));
    now += Sessions::longest_idle + 1;
    EXPECT_FALSE(door.identity_of(with_session).may(Role::read)) << "it was idle for too long";

    with_session = log_in();
    for (int64_t used = 0; used <= Sessions::longest; used += Sessions::longest_idle) {
        EXPECT_TRUE(door.identity_of(with_session).may(Role::write));
        now += Sessions::longest_idle;
    }
    EXPECT_FALSE(door.identity_of(with_session).may(Role::read)) << "it was used for too long";

    with_session = log_in();
    write({{"ann", Role::read, hash(), ""}});
    EXPECT_FALSE(door.identity_of(with_session).may(Role::write)) << "the role was taken away";
    write({{"ann", Role::read, hash_of_password("another password"), ""}});
    EXPECT_FALSE(door.identity_of(with_session).may(Role::read)) << "the password was changed";
    std::ofstream(file, std::ios::app) << "nonsense\n";
    EXPECT_FALSE(door.identity_of(with_session).may(Role::read)) << "the file is broken";
}

TEST_F(Access, TakesTokensOfScripts)
{
    const std::string token = new_token();
    write({{"robot", Role::write, "", hash_of_token(token)}, {"ann", Role::read, hash(), ""}});
    Gate door = gate();
    const Identity robot = door.identity_of(request({{"authorization", "Bearer " + token}}));
    EXPECT_EQ(robot.user, "robot");
    EXPECT_EQ(refusal([&] { Gate::check_own(request({}), robot); }), "");
    for (const std::string &wrong : std::vector<std::string>{"Bearer ", "Bearer x", "Basic " + token, token})
        EXPECT_FALSE(door.identity_of(request({{"authorization", wrong}})).may(Role::read)) << wrong;
    EXPECT_EQ(refusal([&] { door.log_in(request({}), "robot", ""); }), "login_needed");
}

TEST_F(Access, RefusesOtherHostsAndOrigins)
{
    const Gate door({.hosts = {"console.example"}}, std::make_shared<Users>(""), [this] { return now; });
    for (const char *host : {"localhost", "127.0.0.1:9911", "[::1]:9911", "192.0.2.7", "Console.Example:443"})
        EXPECT_EQ(refusal([&] { door.check_host(request({{"host", host}})); }), "") << host;
    for (const char *host : {"evil.example", "", "localhost.evil.example", "127.0.0.1.evil.example"})
        EXPECT_EQ(refusal([&] { door.check_host(request({{"host", host}})); }), "host") << host;
    EXPECT_EQ(refusal([] { Gate::check_origin(request({{"origin", "http://localhost:9911"}})); }), "");
    for (const char *origin : {"http://localhost:9912", "https://evil.example", "null", "http://", "localhost:9911"})
        EXPECT_EQ(refusal([&] { Gate::check_origin(request({{"origin", origin}})); }), "forged") << origin;
    EXPECT_EQ(refusal([] { Gate::check_origin(request({{"sec-fetch-site", "cross-site"}})); }), "forged");
    EXPECT_EQ(refusal([] { Gate::check_origin(request({{"sec-fetch-site", "same-origin"}})); }), "");
}

TEST_F(Access, BoundsAttemptsToLogIn)
{
    write({{"ann", Role::write, hash(), ""}});
    Gate door = gate();
    const auto allowed_of = [&](const HttpRequest &from, const std::string &name) {
        int allowed = 0;
        while (allowed < 100 && refusal([&] { door.begin_attempt(from, name); }).empty())
            ++allowed;
        return allowed;
    };
    EXPECT_EQ(allowed_of(request({}), "ann"), 10) << "of one name";
    EXPECT_EQ(allowed_of(request({}), "bob"), 9) << "of one address, of which one more was refused";
    HttpRequest other = request({});
    other.peer = "192.0.2.2";
    EXPECT_EQ(allowed_of(other, "ann"), 10) << "somebody elsewhere is not kept out";
    now += 5 * 60 * 1000;
    EXPECT_EQ(refusal([&] { door.begin_attempt(request({}), "ann"); }), "");
}

// Who tries a name from many addresses is bounded at each of them, and keeps its owner out at none of his own.
TEST_F(Access, LetsNobodyBeKeptOutByOthers)
{
    write({{"ann", Role::write, hash(), ""}});
    Gate door = gate();
    for (int address = 0; address < 100; ++address) {
        HttpRequest from = request({});
        from.peer = "198.51.100." + std::to_string(address);
        while (refusal([&] { door.begin_attempt(from, "ann"); }).empty())
            continue;
    }
    HttpRequest own = request({});
    own.peer = "192.0.2.7";
    EXPECT_EQ(refusal([&] { door.begin_attempt(own, "ann"); }), "");
    // What is no name is counted as one, so that texts of any length need no memory.
    int allowed = 0;
    while (allowed < 100 &&
           refusal([&] { door.begin_attempt(own, std::string(1000, 'a') + std::to_string(allowed)); }).empty())
        ++allowed;
    EXPECT_EQ(allowed, 10);
}

TEST(Attempts, AreCountedAndForgotten)
{
    Attempts attempts(2, 1000);
    EXPECT_EQ(attempts.begin("a", 0), 0u);
    EXPECT_EQ(attempts.begin("a", 1), 0u);
    EXPECT_EQ(attempts.begin("a", 2), 1u);
    attempts.forgive("a");
    EXPECT_EQ(attempts.begin("a", 3), 0u);
    for (int name = 0; name < 4'200; ++name)
        EXPECT_EQ(attempts.begin(std::to_string(name), 4), 0u);
}

TEST(BrowserRules, LetNothingBeLoadedFromElsewhere)
{
    const auto rules = browser_rules(true);
    EXPECT_THAT(rules, testing::Contains(testing::Pair("Content-Security-Policy", HasSubstr("default-src 'self'"))));
    EXPECT_THAT(rules, testing::Contains(testing::Key("Strict-Transport-Security")));
    EXPECT_THAT(browser_rules(false), Not(testing::Contains(testing::Key("Strict-Transport-Security"))));
}

} // namespace
