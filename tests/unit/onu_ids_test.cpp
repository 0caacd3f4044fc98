// These tests check sets of ONU ids, and the texts that they print as.
#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <cstring>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "bsp_pon.h"
#include "bsp_testing/board.h"

namespace
{

using Ids = std::bitset<128>;

constexpr uint32_t no_last_id = 128;
constexpr size_t room = 402; // the room that the header requires
constexpr char untouched = '\x5E';

onu_id_set set_of(const Ids &ids)
{
    onu_id_set set{};
    for (uint32_t id = 0; id < 128; ++id)
        if (ids[id]) set.words[id / 32] |= 1u << id % 32;
    return set;
}

Ids of(std::initializer_list<uint32_t> members)
{
    Ids ids;
    for (uint32_t id : members)
        ids.set(id);
    return ids;
}

// Returns the ids from `first` to `last`.
Ids run(uint32_t first, uint32_t last)
{
    Ids ids;
    for (uint32_t id = first; id <= last; ++id)
        ids.set(id);
    return ids;
}

// A Room is a text buffer with guards around exactly the room that callers provide.
class Room
{
public:
    Room() : bytes(room + 2 * guard, untouched) {}

    char *text() { return bytes.data() + guard; }
    bool is_untouched() const
    {
        return std::ranges::all_of(bytes, [](char byte) { return byte == untouched; });
    }
    bool guards_stand() const
    {
        const auto is_guard = [](char byte) { return byte == untouched; };
        return std::all_of(bytes.begin(), bytes.begin() + guard, is_guard) &&
               std::all_of(bytes.end() - guard, bytes.end(), is_guard);
    }

private:
    static constexpr ptrdiff_t guard = 32;
    std::vector<char> bytes;
};

using Printer = char *(const onu_id_set *, uint32_t, char *);

// Returns what a printing function writes for a set that has members.
std::string printed(Printer *printer, const Ids &ids, uint32_t last_id)
{
    const onu_id_set set = set_of(ids);
    Room buffer;
    EXPECT_EQ(printer(&set, last_id, buffer.text()), buffer.text());
    EXPECT_TRUE(buffer.guards_stand());
    EXPECT_NE(std::memchr(buffer.text(), '\0', room), nullptr);
    EXPECT_EQ(std::memcmp(&set, std::initializer_list<onu_id_set>{set_of(ids)}.begin(), sizeof set), 0);
    return std::string(buffer.text(), strnlen(buffer.text(), room));
}

std::string ranges(const Ids &ids, uint32_t last_id = 0)
{
    return printed(ont_id_res_str, ids, last_id);
}

std::string list(const Ids &ids, uint32_t spare = 0)
{
    return printed(ont_id_res_str_expand, ids, spare);
}

// --- This model makes the ranges in another way: from the runs in the words that have members, read in order ---

struct Run {
    uint32_t first; // id of its first member
    int count;      // number of members, read one after the other
    int at_last_id; // which member is the last id, counted from 1; 0: none
    bool ended;     // a bit that is no member was read behind it
};

std::vector<Run> runs_of(const Ids &ids, uint32_t last_id)
{
    std::vector<uint32_t> read;
    for (uint32_t word = 0; word < 4; ++word)
        if ((ids >> word * 32 & Ids(0xFFFFFFFF)).any())
            for (uint32_t bit = 0; bit < 32; ++bit)
                read.push_back(word * 32 + bit);

    const auto member = [&](uint32_t id) { return ids[id]; };
    std::vector<Run> runs;
    for (auto from = std::ranges::find_if(read, member); from != read.end();) {
        const auto to = std::find_if_not(from, read.end(), member);
        const auto last = std::find(from, to, last_id);
        runs.push_back(
            {*from, static_cast<int>(to - from), last == to ? 0 : static_cast<int>(last - from) + 1, to != read.end()});
        from = std::find_if(to, read.end(), member);
    }
    return runs;
}

// Returns a count as eight bits with a sign hold it.
int in_eight_bits(int count)
{
    return count > 127 ? count - 256 : count;
}

std::string model(const Ids &ids, uint32_t last_id)
{
    std::string text;
    for (const Run &each : runs_of(ids, last_id)) {
        if (!text.empty()) text += ',';
        text += std::to_string(each.first);
        if (each.at_last_id > 1) text += '-' + std::to_string(in_eight_bits(each.at_last_id));
        if (each.ended && each.count == 2) text += ',' + std::to_string(each.first + 1);
        if (each.ended && each.count > 2)
            text += '-' + std::to_string(each.first + static_cast<uint32_t>(each.count) - 1);
    }
    return text;
}

std::string model_list(const Ids &ids)
{
    std::string text;
    for (uint32_t id = 0; id < 128; ++id)
        if (ids[id]) text += (text.empty() ? "" : ",") + std::to_string(id);
    return text;
}

void expect_as_modelled(const Ids &ids, uint32_t last_id)
{
    const onu_id_set set = set_of(ids);
    ASSERT_EQ(ont_id_res_exists_ont(&set), ids.any());
    if (ids.none()) return;
    ASSERT_EQ(ranges(ids, last_id), model(ids, last_id)) << list(ids) << " with last id " << last_id;
    ASSERT_EQ(list(ids, last_id), model_list(ids));
}

class Random
{
public:
    uint32_t below(uint32_t bound) { return static_cast<uint32_t>(engine()) % bound; }

