#include "fleet/client/settings.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include <openssl/pem.h>
#include <openssl/x509.h>
#include <pwd.h>
#include <unistd.h>

#include "fleet/mqtt/broker_table.h"
#include "toml_file/section.h"

namespace fleet
{
namespace
{

constexpr size_t longest_text = 4096;

using toml_file::Keys;
using toml_file::Section;

const Keys &settings_keys()
{
    static const Keys keys{{"client"}, broker_key()};
    return keys;
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

Settings settings_of(const toml_file::Value &value)
{
    const Section file(value, settings_keys());
    file.check_keys();
    BrokerTable table = read_broker(file, Paths::relative_too);
    Settings settings{.client = {}, .broker = std::move(table.broker), .root = std::move(table.root)};
    const auto client = file.text("client", 1, longest_text);
    if (client && !is_name(*client)) file.fail_expected("client", "1 to 64 letters, digits, '-', '_' and '.'");
    settings.client = client.value_or("");
    if (const std::string &certificate = settings.broker.certificate; !client && !certificate.empty()) {
        settings.client = common_name_of(certificate);
        if (settings.client.empty())
            file.table("broker")->fail("certificate",
                                       "no certificate with a common name of letters, digits, '-', '_' and '.' can be "
                                       "read from " +
                                           certificate);
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
