// A Refusal is an answer that says why a request is not done.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "http/message.h"

namespace front
{

class Refusal : public std::runtime_error
{
public:
    Refusal(unsigned http_status, std::string word, const std::string &message)
        : std::runtime_error(message), status(http_status), code(std::move(word))
    {
    }

    const unsigned status;
    const std::string code; // for programs
    std::vector<std::pair<std::string, std::string>> headers = {};
};

// Returns the answer: {"error":{"code":...,"message":...}}.
HttpResponse response_of(const Refusal &refusal);

} // namespace front
