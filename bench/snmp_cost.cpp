// This benchmark measures what an SNMP manager waits for the table of 2,048 ONUs, all columns at once and column by
// column, beside tables of snmpd's own. Both sides are asked in turns by this one process, through the same snmpd.
#include <net-snmp/net-snmp-config.h>

#include <net-snmp/net-snmp-includes.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <spawn.h>
#include <sys/socket.h>

#include "processes.h"
#include "snmp/core/mib.h"

namespace
{

using front::snmp::Oid;

constexpr int rounds = 9;
constexpr size_t objects_in_answer = 56;

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

// A Process of another program ends with this object.
class Process
{
public:
    explicit Process(std::vector<std::string> words)
    {
        std::vector<char *> arguments;
        for (std::string &word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ)) die(arguments[0]);
    }
    ~Process()
    {
        kill(child, SIGTERM);
        waitpid(child, nullptr, 0);
    }
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

private:
    pid_t child = 0;
};

class Manager
{
public:
    explicit Manager(uint16_t port)
    {
        // The library would read and keep files of its own.
        for (const int option : {NETSNMP_DS_LIB_DONT_READ_CONFIGS, NETSNMP_DS_LIB_DONT_PERSIST_STATE})
            netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, option, 1);
        setenv("MIBS", "", 1);
        init_snmp("snmp_cost");
        std::string peer = "udp:127.0.0.1:" + std::to_string(port), community = "public";
        netsnmp_session wanted;
        snmp_sess_init(&wanted);
        wanted.peername = peer.data();
        wanted.version = SNMP_VERSION_2c;
        wanted.community = reinterpret_cast<u_char *>(community.data());
        wanted.community_len = community.size();
        session = snmp_open(&wanted);
        if (!session) die("snmp_open");
    }
    ~Manager() { snmp_close(session); }
    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    // Walks columns beside each other. Returns how many objects there are.
    size_t walk(const std::vector<Oid> &columns)
    {
        struct Walked {
            const Oid *column;
            Oid at;
        };
        std::vector<Walked> walked;
        for (const Oid &column : columns)
            walked.push_back({&column, column});
        size_t count = 0;
        while (!walked.empty()) {
            netsnmp_pdu *const asked = snmp_pdu_create(SNMP_MSG_GETBULK);
            asked->non_repeaters = 0;
            asked->max_repetitions = static_cast<long>(std::max<size_t>(1, objects_in_answer / walked.size()));
            for (const Walked &each : walked) {
                const std::vector<oid> name(each.at.begin(), each.at.end());
                snmp_add_null_var(asked, name.data(), name.size());
            }
            netsnmp_pdu *answer = nullptr;
            if (snmp_synch_response(session, asked, &answer) != STAT_SUCCESS || !answer ||
                answer->errstat != SNMP_ERR_NOERROR) {
                std::fprintf(stderr, "snmp_cost: a walk was not answered\n");
                std::exit(1);
            }
            size_t place = 0;
            for (const netsnmp_variable_list *each = answer->variables; each; each = each->next_variable, ++place) {
                Walked &of = walked[place % walked.size()];
                if (!of.column) continue;
                const Oid name(each->name, each->name + each->name_length);
                if (each->type == SNMP_ENDOFMIBVIEW || !front::snmp::is_below(name, *of.column)) {
                    of.column = nullptr;
                    continue;
                }
                of.at = name;
                ++count;
            }
            snmp_free_pdu(answer);
            std::erase_if(walked, [](const Walked &each) { return !each.column; });
        }
        return count;
    }

    // Returns the microseconds an object takes: of one walk or, of a small table, of several.
    double cost(const std::vector<std::vector<Oid>> &walks)
    {
        constexpr size_t fewest = 2000;
        size_t count = 0;
        const auto start = std::chrono::steady_clock::now();
        while (count < fewest)
            for (const std::vector<Oid> &columns : walks)
                count += walk(columns);
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count() /
               static_cast<double>(count);
    }

