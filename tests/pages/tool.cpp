#include "tool.h"

#include "process.h"

Said run_tool(const std::vector<std::string> &words)
{
    const Finished finished = ponctl(words);
    return {finished.code, finished.out, finished.err};
}
