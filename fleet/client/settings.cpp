#include "fleet/client/settings.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <openssl/pem.h>
#include <openssl/x509.h>
#include <pwd.h>
#include <unistd.h>

#include "toml_file/section.h"

namespace fleet
{
namespace
{

constexpr size_t longest_path = 4096, longest_host = 253;
constexpr uint16_t plain_port = 1883, tls_port = 8883;

using toml_file::Keys;
using toml_file::Section;

const Keys &settings_keys()
{
    static const Keys keys{
        {"client"},
        {"broker",
         {{"host"}, {"port"}, {"socket"}, {"root"}, {"ca"}, {"certificate"}, {"key"}},
         /*named=*/false,
         /*single=*/true},
    };
    return keys;
}

std::string read_path(const Section &section, const std::string &key)
{
    const std::string path = section.text(key, 1, longest_path).value_or("");
    if (path.empty()) return path;
    return std::filesystem::path(section.file_name()).parent_path() / path;
}

// Returns the common name in a certificate. The text is empty when it cannot be read, or has none that is a name.
std::string common_name_of(const std::string &certificate)
{
    const auto close = [](std::FILE *open) { std::fclose(open); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(certificate.c_str(), "re"));
    if (!file) return {};
    const std::unique_ptr<X509, decltype(&X509_free)> read(PEM_read_X509(file.get(), nullptr, nullptr, nullptr),
                                                           X509_free);
    if (!read) return {};
    char name[128];
    const int length = X509_NAME_get_text_by_NID(X509_get_subject_name(read.get()), NID_commonName, name, sizeof name);
    const std::string text(name, length > 0 ? static_cast<size_t>(length) : 0);
    return is_name(text) ? text : std::string();
}

std::string user_name()
{
    const struct passwd *user = getpwuid(geteuid());
    return user && is_name(user->pw_name) ? user->pw_name : std::string();
}

void read_broker(const Section &broker, Settings &settings)
{
    settings.host = broker.text("host", 1, longest_host).value_or("");
    settings.socket = read_path(broker, "socket");
    settings.ca = read_path(broker, "ca");
    settings.certificate = read_path(broker, "certificate");
    settings.key = read_path(broker, "key");
    if (settings.host.empty() && settings.socket.empty())
        broker.fail("host", "name the host of the broker, or its socket");
    if (!settings.host.empty() && !settings.socket.empty())
        broker.fail("socket", "the broker has a host already; leave one of them out");
    const auto port = broker.number("port", 1, UINT16_MAX);
    if (port && !settings.socket.empty()) broker.fail("port", "a socket has no port");
    if (settings.socket.empty())
        settings.port = static_cast<uint16_t>(port.value_or(settings.ca.empty() ? plain_port : tls_port));
    if (!settings.certificate.empty() && settings.key.empty()) broker.fail("certificate", "name its key, too");
    if (!settings.key.empty() && settings.certificate.empty()) broker.fail("key", "name its certificate, too");
    if (!settings.certificate.empty() && settings.ca.empty())
        broker.fail("certificate", "name the ca of the broker's certificate, too");
    settings.root = broker.text("root", 1, longest_path).value_or(settings.root);
    if (!is_root(settings.root))
        broker.fail_expected("root", "names with '/' between them, of letters, digits, '-', '_' and '.'");
}

Settings settings_of(const toml_file::Value &value)
{
    const Section file(value, settings_keys());
    file.check_keys();
    Settings settings;
    const auto broker = file.table("broker");
    if (!broker) file.fail("broker", "say in [broker] where the broker is");
    read_broker(*broker, settings);
    const auto client = file.text("client", 1, longest_path);
    if (client && !is_name(*client)) file.fail_expected("client", "1 to 64 letters, digits, '-', '_' and '.'");
    settings.client = client.value_or("");
    if (settings.client.empty() && !settings.certificate.empty()) {
        settings.client = common_name_of(settings.certificate);
        if (settings.client.empty())
            broker->fail("certificate", "no certificate with a common name of letters, digits, '-', '_' and '.' can be "
                                        "read from " +
                                            settings.certificate);
    }
    if (settings.client.empty()) settings.client = user_name();
    if (settings.client.empty()) file.fail("client", "say by which name the fleet knows you");
    return settings;
}

} // namespace

std::string settings_file(std::string_view given)
{
    if (!given.empty()) return std::string(given);
    const auto variable = [](const char *name) {
        const char *value = std::getenv(name);
        return std::string(value ? value : "");
    };
    if (const std::string file = variable("PONCTL_FLEET"); !file.empty()) return file;
    const std::string configuration = variable("XDG_CONFIG_HOME"), home = variable("HOME");
    if (configuration.starts_with('/')) return configuration + "/ponctl/fleet.toml";
    return home.starts_with('/') ? home + "/.config/ponctl/fleet.toml" : std::string();
}

Settings read_settings(const std::string &file)
{
    return settings_of(toml_file::read_table_file(file));
}

Settings settings_of(std::string_view text, const std::string &name)
{
    return settings_of(toml_file::read_table(text, name));
}

} // namespace fleet
