// Sets of ONU ids, and the texts that they print as.
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

// Both printers refuse alike.
bool is_missing(const onu_id_set *set, const char *text, const char *function = __builtin_FUNCTION(),
                int line = __builtin_LINE())
{
    if (set && text) return false;
    userlog_err(function, line, "convert abitmap to string error. parameter failed.");
    return true;
}

// Appends a number in the manner of `format`, and returns where the text ends then.
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

// Its callers know every one of its ways: that a word without members is skipped and so ends no run, that a run still
// open at the end is not closed, what is printed at the last id, and that the run's length is kept in 8 bits.
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
