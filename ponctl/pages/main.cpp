// This program writes the pages of the manual, from what ponctl knows of itself.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "cli/program.h"
#include "pages/pages.h"
#include "pages/tree.h"

namespace
{

namespace fs = std::filesystem;

void write(const fs::path &file, const std::string &text)
{
    fs::create_directories(file.parent_path());
    std::ofstream out(file);
    out << text;
    if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
}

void write_manual(const command_line::Syntax &program, const fs::path &prose, const fs::path &folder,
                  const std::string &date)
{
    fs::remove_all(folder); // a command that was removed must not keep its page
    const auto write_page = [&](const std::string &name, const auto &make) {
        ponctl::Prose own(prose / (name + ".in"));
        write(folder / "man1" / (name + ".1"), make(own));
        own.check_used();
    };
    write_page("ponctl", [&](ponctl::Prose &own) { return ponctl::overview_page(program, own, date); });
    for (const command_line::Syntax *group : ponctl::commands_of(program))
        write_page("ponctl-" + group->name, [&](ponctl::Prose &own) { return ponctl::group_page(*group, own, date); });
    write(folder / "man7" / "ponctl-operations.7", ponctl::operations_page(date));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("usage: ponctl_pages SOURCE-FOLDER OUTPUT-FOLDER DATE\n", stderr);
        return 2;
    }
    try {
        const ponctl::Program program;
        const fs::path source = argv[1], folder = argv[2];
        write_manual(program.tree, source / "man", folder / "man", argv[3]);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "ponctl_pages: %s\n", error.what());
        return 1;
    }
    return 0;
}
