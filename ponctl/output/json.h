// This file writes results in JSON, for programs.
#pragma once

#include <cstdio>

#include "call/json.h"
#include "output/exit_code.h"

namespace ponctl
{

// A Json is a JSON document that is written to a stream and ended with a newline.
class Json : public call::JsonText
{
public:
    explicit Json(std::FILE *to);
    ~Json();

    // Returns how many documents were written.
    static size_t count();

private:
    std::FILE *stream;
};

} // namespace ponctl
