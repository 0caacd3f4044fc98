// These tests check what is written by hand for a page, and text in the mdoc language.
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

#include <gtest/gtest.h>

#include "pages/mdoc.h"
#include "pages/prose.h"
#include "pages/tree.h"

namespace
{

using namespace ponctl;

class ProseFile : public testing::Test
{
protected:
    ProseFile() { std::ofstream(file) << ".Sh DESCRIPTION\nIt lists.\n.Ss onu bind\nIt binds.\n.Sh EXAMPLES\n.Dl a\n"; }
    ~ProseFile() override { std::filesystem::remove(file); }

    const std::string file = testing::TempDir() + "prose." + std::to_string(getpid());
};

TEST_F(ProseFile, IsReadBySections)
{
    Prose prose(file);
    EXPECT_EQ(prose.section("DESCRIPTION"), "It lists.\n");
    EXPECT_EQ(prose.of_command("onu bind"), "It binds.\n");
    EXPECT_EQ(prose.section("FILES"), "");
}

TEST_F(ProseFile, IsRefusedWhereThePageHasNoPlaceForIt)
{
    Prose prose(file);
    prose.section("DESCRIPTION");
    prose.section("EXAMPLES");
    EXPECT_THROW(prose.check_used(), std::runtime_error);
    prose.of_command("onu bind");
    EXPECT_NO_THROW(prose.check_used());
}

TEST(NoProse, IsAsGoodAsAnEmptyOne)
{
    Prose prose("/nonexistent/file");
    EXPECT_EQ(prose.section("DESCRIPTION"), "");
    EXPECT_NO_THROW(prose.check_used());
}

TEST(Mdoc, ATextIsNeverAMacro)
{
    EXPECT_EQ(mdoc::text(".Sh x"), "\\&.Sh x\n");
    EXPECT_EQ(mdoc::text("'x"), "\\&'x\n");
    EXPECT_EQ(mdoc::text("a\\b"), "a\\eb\n");
}

TEST(Mdoc, ASentenceHasALineOfItsOwn)
{
    EXPECT_EQ(mdoc::text("One. Two."), "One.\nTwo.\n");
}

TEST(Sentence, StartsWithACapitalUnlessItIsAName)
{
    EXPECT_EQ(sentence("number of bytes"), "Number of bytes.");
    EXPECT_EQ(sentence("bsp_pon_msg as it is."), "bsp_pon_msg as it is.");
}

} // namespace
