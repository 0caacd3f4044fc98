// How requests and answers follow each other over the standard input and output of a process, a line each:
//
//     {"hello":{"version":"1.0.0","allow":"read"}}                                    the first line of who answers
//     {"correlation":"7","class":"read","request":{...}}                              a request, see message.h
//     {"correlation":"7","answer":{...}}                                              what answers it
//
// Answers may come in another order than the requests.
#pragma once

#include <string>
#include <string_view>

#include "catalogue.h"

namespace fleet
{

// A line has so many bytes at most: the largest result database, and a file in hexadecimal digits.
inline constexpr size_t longest_line = size_t{160} << 20;

struct Hello {
    std::string version;                             // of the program
    catalogue::Class allow = catalogue::Class::read; // what it permits at most

    bool operator==(const Hello &) const = default;
};

struct RequestFrame {
    std::string correlation; // names the request among those that wait for their answers; at most 64 bytes
    catalogue::Class impact = catalogue::Class::read; // what the request may be at most
    std::string request;

    bool operator==(const RequestFrame &) const = default;
};

struct AnswerFrame {
    std::string correlation;
    std::string answer;

    bool operator==(const AnswerFrame &) const = default;
};

// These write a line without its newline.
std::string to_line(const Hello &hello);
std::string to_line(const RequestFrame &frame);
std::string to_line(const AnswerFrame &frame);
// These throw a call::UsageError that says what is wrong with the line.
Hello hello_from_line(std::string_view line);
RequestFrame request_from_line(std::string_view line);
AnswerFrame answer_from_line(std::string_view line);

} // namespace fleet
