// These tests check null pointers.
#include "selection.h"

namespace contract
{
namespace
{

constexpr uint32_t bad_parameter = 3003;

} // namespace

class RequiredPointer : public OfArgument
{
protected:
    void call_refused(Subject &refused)
    {
        EXPECT_EQ(refused.call(), bad_parameter);
        EXPECT_EQ(rb_recorded(), 0u) << "something was sent, logged or asked for";
        EXPECT_TRUE(refused.outputs_untouched());
    }
};

TEST_P(RequiredPointer, NullIsRefusedBeforeAnythingElse)
{
    subject.set_null(argument);
    call_refused(subject);
}

TEST_P(RequiredPointer, NullIsRefusedWithTheOtherCheckedOnes)
{
    for (const Argument &each : operation.arguments)
        if (each.required || each.optional) subject.set_null(each);
    call_refused(subject);
}

std::vector<OperationArgument> silently_required()
{
    std::vector<OperationArgument> selected = arguments_where([](const Argument &each) { return each.required; });
    std::erase_if(selected, [](const OperationArgument &each) {
        return catalogue::find_oddity(*each.operation, catalogue::Facet::null) != nullptr;
    });
    return selected;
}

ON_ARGUMENTS(RequiredPointer, silently_required());

using OptionalPointer = OfArgument;

TEST_P(OptionalPointer, NullMeansNone)
{
    subject.set_null(argument);
    EXPECT_EQ(subject.call(), 0u);
    EXPECT_EQ(sent(), subject.expected_request());
}

TEST_P(OptionalPointer, NullMeansNoneWithTheOtherOptionalOnes)
{
    for (const Argument &each : operation.arguments)
        if (each.optional) subject.set_null(each);
    EXPECT_EQ(subject.call(), 0u);
    EXPECT_EQ(sent(), subject.expected_request());
}

ON_ARGUMENTS(OptionalPointer, arguments_where([](const Argument &each) { return each.optional; }));

// A null pointer that is not checked is the caller's fault. The operation uses it, and never takes it as a reason to
// refuse or to continue without it.
using UncheckedPointerDeathTest = OfArgument;

TEST_P(UncheckedPointerDeathTest, NullIsUsed)
{
    subject.set_null(argument);
    EXPECT_DEATH(subject.call(), "");
}

std::vector<OperationArgument> used_unchecked()
{
    std::vector<OperationArgument> selected = arguments_where([](const Argument &each) {
        return is_pointer(each) && !each.required && !each.optional && each.type != ArgumentType::response;
    });
    std::erase_if(selected, [](const OperationArgument &each) {
        return catalogue::find_oddity(*each.operation, catalogue::Facet::answer) != nullptr;
    });
    return selected;
}

ON_ARGUMENTS(UncheckedPointerDeathTest, used_unchecked());

// A buffer for the answer that is not checked is passed to the IPC library.
using HandedOnPointer = OfArgument;

TEST_P(HandedOnPointer, NullReachesTheIpcLibrary)
{
    subject.set_null(argument);
    EXPECT_EQ(subject.call(), 0u);
    EXPECT_EQ(only_exchange().response, nullptr);
    EXPECT_EQ(only_exchange().preset, operation.preset);
}

ON_ARGUMENTS(HandedOnPointer, arguments_where([](const Argument &each) {
                 return each.type == ArgumentType::response && !each.required && !each.optional;
             }));

} // namespace contract
