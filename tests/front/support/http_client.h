// A client of HTTP that says what it is told to say.
#pragma once

#include <cstdint>
#include <string>

// Connects to a port of this machine and sends this text. Returns the connection, which the caller closes.
int connection_to(uint16_t port, const std::string &sent);
// Sends this text to a port of this machine, and returns everything that comes back.
std::string answer_of(uint16_t port, const std::string &sent);

// Asks for a path, with further lines of the head, each of which ends with CR and LF.
std::string http_get(uint16_t port, const std::string &path, const std::string &lines = {},
                     const std::string &method = "GET");
// Sends a document of JSON.
std::string http_post(uint16_t port, const std::string &path, const std::string &body, const std::string &lines = {});
// Returns what stands behind the head of an answer, however it was sent.
std::string body_of(const std::string &answer);
