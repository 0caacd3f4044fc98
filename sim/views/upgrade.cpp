#include "views/upgrade.h"

#include "bsp_pon.h"
#include "views/table.h"

namespace ponsim
{

std::string upgrade_types_table(const UpgradeTypes &types)
{
    Table table(BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_LIST);
    for (const auto &[name, type] : types) {
        table.cell("name", std::string_view(name));
        table.cell("vendor", std::string_view(type.vendor));
        table.cell("model", std::string_view(type.model));
        table.cell("version", std::string_view(type.version));
        table.cell("size", type.size);
        table.cell("file", std::string_view(type.file));
    }
    return std::string(table.text());
}

} // namespace ponsim
