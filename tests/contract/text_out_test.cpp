// These tests check texts that a response delivers.
#include "selection.h"

#include <algorithm>

namespace contract
{

class TextOut : public OfArgument
{
protected:
    uint32_t offset = argument.field->offset;
    uint32_t room = operation.response_size - offset;

    // Returns a response with 0xFF before the text, which stands at its own offset together with what is behind it.
    Bytes response(std::string_view text) const
    {
        Bytes bytes(offset, 0xFF);
        bytes.insert(bytes.end(), text.begin(), text.end());
        return bytes;
    }

    // Returns what the caller's room holds: the text, its NUL, and behind it the bytes that were there before.
    Bytes expected(std::string_view text)
    {
        Bytes bytes = subject.memory(argument).as_lent();
        std::copy(text.begin(), text.end(), bytes.begin());
        bytes[text.size()] = 0;
        return bytes;
    }

    void expect_delivered(const Bytes &answer, std::string_view text, uint32_t status = 0)
    {
        script_exchange(IPC_OK, status, answer);
        EXPECT_EQ(subject.call(), status);
        EXPECT_EQ(subject.memory(argument).bytes(), expected(text));
        EXPECT_TRUE(subject.surroundings_untouched());
    }
};

TEST_P(TextOut, IsTheTextOfTheResponse)
{
    expect_delivered(response(std::string("/tmp/view.json\0rest", 19)), "/tmp/view.json");
}

TEST_P(TextOut, MayBeEmpty)
{
    expect_delivered(response(std::string("\0rest", 5)), "");
}

TEST_P(TextOut, MayFillTheRecord)
{
    const std::string longest(room - 1, 'x');
    expect_delivered(response(longest + '\0'), longest);
}

TEST_P(TextOut, WithoutItsNulEndsWithTheRecord)
{
    expect_delivered(response(std::string(room, 'x')), std::string(room - 1, 'x'));
}

TEST_P(TextOut, OfAShortAnswerEndsWithTheAnswer)
{
    expect_delivered(response("abc"), "abc");
}

TEST_P(TextOut, OfAnAnswerThatEndsBeforeItIsEmpty)
{
    expect_delivered(Bytes(offset, 0xFF), "");
}

TEST_P(TextOut, OfNoAnswerIsEmpty)
{
    expect_delivered({}, "");
}

TEST_P(TextOut, IsDeliveredWhateverTheStatus)
{
    expect_delivered(response("file"), "file", 4001);
}

TEST_P(TextOut, AsksForNothingElse)
{
    script_exchange(IPC_OK, 0, response("file"));
    subject.call();
    EXPECT_EQ(rb_recorded(), 1u);
}

ON_ARGUMENTS(TextOut, arguments_of(ArgumentType::text_out));

} // namespace contract
