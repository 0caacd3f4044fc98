// A Node is a part of a selector.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fleet/selection/pattern.h"
#include "fleet/selection/selector.h"

namespace fleet
{

class Selector::Node
{
public:
    virtual ~Node() = default;
    // Returns nothing where the OLT does not have what is compared.
    virtual std::optional<bool> of(const Olt &olt) const = 0;
};

using NodePointer = std::unique_ptr<const Selector::Node>;

// A TextKey names a text of an OLT, or its state. A label is none of them.
struct TextKey {
    std::string_view name;
    bool exact = false; // upper and lower case differ
    std::string (*read)(const Olt &) = nullptr;
};
struct NumberKey {
    std::string_view name;
    uint32_t (*read)(const Inventory &) = nullptr;
};
// Each function returns null when there is no such key.
const TextKey *find_text_key(std::string_view name);
const NumberKey *find_number_key(std::string_view name);
std::vector<std::string_view> key_names();

enum class Operator { equal, unequal, less, less_or_equal, greater, greater_or_equal };

NodePointer everything();
NodePointer negation(NodePointer node);
// Makes a node of which one part that is `decides` decides: true for "or", false for "and".
NodePointer chain(std::vector<NodePointer> parts, bool decides);
// These make a node that is true when one of the patterns matches, or with `unequal` when none does.
NodePointer text_comparison(const TextKey &key, std::vector<Pattern> patterns, bool unequal);
NodePointer label_comparison(std::string label, std::vector<Pattern> patterns, bool unequal);
NodePointer number_comparison(const NumberKey &key, Operator op, uint32_t value);

} // namespace fleet
