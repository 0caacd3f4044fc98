#include "ponfront.h"

#include <cstdlib>

namespace
{

std::vector<std::string> words_of(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), PONFRONT);
    return arguments;
}

} // namespace

Ponfront::Ponfront(std::vector<std::string> arguments) : Program(words_of(std::move(arguments))) {}

uint16_t Ponfront::port()
{
    const std::string line = expect("listening on ");
    return static_cast<uint16_t>(std::atoi(line.c_str() + line.rfind(' ')));
}
