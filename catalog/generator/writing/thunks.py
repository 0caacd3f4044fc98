"""This module writes a call of each operation, by its position in the tables."""

from .text import GENERATED


def thunks(catalogue):
    lines = [f"// {GENERATED}.", "// clang-format off", '#include "invoke.h"', "", '#include "bsp_pon.h"', "",
             "namespace catalogue", "{", "namespace", "{", "", "using Thunk = uint32_t (*)(const Value *);", "",
             "// In the order of operations().", "constexpr Thunk thunks[] = {"]
    for operation in catalogue.operations():
        values = []
        for index, argument in enumerate(operation.args.values()):
            if "*" in argument.declaration:
                values.append(f"static_cast<{argument.declaration.replace('{}', '').strip()}>(v[{index}].pointer)")
            else:
                number = f"v[{index}].number"
                narrow = {"u8": "uint8_t", "u16": "uint16_t"}.get(argument.type)
                values.append(f"static_cast<{narrow}>({number})" if narrow else number)
        lines.append(f"    []([[maybe_unused]] const Value *v) {{ return {operation.name}({', '.join(values)}); }},")
    return "\n".join([*lines, "};", "", "} // namespace", "",
                      "uint32_t invoke(const Operation &operation, std::span<const Value> values)", "{",
                      "    return thunks[&operation - operations().data()](values.data());", "}", "",
                      "} // namespace catalogue"]) + "\n"
