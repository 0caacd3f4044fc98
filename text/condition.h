// What expressions with "and", "or" and "not" are made of, when it may also be unknown whether something is so.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace text
{

// A Truth is empty where there is nothing to compare with.
using Truth = std::optional<bool>;

// The nodes of an expression derive from a class Node of it, which has
//
//     virtual Truth of(const Of &what) const = 0;
template <class Node, class Of>
class Negation : public Node
{
public:
    explicit Negation(std::unique_ptr<const Node> node) : inner(std::move(node)) {}
    Truth of(const Of &what) const override
    {
        const Truth truth = inner->of(what);
        return truth ? Truth(!*truth) : truth;
    }

private:
    std::unique_ptr<const Node> inner;
};

// A Chain is parts with "and", of which one that is false decides, or with "or", of which one that is true decides.
template <class Node, class Of>
class Chain : public Node
{
public:
    using Parts = std::vector<std::unique_ptr<const Node>>;

    Chain(Parts nodes, bool deciding) : parts(std::move(nodes)), decides(deciding) {}
    Truth of(const Of &what) const override
    {
        Truth truth = !decides;
        for (const auto &part : parts) {
            const Truth one = part->of(what);
            if (one == decides) return one;
            if (!one) truth = one;
        }
        return truth;
    }

private:
    Parts parts;
    bool decides;
};

} // namespace text