    // Returns a set in which each id is a member with a probability of `percent`.
    Ids scattered(uint32_t percent)
    {
        Ids ids;
        for (uint32_t id = 0; id < 128; ++id)
            ids[id] = below(100) < percent;
        return ids;
    }

    // Returns a set of a few runs of any length. Many of them go across the end of a word.
    Ids of_runs()
    {
        Ids ids;
        for (uint32_t count = 1 + below(4); count > 0; --count) {
            const uint32_t first = below(2) ? below(128) : 32 * (1 + below(3)) - 1 - below(4);
            ids |= run(first, std::min(127u, first + below(below(2) ? 6 : 80)));
        }
        return ids;
    }

    // Returns any of the sets above, with some of its words emptied.
    Ids with_empty_words()
    {
        Ids ids = below(2) ? of_runs() : scattered(90);
        for (uint32_t word = 0; word < 4; ++word)
            if (below(2)) ids &= ~run(word * 32, word * 32 + 31);
        return ids;
    }

    // Returns an id that is a member in most cases, because only then the last id changes the text.
    uint32_t last_id(const Ids &ids)
    {
        const uint32_t start = below(160);
        if (start >= 128) return start;
        if (below(4) == 0) return start;
        for (uint32_t id = start; id < 128; ++id)
            if (ids[id]) return id;
        return 127;
    }

private:
    std::mt19937 engine{20240229};
};

class OnuIds : public testing::Test
{
protected:
    OnuIds() { rb_reset(); }
};

TEST_F(OnuIds, PrintAsModelledInManyRandomSets)
{
    Random random;
    for (int round = 0; round < 21000; ++round)
        for (const Ids &ids : {random.scattered(3), random.scattered(50), random.scattered(95), random.of_runs(),
                               random.with_empty_words()})
            ASSERT_NO_FATAL_FAILURE(expect_as_modelled(ids, random.last_id(ids)));
    EXPECT_EQ(rb_recorded(), 0u) << "something was logged";
}

TEST_F(OnuIds, PrintAsModelledInEverySetOfOneRunAtEveryLastId)
{
    for (uint32_t first = 0; first < 128; ++first)
        for (uint32_t last = first; last < 128; ++last)
            for (const uint32_t last_id : {0u, first, (first + last) / 2, last, 127u, no_last_id, UINT32_MAX})
                ASSERT_NO_FATAL_FAILURE(expect_as_modelled(run(first, last), last_id));
}

// --- These tests check texts that front ends rely on ---

TEST_F(OnuIds, RangesOfTwoPrintAsTwoIdsAndLongerOnesAsFirstAndLast)
{
    EXPECT_EQ(ranges(of({1, 2, 3, 4, 5, 7, 9, 10})), "1-5,7,9,10");
    EXPECT_EQ(ranges(of({4, 5})), "4,5");
    EXPECT_EQ(ranges(of({4, 5, 6})), "4-6");
    EXPECT_EQ(ranges(of({0})), "0");
}

TEST_F(OnuIds, AtTheLastIdTheLengthOfTheRunIsPrinted)
{
    EXPECT_EQ(ranges(of({1, 2, 3, 4, 5, 7, 9, 10}), 10), "1-5,7,9-2,10");
    EXPECT_EQ(ranges(run(120, 127), 127), "120-8");
}

TEST_F(OnuIds, AtTheLastIdNothingIsPrintedForTheFirstOfARun)
{
    EXPECT_EQ(ranges(of({5, 6, 7}), 5), "5-7");
    EXPECT_EQ(ranges(of({127}), 127), "127");
}

TEST_F(OnuIds, ARunThatIsStillOpenAtTheEndIsNotClosed)
{
    EXPECT_EQ(ranges(run(120, 127)), "120");
    EXPECT_EQ(ranges(of({30, 31})), "30");
}

TEST_F(OnuIds, AWordWithoutMembersEndsNoRun)
{
    EXPECT_EQ(ranges(of({31, 64})), "31,32");
    EXPECT_EQ(ranges(of({31, 64}), 64), "31-2,32");
    EXPECT_EQ(ranges(of({31, 96, 97})), "31-33");
    EXPECT_EQ(ranges(of({31, 65})), "31,65");
}

TEST_F(OnuIds, AllIdsCountInEightBits)
{
    EXPECT_EQ(ranges(run(0, 127), 127), "0--128");
    EXPECT_EQ(ranges(run(0, 127), 126), "0-127");
    EXPECT_EQ(ranges(run(0, 127)), "0");
    EXPECT_EQ(ranges(run(0, 126)), "0-126");
}

TEST_F(OnuIds, ListNamesEveryMember)
{
    EXPECT_EQ(list(of({0, 127})), "0,127");
    EXPECT_EQ(list(of({31, 64})), "31,64");
    EXPECT_EQ(list(run(0, 127)).size(), room - 1);
}

TEST_F(OnuIds, ExistWhereAnyIsAMember)
{
    for (uint32_t id = 0; id < 128; ++id) {
        const onu_id_set set = set_of(of({id}));
        EXPECT_EQ(ont_id_res_exists_ont(&set), 1) << id;
    }
    const onu_id_set none{};
    EXPECT_EQ(ont_id_res_exists_ont(&none), 0);
}

TEST_F(OnuIds, EmptySetLeavesTheTextAsItWas)
{
    const onu_id_set none{};
    for (Printer *printer : {ont_id_res_str, ont_id_res_str_expand}) {
        Room buffer;
        EXPECT_EQ(printer(&none, 0, buffer.text()), buffer.text());
        EXPECT_TRUE(buffer.is_untouched());
    }
    EXPECT_EQ(rb_recorded(), 0u);
}

// --- These tests pass null pointers ---

void expect_one_error(const char *function, const char *text)
{
    ASSERT_EQ(rb_recorded(), 1u);
    ASSERT_EQ(rb_logs(), 1u);
    EXPECT_EQ(rb_log_at(0)->level, RB_ERR);
    EXPECT_STREQ(rb_log_at(0)->function, function);
    EXPECT_GT(rb_log_at(0)->line, 0);
    EXPECT_STREQ(rb_log_at(0)->format, text);
    EXPECT_STREQ(rb_log_at(0)->text, text);
}

TEST_F(OnuIds, NullSetDoesNotExist)
{
    EXPECT_EQ(ont_id_res_exists_ont(nullptr), 0);
    expect_one_error("ont_id_res_exists_ont", "parameter error.");
}

TEST_F(OnuIds, NullSetOrTextIsNotPrinted)
{
    const onu_id_set set = set_of(of({1}));
    const std::pair<Printer *, const char *> printers[] = {{ont_id_res_str, "ont_id_res_str"},
                                                           {ont_id_res_str_expand, "ont_id_res_str_expand"}};
    for (const auto &[printer, name] : printers) {
        Room buffer;
        for (const auto &[given, text] :
             {std::pair<const onu_id_set *, char *>{nullptr, buffer.text()}, {&set, nullptr}, {nullptr, nullptr}}) {
            rb_reset();
            EXPECT_EQ(printer(given, 0, text), nullptr);
            expect_one_error(name, "convert abitmap to string error. parameter failed.");
            EXPECT_TRUE(buffer.is_untouched());
        }
    }
}

} // namespace
