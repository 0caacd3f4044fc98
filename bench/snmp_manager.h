// A manager of SNMP, by net-snmp's library: it walks tables, as many columns beside each other as it likes.
#pragma once

#include <net-snmp/net-snmp-config.h>

#include <net-snmp/net-snmp-includes.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "processes.h"
#include "snmp/core/oid.h"

constexpr size_t objects_in_answer = 56;

class Manager
{
public:
    explicit Manager(uint16_t port)
    {
        // The library would read and keep files of its own.
        for (const int option : {NETSNMP_DS_LIB_DONT_READ_CONFIGS, NETSNMP_DS_LIB_DONT_PERSIST_STATE})
            netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID, option, 1);
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

    // Walks so many rows of columns beside each other, or all there are. Returns how many objects there were.
    size_t walk(const std::vector<front::snmp::Oid> &columns, size_t rows)
    {
        struct Walked {
            const front::snmp::Oid *column;
            front::snmp::Oid at;
        };
        std::vector<Walked> walked;
        for (const front::snmp::Oid &column : columns)
            walked.push_back({&column, column});
        size_t count = 0;
        while (!walked.empty() && rows > 0) {
            netsnmp_pdu *const asked = snmp_pdu_create(SNMP_MSG_GETBULK);
            const size_t repetitions = std::min(rows, std::max<size_t>(1, objects_in_answer / walked.size()));
            rows -= repetitions;
            asked->non_repeaters = 0;
            asked->max_repetitions = static_cast<long>(repetitions);
            for (const Walked &each : walked) {
                const std::vector<oid> name(each.at.begin(), each.at.end());
                snmp_add_null_var(asked, name.data(), name.size());
            }
            netsnmp_pdu *const answer = answer_to(asked);
            size_t place = 0;
            for (const netsnmp_variable_list *each = answer->variables; each; each = each->next_variable, ++place) {
                Walked &of = walked[place % walked.size()];
                if (!of.column) continue;
                const front::snmp::Oid name(each->name, each->name + each->name_length);
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

private:
    netsnmp_pdu *answer_to(netsnmp_pdu *asked)
    {
        netsnmp_pdu *answer = nullptr;
        const int status = snmp_synch_response(session, asked, &answer);
        if (status == STAT_SUCCESS && answer && answer->errstat == SNMP_ERR_NOERROR) return answer;
        std::string why = "no answer came in time";
        if (status == STAT_SUCCESS && answer)
            why = snmp_errstring(static_cast<int>(answer->errstat));
        else if (status == STAT_ERROR)
            why = snmp_api_errstring(session->s_snmp_errno);
        throw std::runtime_error("a walk was not answered: " + why);
    }

    netsnmp_session *session;
};
