// ponctl config.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{

void add_config(Command &app)
{
    Command &config = app.add("config", "Saves the configuration of the OLT, and loads it again");

    Command &save = config.add("save", "Saves all that the OLT keeps in a file");
    std::string &file = save.runs(run_config_save);
    save.argument("FILE", &file, "the file, which is replaced; - for standard output").is_required();

    Command &load = config.add("load", "Has the OLT become the one that was saved");
    std::string &loaded = load.runs(run_config_load);
    load.argument("FILE", &loaded,
                  "what was saved, of an OLT with the same seed, ports, arrivals and silent "
                  "share")
        .is_required();
}

} // namespace ponctl
