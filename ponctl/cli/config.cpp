// ponctl config.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{

void add_config(CLI::App &app, Command &command)
{
    CLI::App *config = app.add_subcommand("config", "Saves the configuration of the OLT, and loads it again");
    config->require_subcommand(1);

    CLI::App *save = config->add_subcommand("save", "Saves all that the OLT keeps in a file");
    auto file = std::make_shared<std::string>();
    save->add_option("FILE", *file, "the file, which is replaced; - for standard output")->required();
    runs(save, command, file, run_config_save);

    CLI::App *load = config->add_subcommand("load", "Has the OLT become the one that was saved");
    auto loaded = std::make_shared<std::string>();
    load->add_option("FILE", *loaded,
                     "what was saved, of an OLT with the same seed, ports, arrivals and silent "
                     "share")
        ->required();
    runs(load, command, loaded, run_config_load);
}

} // namespace ponctl
