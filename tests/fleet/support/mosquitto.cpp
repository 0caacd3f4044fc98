#include "mosquitto.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "text/words.h"

namespace
{

constexpr char program[] = "/usr/sbin/mosquitto";

uint16_t some_free_port()
{
    const int found = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    const bool is_bound = !bind(found, reinterpret_cast<sockaddr *>(&address), length) &&
                          !getsockname(found, reinterpret_cast<sockaddr *>(&address), &length);
    close(found);
    if (!is_bound) throw std::runtime_error("no free port");
    return ntohs(address.sin_port);
}

} // namespace

Mosquitto::Mosquitto(const std::string &more, const std::map<std::string, std::string> &files)
    : directory("/tmp/mosquitto_XXXXXX"), free_port(some_free_port())
{
    if (!mkdtemp(directory.data())) throw std::runtime_error("no folder for a broker");
    for (const auto &[name, content] : files)
        std::ofstream(directory + "/" + name) << content;
    const std::string lines =
        text::replaced(text::replaced(more, "{PORT}", std::to_string(free_port)), "{FOLDER}", directory);
    std::ofstream(directory + "/conf") << "user " << getpwuid(geteuid())->pw_name << "\nlog_dest stderr\nlistener 0 "
                                       << directory << "/socket\nallow_anonymous true\n"
                                       << lines;
    start();
}

Mosquitto::~Mosquitto()
{
    stop();
    std::filesystem::remove_all(directory);
}

// The program says when it is ready.
void Mosquitto::start()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC)) throw std::runtime_error("no pipe");
    const std::string file = directory + "/conf";
    child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        execl(program, program, "-c", file.c_str(), nullptr);
        _exit(127);
    }
    close(ends[1]);
    std::string said;
    pollfd readable{ends[0], POLLIN, 0};
    char chunk[1024];
    while (said.find(" running\n") == said.npos) {
        const ssize_t got = poll(&readable, 1, 30'000) == 1 ? read(ends[0], chunk, sizeof chunk) : 0;
        if (got <= 0) {
            close(ends[0]);
            throw std::runtime_error("the broker does not start: " + said);
        }
        said.append(chunk, static_cast<size_t>(got));
    }
    // What it says from now on is written nowhere: it passes over that.
    close(ends[0]);
}

void Mosquitto::stop()
{
    if (child <= 0) return;
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    child = 0;
}

fleet::Broker Mosquitto::local() const
{
    return {.socket = directory + "/socket"};
}

Peer::Peer(const fleet::Broker &broker, const std::string &name, std::optional<fleet::Message> will)
    : connection(broker, name, std::move(will), *this)
{
}

bool Peer::turn_until(const std::function<bool()> &is_so)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!is_so()) {
        if (std::chrono::steady_clock::now() > end) return false;
        connection.turn(100);
    }
    return true;
}

void Peer::hear(const std::string &topic)
{
    connection.subscribe(topic);
    // The broker answers one thing after the other, and publishes to whoever has subscribed by then.
    const std::string own = "peer/" + std::to_string(reinterpret_cast<uintptr_t>(this));
    connection.subscribe(own);
    int number = 0;
    const bool is_heard = turn_until([&] {
        if (number == 0) number = connection.publish({.topic = own, .payload = topic});
        return number != 0 && !take(own).topic.empty();
    });
    if (!is_heard) throw std::runtime_error("the broker does not let " + topic + " be heard");
}

fleet::Message Peer::take(const std::string &topic)
{
    for (auto message = messages.begin(); message != messages.end(); ++message) {
        if (message->topic != topic) continue;
        fleet::Message found = std::move(*message);
        messages.erase(message);
        return found;
    }
    return {};
}
