// These functions select the operations, and the arguments of operations, on which a fact is tested. They are always
// those of the catalogue that the fact describes, and each has a test that is named after it.
#pragma once

#include <gtest/gtest.h>

#include "subject.h"

namespace contract
{

// OfOperation is a test of one operation.
class OfOperation : public testing::TestWithParam<const Operation *>
{
protected:
    const Operation &operation = *GetParam();
    Subject subject{operation};
};

// A OperationArgument is one argument of one operation, for a test of it.
struct OperationArgument {
    const Operation *operation;
    const Argument *argument;
};

class OfArgument : public testing::TestWithParam<OperationArgument>
{
protected:
    const Operation &operation = *GetParam().operation;
    const Argument &argument = *GetParam().argument;
    Subject subject{operation};
};

template <class Holds>
std::vector<const Operation *> operations_where(Holds holds)
{
    std::vector<const Operation *> selected;
    for (const Operation &operation : catalogue::operations())
        if (holds(operation)) selected.push_back(&operation);
    return selected;
}

template <class Holds>
std::vector<OperationArgument> arguments_where(Holds holds)
{
    std::vector<OperationArgument> selected;
    for (const Operation &operation : catalogue::operations())
        for (const Argument &argument : operation.arguments)
            if (holds(argument)) selected.push_back({&operation, &argument});
    return selected;
}

inline std::vector<const Operation *> all_operations()
{
    return operations_where([](const Operation &) { return true; });
}

inline std::vector<OperationArgument> arguments_of(ArgumentType type)
{
    return arguments_where([type](const Argument &argument) { return argument.type == type; });
}

inline std::string name_of_operation(const testing::TestParamInfo<const Operation *> &info)
{
    return std::string(info.param->name);
}

inline std::string name_of_argument(const testing::TestParamInfo<OperationArgument> &info)
{
    return std::string(info.param.operation->name) + "_of_" + std::string(info.param.argument->name);
}

} // namespace contract

// Runs the tests of `fact` on each of `selected`.
#define ON_OPERATIONS(fact, selected)                                                                                  \
    INSTANTIATE_TEST_SUITE_P(Each, fact, testing::ValuesIn(selected), name_of_operation)
#define ON_ARGUMENTS(fact, selected) INSTANTIATE_TEST_SUITE_P(Each, fact, testing::ValuesIn(selected), name_of_argument)
