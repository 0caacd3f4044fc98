#include "completing_shell.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <unistd.h>

#include <gtest/gtest.h>

#include "shell.h"

namespace
{

using Words = std::vector<std::string>;

// The words of a line are the words of its answer, so that each answer is one line.
std::string script_of(ShellKind shell, const Words &lines)
{
    std::string script;
    switch (shell) {
    case ShellKind::bash:
        script = "source " COMPLETION "/ponctl\n";
        for (const std::string &line : lines)
            script += "COMP_LINE='" + line + "'; COMP_POINT=${#COMP_LINE}; _ponctl; echo \"${COMPREPLY[*]}\"\n";
        break;
    case ShellKind::zsh:
        // The functions of the completion system write what they are told.
        script = "function _describe { local -a all; all=(${(P)2}); reply+=(${${all//\\\\:/\x01}%%:*}); }\n"
                 "function _files { local at=$PREFIX; [[ $1 == -/ ]] && reply+=($at*(N/)) || reply+=($at*(N)); }\n"
                 "function compset { PREFIX=${PREFIX#*=}; }\n"
                 "function _complete_line {\n"
                 "    local -a words reply; local -i CURRENT; local PREFIX\n"
                 "    words=(\"${(@s: :)1}\"); CURRENT=$#words; PREFIX=$words[CURRENT]\n"
                 "    source " COMPLETION "/_ponctl\n"
                 "    print -r -- ${reply//$'\\x01'/:}\n"
                 "}\n";
        for (const std::string &line : lines)
            script += "_complete_line '" + line + "'\n";
        break;
    case ShellKind::fish:
        script = "source " COMPLETION "/ponctl.fish\n";
        for (const std::string &line : lines)
            script += "echo (complete -C '" + line + "' | string replace -r '\\t.*' '')\n";
        break;
    }
    return script;
}

const char *name_of(ShellKind shell)
{
    switch (shell) {
    case ShellKind::bash:
        return "bash --norc";
    case ShellKind::zsh:
        return "zsh -f";
    case ShellKind::fish:
        return "fish --no-config";
    }
    return "";
}

} // namespace

bool is_installed(ShellKind shell)
{
    return std::system((std::string(name_of(shell)) + " -c true >/dev/null 2>&1").c_str()) == 0;
}

std::vector<Words> completed_by(ShellKind shell, const Words &lines)
{
    const std::string file = testing::TempDir() + "complete." + std::to_string(getpid());
    std::ofstream(file) << script_of(shell, lines);
    const std::string folder = std::filesystem::path(PONCTL).parent_path().string();
    const std::string said = output_of("PATH='" + folder + "':\"$PATH\" HOME='" + testing::TempDir() + "' " +
                                       name_of(shell) + " '" + file + "'");
    std::vector<Words> offered;
    for (const std::string &line : lines_of(said)) {
        std::istringstream words(line);
        offered.emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
    }
    unlink(file.c_str());
    EXPECT_EQ(offered.size(), lines.size()) << said.substr(0, 2000);
    offered.resize(lines.size());
    return offered;
}
