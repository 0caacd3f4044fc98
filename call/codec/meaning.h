// These functions know what the values of fields mean: the names of numbers and of their bits, addresses and dates.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "call/codec/values.h"
#include "catalogue.h"

namespace call
{

// Returns the name of the number in a field's bytes, or nothing when the catalogue has none for it.
std::optional<std::string_view> name_of(const catalogue::Field &field, std::span<const uint8_t> bytes);
// Returns the names of the bits that are set, and the digits of such bits as have no name.
std::vector<std::string> flags_of(const catalogue::Field &field, std::span<const uint8_t> bytes);

// Returns a number for people: by its name, by the names of its bits, as hexadecimal digits, or with its unit.
std::string meaning_text(const catalogue::Field &field, std::span<const uint8_t> bytes);
// Returns an IPv4 address, an OUI or a date for people and programs, and a list or a set of ports for people.
std::string composed_text(const catalogue::Field &field, std::span<const uint8_t> bytes);

// Returns the digits of a number whose highest byte comes first.
std::string big_endian_digits(std::span<const uint8_t> bytes);
// Returns bytes in a notation that another field decides about: an address, or a number.
std::string decided_text(catalogue::Notation notation, std::span<const uint8_t> bytes);
// Returns the bytes of a value that is given in this notation. Numbers and IPv4 addresses have zeros before them.
Bytes parse_decided(std::string_view name, std::string_view text, catalogue::Notation notation,
                    const catalogue::Field &field);

// Returns a power of light in dBm; -40 without light.
double dbm_of(double microwatts);

// Returns the bytes of a number that is given by its name, by the names of its bits with commas between them, or as a
// number. A name may have hyphens in place of its blanks. Throws a UsageError that starts with `name` and says what is
// allowed.
uint64_t parse_meaning(std::string_view name, std::string_view text, const catalogue::Field &field);
// Returns the numbers of a list, or those of a set of ports.
std::vector<uint32_t> numbers_in(const catalogue::Field &field, std::span<const uint8_t> bytes);

// Returns the bytes of an IPv4 address, an OUI or a date. They may be given as a block, too; a list and a set of ports
// must be.
Bytes parse_composed(std::string_view name, std::string_view text, const catalogue::Field &field);

// Returns what a service takes in the field, for people: "one of off, on", "1 to 4094". The text is empty when the
// catalogue does not say it.
std::string allowed_text(const catalogue::Field &field);
// Returns the names of a field's numbers, or those of its bits, as words of a command line.
std::vector<std::string> value_words(const catalogue::Field &field);
// Throws a UsageError that starts with `name` when the number in the bytes is one that no service takes.
void check_allowed(std::string_view name, const catalogue::Field &field, std::span<const uint8_t> bytes);

} // namespace call
