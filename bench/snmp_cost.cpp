// This benchmark measures what an SNMP manager waits for the tables of 2,048 ONUs, all columns at once and column by
// column, beside tables of snmpd's own, and how much of the processors snmpd and ponfront need for it. Both sides are
// asked in turns by this one process, through the same snmpd.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>

#include "processes.h"
#include "snmp/core/mib.h"
#include "snmp_manager.h"

namespace
{

using front::snmp::Oid;

constexpr int rounds = 9;
constexpr size_t objects_in_round = 2000; // at least

uint16_t free_port()
{
    const int probe = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(probe, reinterpret_cast<sockaddr *>(&address), length) ||
        getsockname(probe, reinterpret_cast<sockaddr *>(&address), &length))
        die("port");
    close(probe);
    return ntohs(address.sin_port);
}

// A Process of another program ends with this object, or with this process. What it says goes to a file.
class Process
{
public:
    Process(const std::string &log, std::vector<std::string> words)
    {
        std::vector<char *> arguments;
        for (std::string &word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        child = fork();
        if (child < 0) die("fork");
        if (child > 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        execvp(arguments[0], arguments.data());
        std::perror(arguments[0]);
        _exit(1);
    }
    ~Process()
    {
        kill(child, SIGTERM);
        waitpid(child, nullptr, 0);
    }
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    // Returns the microseconds that its threads have run on a processor.
    double processor_time() const
    {
        double sum = 0;
        for (const auto &thread : std::filesystem::directory_iterator("/proc/" + std::to_string(child) + "/task")) {
            double nanoseconds = 0;
            std::ifstream(thread.path() / "schedstat") >> nanoseconds;
            sum += nanoseconds / 1000;
        }
        return sum;
    }

private:
    pid_t child = 0;
};

Oid column_of(Oid entry, uint32_t number)
{
    entry.push_back(number);
    return entry;
}

// What an object costs, in microseconds.
struct Cost {
    double waited, processor, master; // the last is snmpd's part of the time of processors
};

// A Subject is a table: all columns at once, or each column by itself.
struct Subject {
    const char *name;
    std::vector<std::vector<Oid>> walks;
    size_t rows = SIZE_MAX;       // beyond which nothing is asked for: what comes then is another table
    size_t next = 0;              // walk
    std::vector<Cost> costs = {}; // by round
};

Subject at_once(const char *name, const std::vector<Oid> &columns)
{
    return {.name = name, .walks = {columns}};
}

Subject by_column(const char *name, const std::vector<Oid> &columns)
{
    Subject subject{.name = name, .walks = {}};
    for (const Oid &column : columns)
        subject.walks.push_back({column});
    return subject;
}

std::vector<Oid> columns_of(const Oid &entry, uint32_t count)
{
    std::vector<Oid> columns;
    for (uint32_t number = 1; number <= count; ++number)
        columns.push_back(column_of(entry, number));
    return columns;
}

// Returns the columns of all tables that have a row for each ONU.
std::vector<Oid> onu_columns()
{
    std::vector<Oid> columns;
    for (const front::snmp::TableInfo &info : front::snmp::table_infos()) {
        if (info.index.size() != 3 || info.index[2].name != "bspOnuId") continue;
        Oid entry = front::snmp::MibSettings().root;
        entry.insert(entry.end(), info.entry.begin(), info.entry.end());
        for (const front::snmp::ColumnKind &column : info.columns)
            columns.push_back(column_of(entry, column.number));
    }
    return columns;
}

double median_of(const Subject &subject, double Cost::*what)
{
    std::vector<double> values;
    for (const Cost &cost : subject.costs)
        values.push_back(cost.*what);
    return median(values);
}

double median_ratio(const Subject &one, const Subject &other, double Cost::*what)
{
    std::vector<double> ratios;
    for (size_t round = 0; round < one.costs.size(); ++round)
        ratios.push_back(one.costs[round].*what / (other.costs[round].*what));
    return median(ratios);
}

void write_files(const std::string &folder, uint16_t port, int ports, int onus)
{
    std::ofstream(folder + "/full.toml")
        << "start = \"registered\"\n[service.bound]\nbound = true\n[[olt]]\nname = \"olt\"\n"
           "[[olt.port]]\nnumbers = \"1-"
        << ports << "\"\n[[olt.port.onu]]\nname = \"onu\"\nservice = \"bound\"\ncount = " << onus << "\n";
    std::ofstream(folder + "/snmpd.conf")
        << "master agentx\nagentXSocket unix:" << folder
        << "/x\ndontLogTCPWrappersConnects yes\nrocommunity public 127.0.0.1\nagentaddress udp:127.0.0.1:" << port
        << "\n";
    std::ofstream(folder + "/front.toml")
        << "[[olt]]\nname = \"olt\"\nsocket_dir = \"" << folder
        << "/olt\"\n[http]\nenabled = false\n[snmp]\nagentx = \"" << folder << "/x\"\nstandard_tables = false\n";
}

// Two processes that answer one manager.
class Laboratory
{
public:
    Laboratory(const std::string &folder, uint16_t port)
        : snmpd(folder + "/snmpd.log", {"snmpd", "-f", "-Le", "-C", "-c", folder + "/snmpd.conf"}),
          ponfront(folder + "/ponfront.log", {PONFRONT, "--config", folder + "/front.toml"}),
          manager(port)
    {
    }

    // Waits until everything is there that is read once. Returns how many objects that are.
    size_t wait_for(const std::vector<Oid> &columns, size_t fewest)
    {
        size_t objects = 0;
        for (int tries = 0; tries < 60; ++tries) {
            sleep(1);
            const size_t before = std::exchange(objects, manager.walk(columns, SIZE_MAX));
            if (objects == before && objects >= fewest) return objects;
        }
        throw std::runtime_error("only " + std::to_string(objects) + " objects came, and at least " +
                                 std::to_string(fewest) + " were expected");
    }

    size_t rows_of(const Oid &column) { return manager.walk({column}, SIZE_MAX); }

    // Measures one walk of all columns or, of a small table, several; of columns by themselves only some in each round.
    void measure(Subject &subject)
    {
        size_t count = 0;
        const double master = snmpd.processor_time(), subagent = ponfront.processor_time();
        const auto start = std::chrono::steady_clock::now();
        for (; count < objects_in_round; subject.next = (subject.next + 1) % subject.walks.size())
            count += manager.walk(subject.walks[subject.next], subject.rows);
        const std::chrono::duration<double, std::micro> waited = std::chrono::steady_clock::now() - start;
        const auto objects = static_cast<double>(count);
        const double of_master = snmpd.processor_time() - master;
        const double of_both = of_master + ponfront.processor_time() - subagent;
        subject.costs.push_back({waited.count() / objects, of_both / objects, of_master / objects});
    }

private:
    const Process snmpd, ponfront;
    Manager manager;
};

void print_ratios(const char *name, const Subject &one, const Subject &other, const char *limit)
{
    std::printf("%-44s %7.2f %9.2f %9.2f%s\n", name, median_ratio(one, other, &Cost::waited),
                median_ratio(one, other, &Cost::processor), median_ratio(one, other, &Cost::master), limit);
}

void compare(const std::string &folder)
{
    constexpr int ports = 16, onus = 128;
    const std::vector<Oid> own = onu_columns();
    const uint16_t port = free_port();
    write_files(folder, port, ports, onus);
    setenv("SNMP_PERSISTENT_DIR", folder.c_str(), 1);
    std::filesystem::create_directory(folder + "/cert_indexes"); // or net-snmp says that it makes it
    setenv("MIBS", "", 1);
    const Process olt(folder + "/ponsim.log", {PONSIM, "--scenario", folder + "/full.toml", "--socket-dir",
                                               folder + "/olt", "--state", "none"});
    Laboratory laboratory(folder, port);
    const size_t objects = laboratory.wait_for(own, size_t{ports} * onus * own.size() / 2);

    const Oid processes{1, 3, 6, 1, 2, 1, 25, 4, 2, 1}, interfaces{1, 3, 6, 1, 2, 1, 2, 2, 1};
    Subject subjects[] = {
        at_once("snmpd's hrSWRunTable, all columns at once", columns_of(processes, 7)),
        at_once("snmpd's ifTable, all columns at once", columns_of(interfaces, 22)),
        at_once("2,048 ONUs, all columns at once", own),
        by_column("snmpd's hrSWRunTable, column by column", columns_of(processes, 7)),
        by_column("snmpd's ifTable, column by column", columns_of(interfaces, 22)),
        by_column("2,048 ONUs, column by column", own),
    };
    for (Subject &subject : subjects)
        subject.rows = laboratory.rows_of(subject.walks[0][0]);
    for (int round = 0; round < rounds; ++round)
        for (Subject &subject : subjects)
            laboratory.measure(subject);
    std::printf("%zu objects of ONUs in %zu columns; medians of %d rounds\n", objects, own.size(), rounds);
    std::printf("%-44s %7s %9s %9s\n", "us an object", "waited", "processor", "of snmpd");
    for (const Subject &subject : subjects)
        std::printf("%-44s %7.2f %9.2f %9.2f\n", subject.name, median_of(subject, &Cost::waited),
                    median_of(subject, &Cost::processor), median_of(subject, &Cost::master));
    std::printf("ratios\n");
    print_ratios("ONUs to hrSWRunTable, all columns at once", subjects[2], subjects[0], "  (2 at most)");
    print_ratios("ONUs to ifTable, all columns at once", subjects[2], subjects[1], "  (2 at most)");
    print_ratios("ONUs to hrSWRunTable, column by column", subjects[5], subjects[3], "");
    print_ratios("ONUs to ifTable, column by column", subjects[5], subjects[4], "");
}

} // namespace

int main()
{
    std::string folder = "/tmp/snmp_cost-XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    try {
        compare(folder);
    } catch (const std::runtime_error &error) {
        std::fprintf(stderr, "snmp_cost: %s; what the programs said is in %s\n", error.what(), folder.c_str());
        return 1;
    }
    std::filesystem::remove_all(folder);
    return 0;
}
