// These tests check texts that are sent in a request.
#include "selection.h"

namespace contract
{

class Text : public OfArgument
{
protected:
    uint32_t room = operation.record->size - argument.field->offset;

    void expect_sent_for(size_t length)
    {
        Subject writer(operation);
        writer.set_text(argument, std::string(length, 'x'));
        EXPECT_EQ(writer.call(), 0u);
        EXPECT_EQ(sent(), writer.expected_request()) << length << " characters";
        EXPECT_TRUE(writer.surroundings_untouched());
    }
};

TEST_P(Text, EmptyIsSentAsANul)
{
    expect_sent_for(0);
}

TEST_P(Text, OfTheWholeFieldIsSent)
{
    expect_sent_for(argument.field->size - 1);
}

TEST_P(Text, LongerThanItsFieldRunsOnIntoTheNext)
{
    expect_sent_for(argument.field->size);
    expect_sent_for(argument.field->size + 1);
    expect_sent_for(argument.field->size + 70);
}

TEST_P(Text, EndsWithTheRecord)
{
    expect_sent_for(room - 1);
    expect_sent_for(room);
    expect_sent_for(room + 1);
    expect_sent_for(5000);
}

// Characters beyond 127 are bytes like any other.
TEST_P(Text, IsNotInterpreted)
{
    subject.set_text(argument, "\x80\xFF%s%n\n\x01");
    subject.call();
    EXPECT_EQ(sent(), subject.expected_request());
}

ON_ARGUMENTS(Text, arguments_of(ArgumentType::text));

// Texts that continue into each other's fields show the order in which they are copied: that of the arguments.
class TextsTogether : public OfOperation
{
protected:
    void lengthen_texts(size_t beyond_field)
    {
        char letter = 'a';
        for (const Argument &argument : operation.arguments)
            if (argument.type == ArgumentType::text)
                subject.set_text(argument, std::string(argument.field->size + beyond_field, letter++));
    }
};

TEST_P(TextsTogether, SlightlyTooLongAreCopiedInOrder)
{
    lengthen_texts(5);
    subject.call();
    EXPECT_EQ(sent(), subject.expected_request());
}

TEST_P(TextsTogether, FarTooLongAreCopiedInOrder)
{
    lengthen_texts(2000);
    subject.call();
    EXPECT_EQ(sent(), subject.expected_request());
}

ON_OPERATIONS(TextsTogether, operations_where([](const Operation &each) {
                  return Subject(each).argument_of(ArgumentType::text) != nullptr;
              }));

} // namespace contract