private:
    netsnmp_session *session;
};

Oid column_of(Oid entry, uint32_t number)
{
    entry.push_back(number);
    return entry;
}

// A Subject is a table: all columns at once, or each column by itself.
struct Subject {
    const char *name;
    std::vector<std::vector<Oid>> walks;
    std::vector<double> costs; // microseconds an object, by round
};

Subject at_once(const char *name, const std::vector<Oid> &columns)
{
    return {name, {columns}, {}};
}

Subject by_column(const char *name, const std::vector<Oid> &columns)
{
    Subject subject{name, {}, {}};
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

double median_ratio(const Subject &one, const Subject &other)
{
    std::vector<double> ratios;
    for (size_t round = 0; round < one.costs.size(); ++round)
        ratios.push_back(one.costs[round] / other.costs[round]);
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
        << "/x\nrocommunity public 127.0.0.1\nagentaddress udp:127.0.0.1:" << port << "\n";
    std::ofstream(folder + "/front.toml")
        << "[[olt]]\nname = \"olt\"\nsocket_dir = \"" << folder
        << "/olt\"\n[http]\nenabled = false\n[snmp]\nagentx = \"" << folder << "/x\"\nstandard_tables = false\n";
}

} // namespace

int main()
{
    std::string folder = "/tmp/snmp_cost-XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    constexpr int ports = 16, onus = 128;
    const std::vector<Oid> own = onu_columns();
    {
        const uint16_t port = free_port();
        write_files(folder, port, ports, onus);
        const Process olt(
            {PONSIM, "--scenario", folder + "/full.toml", "--socket-dir", folder + "/olt", "--state", "none"});
        setenv("SNMP_PERSISTENT_DIR", folder.c_str(), 1);
        const Process snmpd({"snmpd", "-f", "-Lf", folder + "/log", "-C", "-c", folder + "/snmpd.conf"});
        const Process ponfront({PONFRONT, "--config", folder + "/front.toml"});
        sleep(1);
        Manager manager(port);
        // Everything that is read once is there when the slowest tables are.
        size_t objects = 0;
        for (size_t before = 1; objects != before || objects < size_t{ports} * onus * own.size() / 2; sleep(2)) {
            before = objects;
            objects = manager.walk(own);
        }

        const Oid processes{1, 3, 6, 1, 2, 1, 25, 4, 2, 1}, interfaces{1, 3, 6, 1, 2, 1, 2, 2, 1};
        Subject subjects[] = {
            at_once("snmpd's hrSWRunTable, all columns at once", columns_of(processes, 7)),
            at_once("snmpd's ifTable, all columns at once", columns_of(interfaces, 22)),
            at_once("2,048 ONUs, all columns at once", own),
            by_column("snmpd's hrSWRunTable, column by column", columns_of(processes, 7)),
            by_column("snmpd's ifTable, column by column", columns_of(interfaces, 22)),
            by_column("2,048 ONUs, column by column", own),
        };
        for (int round = 0; round < rounds; ++round)
            for (Subject &subject : subjects)
                subject.costs.push_back(manager.cost(subject.walks));
        std::printf("%zu objects of ONUs in %zu columns; medians of %d rounds\n", objects, own.size(), rounds);
        for (const Subject &subject : subjects)
            std::printf("%-42s %7.2f us an object\n", subject.name, median(subject.costs));
        std::printf("ONUs to hrSWRunTable, all columns at once   %6.2f (2 at most)\n",
                    median_ratio(subjects[2], subjects[0]));
        std::printf("ONUs to ifTable, all columns at once        %6.2f (2 at most)\n",
                    median_ratio(subjects[2], subjects[1]));
        std::printf("ONUs to hrSWRunTable, column by column      %6.2f\n", median_ratio(subjects[5], subjects[3]));
        std::printf("ONUs to ifTable, column by column           %6.2f\n", median_ratio(subjects[5], subjects[4]));
    }
    std::filesystem::remove_all(folder);
    return 0;
}
