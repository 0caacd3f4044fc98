#include "fleet/selection/selector.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "fleet/protocol/topics.h"
#include "fleet/selection/parser.h"
#include "text/words.h"

namespace fleet
{

Selector::Selector(std::string_view text)
{
    Parser parser(text);
    root = parser.whole();
    names = std::move(parser.names);
    labels = std::move(parser.labels);
}

bool Selector::matches(const Olt &olt) const
{
    return root->of(olt) == true;
}

std::vector<std::string> Selector::choose(std::span<const Olt> olts) const
{
    std::set<std::string_view> known_names, known_labels;
    std::vector<std::string> chosen;
    for (const Olt &olt : olts) {
        known_names.insert(olt.inventory.olt);
        for (const auto &[label, value] : olt.inventory.labels)
            known_labels.insert(label);
        if (matches(olt)) chosen.push_back(olt.inventory.olt);
    }
    for (const Mention &name : names)
        if (!known_names.contains(name.word))
            refuse_selector(name.at, "no OLT has the name '" + name.word + "'" +
                                         text::suggestion(name.word, std::vector<std::string_view>(known_names.begin(),
                                                                                                   known_names.end())));
    for (const Mention &label : labels)
        if (!known_labels.contains(label.word)) {
            std::vector<std::string_view> keys = key_names();
            keys.insert(keys.end(), known_labels.begin(), known_labels.end());
            refuse_selector(label.at, "no OLT has the label '" + label.word + "'" + text::suggestion(label.word, keys));
        }
    std::ranges::sort(chosen, comes_before);
    return chosen;
}

bool is_single_name(std::string_view text)
{
    return is_name(text) && !is_keyword(text);
}

bool comes_before(const std::string &name, const std::string &other)
{
    return strverscmp(name.c_str(), other.c_str()) < 0;
}

} // namespace fleet
