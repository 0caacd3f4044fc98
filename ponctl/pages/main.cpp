// This program writes the pages of the manual and the completions of shells, from what ponctl knows of itself.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "cli/program.h"
#include "pages/completion.h"
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

std::string contents(const fs::path &file)
{
    std::ifstream in(file);
    if (!in) throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(in), {}};
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

void write_completions(const command_line::Syntax &program, const fs::path &walks, const fs::path &folder)
{
    const std::string note = "# Written by ponctl_pages, from what ponctl knows of itself.\n\n";
    const std::vector<ponctl::Position> positions = ponctl::positions_of(program);
    write(folder / "ponctl", note + ponctl::bash_table(positions) + contents(walks / "ponctl.bash"));
    write(folder / "_ponctl",
          "#compdef ponctl\n" + note + ponctl::zsh_table(positions) + contents(walks / "ponctl.zsh"));
    write(folder / "ponctl.fish", note + ponctl::fish_table(positions) + contents(walks / "ponctl.fish"));
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
        write_completions(program.tree, source / "completion", folder / "completion");
    } catch (const std::exception &error) {
        std::fprintf(stderr, "ponctl_pages: %s\n", error.what());
        return 1;
    }
    return 0;
}
