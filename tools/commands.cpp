#include "commands.h"

namespace quillon_cli {

const std::vector<Command>& commandTable() {
    static const std::vector<Command> table = {
        {"light", "light --type N FILE...     convert stored light records (type 0, 2 to 7)",
         runLight},
        {"material", "material --type N FILE...  convert stored material records (type 0 to 14)",
         runMaterial},
        {"scene", "scene FILE...              the options a stored scene record holds", runScene},
        {"coropt", "coropt FILE...             convert .coropt render options files", runCoropt},
        {"cormat", "cormat FILE...             convert every material of .cormat files", runCormat},
        {"options", "options                    the default render options document", runOptions},
        {"inspect",
         "inspect --type KIND[:N] [--format text|json] FILE...\n"
         "                             the objects a record holds, their byte ranges and\n"
         "                             findings (KIND light:N, material:N, scene, coropt,\n"
         "                             cormat)",
         runInspect},
        {"check",
         "check --type KIND[:N] FILE...\n"
         "                             what to know about a record: bytes read past its end,\n"
         "                             bytes left after it, text that breaks the XML",
         runCheck},
        {"batch",
         "batch [-j N] [-o OUTDIR] [--report FILE] [--manifest FILE] PATH...\n"
         "                             convert many records, named KIND_typeN[_any].json|bin,\n"
         "                             scene_*.json|bin, *.cormat, *.coropt, or folders of them",
         runBatch},
    };
    return table;
}

const Command* findCommand(const std::string& name) {
    for (const Command& c : commandTable()) {
        if (name == c.name) return &c;
    }
    return nullptr;
}

}  // namespace quillon_cli
