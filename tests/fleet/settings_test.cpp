// How the settings of a fleet's client are read.
#include <cstdlib>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fleet/client/settings.h"
#include "toml_file/section.h"

namespace
{

using namespace fleet;
using testing::HasSubstr;
using testing::StartsWith;

Settings read(const std::string &text)
{
    return settings_of(text, "/etc/fleet.toml");
}

std::string error_of(const std::string &text)
{
    try {
        read(text);
    } catch (const toml_file::Error &error) {
        return error.what();
    }
    return "no error";
}

TEST(Settings, AreRead)
{
    const Settings settings = read("client = \"alice\"\n[broker]\nhost = \"b.example.net\"\nroot = \"acme/pon\"\n"
                                   "ca = \"ca.pem\"\ncertificate = \"/c/alice.pem\"\nkey = \"alice.key\"\n");
    EXPECT_EQ(settings, (Settings{.client = "alice",
                                  .broker = {.host = "b.example.net",
                                             .port = 8883,
                                             .socket = "",
                                             .ca = "/etc/ca.pem",
                                             .certificate = "/c/alice.pem",
                                             .key = "/etc/alice.key"},
                                  .root = "acme/pon"}));
    EXPECT_EQ(read("client = \"a\"\n[broker]\nhost = \"b\"\n").broker.port, 1883);
    EXPECT_EQ(read("client = \"a\"\n[broker]\nsocket = \"/run/b\"\n").broker.port, 0);
    EXPECT_EQ(read("client = \"a\"\n[broker]\nhost = \"b\"\nkeepalive = 5\n").broker.keepalive, 5);
}

TEST(Settings, NameTheClientAsItsCertificateDoes)
{
    const std::string start = "[broker]\nhost = \"b\"\nca = \"ca\"\nkey = \"k\"\ncertificate = \"";
    EXPECT_EQ(read(start + CERTIFICATES "/localhost.pem\"\n").client, "localhost");
    EXPECT_THAT(error_of(start + CERTIFICATES "/localhost.key.pem\"\n"),
                HasSubstr("no certificate with a common name"));
    EXPECT_THAT(error_of(start + "none.pem\"\n"), HasSubstr("can be read from /etc/none.pem"));
}

TEST(Settings, OfNobodyAreThoseOfTheUser)
{
    EXPECT_TRUE(is_name(read("[broker]\nsocket = \"/run/b\"\n").client));
}

TEST(Settings, ThatAreWrongSayWhere)
{
    EXPECT_THAT(error_of(""), StartsWith("/etc/fleet.toml:1: "));
    EXPECT_THAT(error_of(""), HasSubstr("say in [broker] where the broker is"));
    EXPECT_THAT(error_of("[broker]\n"), HasSubstr("name the host of the broker, or its socket"));
    EXPECT_THAT(error_of("[broker]\nhots = \"b\"\n"), StartsWith("/etc/fleet.toml:2: "));
    EXPECT_THAT(error_of("[broker]\nhost = \"b\"\nsocket = \"/s\"\n"), StartsWith("/etc/fleet.toml:3: "));
    EXPECT_THAT(error_of("[broker]\nsocket = \"/s\"\nport = 1\n"), HasSubstr("a socket has no port"));
    EXPECT_THAT(error_of("[broker]\nsocket = \"/s\"\nca = \"c\"\n"), HasSubstr("there is no TLS on a socket"));
    EXPECT_THAT(error_of("[broker]\nhost = \"b\"\nport = 70000\n"), HasSubstr("a number from 1 to 65535"));
    EXPECT_THAT(error_of("[broker]\nhost = \"b\"\nroot = \"a//b\"\n"), StartsWith("/etc/fleet.toml:3: "));
    EXPECT_THAT(error_of("[broker]\nhost = \"b\"\nca = \"c\"\ncertificate = \"c\"\n"), HasSubstr("name its key, too"));
    EXPECT_THAT(error_of("[broker]\nhost = \"b\"\nca = \"c\"\nkey = \"c\"\n"), HasSubstr("name its certificate, too"));
    EXPECT_THAT(error_of("[broker]\nhost = \"b\"\nkey = \"c\"\ncertificate = \"c\"\n"), HasSubstr("name the ca"));
    EXPECT_THAT(error_of("client = \"a b\"\n[broker]\nhost = \"b\"\n"), StartsWith("/etc/fleet.toml:1: "));
    EXPECT_THAT(error_of("[broker\n"), StartsWith("/etc/fleet.toml:1: "));
}

TEST(SettingsFile, IsTheOneThatIsNamedFirst)
{
    unsetenv("PONCTL_FLEET");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", "/home/alice", 1);
    EXPECT_EQ(settings_file(""), "/home/alice/.config/ponctl/fleet.toml");
    setenv("XDG_CONFIG_HOME", "/conf", 1);
    EXPECT_EQ(settings_file(""), "/conf/ponctl/fleet.toml");
    setenv("PONCTL_FLEET", "f.toml", 1);
    EXPECT_EQ(settings_file(""), "f.toml");
    EXPECT_EQ(settings_file("g.toml"), "g.toml");
    unsetenv("PONCTL_FLEET");
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("HOME");
    EXPECT_EQ(settings_file(""), "");
}

} // namespace
