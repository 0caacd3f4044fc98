#include "views/upgrade.h"

#include "views/table.h"

namespace ponsim
{

std::string upgrade_types_table(const UpgradeTypes &types)
{
    Table<view::upgrade_types> table;
    for (const auto &[name, type] : types)
        table.add({.name = name,
                   .vendor = type.vendor,
                   .model = type.model,
                   .version = type.version,
                   .size = type.size,
                   .file = type.file});
    return table.text();
}

} // namespace ponsim
