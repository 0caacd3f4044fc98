// These are rows of tables as they are stored, whatever they mean.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace storage
{

struct Blob {
    std::string bytes;

    auto operator<=>(const Blob &) const = default;
};

using Cell = std::variant<int64_t, std::string, Blob>;

struct Row {
    std::string table;
    std::vector<Cell> cells; // in the order of the columns

    auto operator<=>(const Row &) const = default;
};

} // namespace storage
