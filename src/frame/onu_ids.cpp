// These functions read sets of ONU ids and print them as texts.
#include "board/util.h"
#include "bsp_pon.h"
#include "frame/exchange.h"

namespace
{

constexpr uint32_t bits = 32;

bool has(uint32_t word, uint32_t bit)
{
    return word >> bit & 1;
}

// Both printing functions refuse a missing argument in the same way.
bool is_missing(const onu_id_set *set, const char *text, const char *function = __builtin_FUNCTION(),
                int line = __builtin_LINE())
{
    if (set && text) return false;
    userlog_err(function, line, "convert abitmap to string error. parameter failed.");
    return true;
}

// Appends a number as `format` says, and returns the new end of the text.
char *append(char *end, const char *format, uint32_t number)
{
    return end + __builtin_sprintf(end, format, static_cast<int>(number));
}

} // namespace

int ont_id_res_exists_ont(const onu_id_set *set)
{
    if (!set) {
        userlog_err(__func__, __LINE__, "parameter error.");
        return 0;
    }
    for (uint32_t word : set->words)
        if (word) return 1;
    return 0;
}

// Callers rely on each detail of this text. A word without members is skipped and therefore ends no run. A run that is
// still open at the end is not closed. The last id is printed in a way of its own. The length of a run is kept in 8
// bits.
char *ont_id_res_str(const onu_id_set *set, uint32_t last_id, char *text)
{
    if (is_missing(set, text)) return nullptr;
    char *end = text;
    bool in_run = false;
    bool closed_before = false;
    uint32_t start = 0;
    int8_t length = 0;
    for (uint32_t first = 0; first < bits * 4; first += bits) {
        const uint32_t word = set->words[first / bits];
        if (!word) continue;
        for (uint32_t id = first; id < first + bits; ++id) {
            if (has(word, id - first)) {
                if (!in_run) {
                    in_run = true;
                    start = id;
                    end = append(end, closed_before ? ",%d" : "%d", id);
                }
                ++length;
                if (id == last_id && length != 1) end = append(end, "-%d", static_cast<uint32_t>(length));
            } else if (in_run) {
                if (length > 2)
                    end = append(end, "-%d", start + static_cast<uint32_t>(length) - 1);
                else if (length == 2)
                    end = append(end, ",%d", start + 1);
                closed_before = true;
                in_run = false;
                length = 0;
            }
        }
    }
    return text;
}

char *ont_id_res_str_expand(const onu_id_set *set, uint32_t, char *text)
{
    if (is_missing(set, text)) return nullptr;
    char *end = text;
    for (uint32_t id = 0; id < bits * 4; ++id)
        if (has(set->words[id / bits], id % bits)) end = append(end, end == text ? "%d" : ",%d", id);
    return text;
}
