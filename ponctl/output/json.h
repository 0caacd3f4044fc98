// Results in JSON, for programs.
#pragma once

#include <cstdio>

#include "call/json.h"
#include "output/exit_code.h"

namespace ponctl
{

// A JSON document that goes to a stream, ended with a new line.
class Json : public call::JsonText
{
public:
    explicit Json(std::FILE *to);
    ~Json();

    // How many there were.
    static size_t count();

private:
    std::FILE *stream;
};

} // namespace ponctl
