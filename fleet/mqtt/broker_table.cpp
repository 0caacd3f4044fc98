#include "fleet/mqtt/broker_table.h"

#include <filesystem>
#include <optional>

namespace fleet
{
namespace
{

using toml_file::Section;

constexpr size_t longest_path = 4096, longest_host = 253, longest_root = 200;
constexpr uint16_t plain_port = 1883, tls_port = 8883;

std::string read_path(const Section &table, const std::string &key, Paths paths)
{
    if (paths == Paths::from_the_root) return table.path(key);
    const std::string path = table.text(key, 1, longest_path).value_or("");
    if (path.empty()) return path;
    return std::filesystem::path(table.file_name()).parent_path() / path;
}

void check_place(const Section &table, const Broker &broker)
{
    const bool is_local = !broker.socket.empty();
    if (!is_local && broker.host.empty()) table.fail("host", "name the host of the broker, or its socket");
    if (is_local && !broker.host.empty()) table.fail("socket", "the broker has a host already; leave one of them out");
    if (is_local && table.has("port")) table.fail("port", "a socket has no port");
    if (is_local && !broker.ca.empty()) table.fail("ca", "there is no TLS on a socket");
}

void check_certificate(const Section &table, const Broker &broker)
{
    if (!broker.certificate.empty() && broker.key.empty()) table.fail("certificate", "name its key, too");
    if (!broker.key.empty() && broker.certificate.empty()) table.fail("key", "name its certificate, too");
    if (!broker.certificate.empty() && broker.ca.empty())
        table.fail("certificate", "name the ca of the broker's certificate, too");
}

} // namespace

toml_file::Key broker_key()
{
    return {.name = "broker",
            .tables = {{"host"}, {"port"}, {"socket"}, {"root"}, {"ca"}, {"certificate"}, {"key"}, {"keepalive"}},
            .single = true};
}

BrokerTable read_broker(const Section &file, Paths paths)
{
    const std::optional<Section> table = file.table("broker");
    if (!table) file.fail("broker", "say in [broker] where the broker is");
    BrokerTable read;
    Broker &broker = read.broker;
    broker.host = table->text("host", 1, longest_host).value_or("");
    broker.socket = read_path(*table, "socket", paths);
    broker.ca = read_path(*table, "ca", paths);
    broker.certificate = read_path(*table, "certificate", paths);
    broker.key = read_path(*table, "key", paths);
    check_place(*table, broker);
    check_certificate(*table, broker);
    const uint16_t usual = broker.ca.empty() ? plain_port : tls_port;
    if (broker.socket.empty()) broker.port = static_cast<uint16_t>(table->number_or("port", 1, UINT16_MAX, usual));
    broker.keepalive = static_cast<uint16_t>(table->number_or("keepalive", 5, 3600, broker.keepalive));
    read.root = table->text("root", 1, longest_root).value_or(read.root);
    if (!is_root(read.root))
        table->fail_expected("root", "names with '/' between them, of letters, digits, '-', '_' and '.'");
    return read;
}

} // namespace fleet
