#include "fleet/selection/node.h"

#include <algorithm>
#include <array>

#include "text/condition.h"
#include "text/words.h"

namespace fleet
{
namespace
{

using text::Truth; // empty where an OLT does not have what is compared

constexpr std::array<TextKey, 6> text_keys{{
    {"name", true, [](const Olt &olt) { return olt.inventory.olt; }},
    {"bridge", true, [](const Olt &olt) { return olt.inventory.bridge; }},
    {"model", false, [](const Olt &olt) { return olt.inventory.model; }},
    {"firmware", false, [](const Olt &olt) { return olt.inventory.firmware; }},
    {"version", false, [](const Olt &olt) { return olt.inventory.version; }},
    {"state", false, [](const Olt &olt) { return std::string(olt.online ? "online" : "offline"); }},
}};

constexpr std::array<NumberKey, 4> number_keys{{
    {"ports", [](const Inventory &of) { return of.ports; }},
    {"online", [](const Inventory &of) { return of.onus.online; }},
    {"offline", [](const Inventory &of) { return of.onus.offline; }},
    {"waiting", [](const Inventory &of) { return of.onus.waiting; }},
}};

template <class Keys>
auto find(const Keys &keys, std::string_view name)
{
    const auto found = std::ranges::find(keys, name, [](const auto &key) { return key.name; });
    return found == keys.end() ? nullptr : &*found;
}

class Everything : public Selector::Node
{
public:
    Truth of(const Olt &) const override { return true; }
};

class Text : public Selector::Node
{
public:
    Text(std::vector<Pattern> wanted, bool exactly, bool negated)
        : patterns(std::move(wanted)), exact(exactly), unequal(negated)
    {
        if (exact) return;
        for (Pattern &pattern : patterns)
            pattern.text = text::lower_case(pattern.text);
    }
    Truth of(const Olt &olt) const override
    {
        std::string value = value_of(olt);
        if (value.empty()) return std::nullopt;
        if (!exact) value = text::lower_case(value);
        const auto matches = [&](const Pattern &pattern) { return pattern.matches(value); };
        return std::ranges::any_of(patterns, matches) != unequal;
    }

protected:
    // Returns an empty text when the OLT has no such value.
    virtual std::string value_of(const Olt &olt) const = 0;

private:
    std::vector<Pattern> patterns;
    bool exact, unequal;
};

class KeyText : public Text
{
public:
    KeyText(const TextKey &of, std::vector<Pattern> wanted, bool negated)
        : Text(std::move(wanted), of.exact, negated), key(of)
    {
    }

private:
    std::string value_of(const Olt &olt) const override { return key.read(olt); }

    const TextKey &key;
};

class LabelText : public Text
{
public:
    LabelText(std::string of, std::vector<Pattern> wanted, bool negated)
        : Text(std::move(wanted), false, negated), label(std::move(of))
    {
    }

private:
    std::string value_of(const Olt &olt) const override
    {
        const auto found = olt.inventory.labels.find(label);
        return found == olt.inventory.labels.end() ? std::string() : found->second;
    }

    std::string label;
};

class Number : public Selector::Node
{
public:
    Number(const NumberKey &of, Operator comparing, uint32_t wanted) : key(of), op(comparing), value(wanted) {}
    Truth of(const Olt &olt) const override
    {
        if (olt.inventory.model.empty()) return std::nullopt;
        const uint32_t number = key.read(olt.inventory);
        switch (op) {
        case Operator::equal:
            return number == value;
        case Operator::unequal:
            return number != value;
        case Operator::less:
            return number < value;
        case Operator::less_or_equal:
            return number <= value;
        case Operator::greater:
            return number > value;
        case Operator::greater_or_equal:
            return number >= value;
        }
        return std::nullopt;
    }

private:
    const NumberKey &key;
    Operator op;
    uint32_t value;
};

} // namespace

const TextKey *find_text_key(std::string_view name)
{
    return find(text_keys, name);
}

const NumberKey *find_number_key(std::string_view name)
{
    return find(number_keys, name);
}

std::vector<std::string_view> key_names()
{
    std::vector<std::string_view> names;
    std::ranges::transform(text_keys, std::back_inserter(names), &TextKey::name);
    std::ranges::transform(number_keys, std::back_inserter(names), &NumberKey::name);
    return names;
}

NodePointer everything()
{
    return std::make_unique<Everything>();
}

NodePointer negation(NodePointer node)
{
    return std::make_unique<text::Negation<Selector::Node, Olt>>(std::move(node));
}

NodePointer chain(std::vector<NodePointer> parts, bool decides)
{
    return std::make_unique<text::Chain<Selector::Node, Olt>>(std::move(parts), decides);
}

NodePointer text_comparison(const TextKey &key, std::vector<Pattern> patterns, bool unequal)
{
    return std::make_unique<KeyText>(key, std::move(patterns), unequal);
}

NodePointer label_comparison(std::string label, std::vector<Pattern> patterns, bool unequal)
{
    return std::make_unique<LabelText>(std::move(label), std::move(patterns), unequal);
}

NodePointer number_comparison(const NumberKey &key, Operator op, uint32_t value)
{
    return std::make_unique<Number>(key, op, value);
}

} // namespace fleet
