// A block that is kept (see BlockKey) is read and written here as a value of its own type: a structure of words, or a
// single word.
#pragma once

#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace ponsim
{

template <class Value>
std::string to_block(const Value &value)
{
    static_assert(std::has_unique_object_representations_v<Value>);
    return {reinterpret_cast<const char *>(&value), sizeof value};
}

// Returns `otherwise` when there is no block.
template <class Value>
Value from_block(const std::string *block, Value otherwise)
{
    static_assert(std::has_unique_object_representations_v<Value>);
    if (!block) return otherwise;
    if (block->size() != sizeof otherwise) throw std::logic_error("a block has another size than its type");
    std::memcpy(&otherwise, block->data(), sizeof otherwise);
    return otherwise;
}

} // namespace ponsim
