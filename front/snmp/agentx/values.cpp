#include "snmp/agentx/values.h"

namespace front::snmp::agentx
{
namespace
{

void write_value(Writer &writer, const Oid &name, const Objects &objects)
{
    if (const auto value = objects.get(name))
        writer.binding(name, *value);
    else if (objects.has_object(name))
        writer.no_instance(name);
    else
        writer.no_object(name);
}

// Writes what is next in a range, which begins behind it from now on. Returns whether there is something.
bool write_next(Writer &writer, Oid &start, bool included, const Oid &end, const Objects &objects)
{
    auto found = objects.next(start, included, end);
    if (!found) {
        writer.end_of_view(start);
        return false;
    }
    writer.binding(found->name, found->value);
    start = std::move(found->name);
    return true;
}

struct Range {
    Oid start;
    bool included = false;
    Oid end;
};

void read(Reader &reader, Range &range)
{
    range.included = reader.oid(range.start);
    reader.oid(range.end);
}

// Writes every repetition of every range, as long as there is room for another and a range that has not ended.
void write_repetitions(Writer &writer, std::vector<Range> &ranges, uint16_t repetitions, const Objects &objects)
{
    for (uint16_t repetition = 0; repetition < repetitions; ++repetition) {
        bool more = false;
        for (Range &range : ranges) {
            if (writer.size() > most_payload / 2) return;
            more |= write_next(writer, range.start, range.included, range.end, objects);
            range.included = false;
        }
        if (!more) return;
    }
}

void write_bulk(Writer &writer, Reader &reader, const Objects &objects)
{
    uint16_t non_repeaters = reader.u16();
    const uint16_t repetitions = reader.u16();
    std::vector<Range> ranges;
    while (!reader.at_end()) {
        Range range;
        read(reader, range);
        if (non_repeaters > 0) {
            --non_repeaters;
            write_next(writer, range.start, range.included, range.end, objects);
        } else {
            ranges.push_back(std::move(range));
        }
    }
    if (!ranges.empty()) write_repetitions(writer, ranges, repetitions, objects);
}

} // namespace

bool write_values(Writer &writer, PduType type, Reader reader, const Objects &objects)
{
    if (type == PduType::get_bulk) {
        write_bulk(writer, reader, objects);
    } else {
        Range range; // whose memory is used again
        while (!reader.at_end() && writer.size() <= most_payload) {
            read(reader, range);
            if (type == PduType::get)
                write_value(writer, range.start, objects);
            else
                write_next(writer, range.start, range.included, range.end, objects);
        }
    }
    return writer.size() <= most_payload;
}

} // namespace front::snmp::agentx
