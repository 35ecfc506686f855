// The table of commands: each one's name, synopsis and the function that runs it, which lives
// in a file of its own.
#pragma once

#include <string>
#include <vector>

#include "arguments.h"
#include "output_sink.h"

namespace quillon_cli {

struct Invocation {
    const Arguments& args;
    OutputSink& sink;
    std::string program;  // this executable, for starting workers
};

struct Command {
    const char* name;
    const char* synopsis;
    int (*run)(const Invocation&);
};

const std::vector<Command>& commandTable();
const Command* findCommand(const std::string& name);

int runLight(const Invocation& in);
int runMaterial(const Invocation& in);
int runScene(const Invocation& in);
int runCoropt(const Invocation& in);
int runCormat(const Invocation& in);
int runOptions(const Invocation& in);
int runInspect(const Invocation& in);
int runCheck(const Invocation& in);
int runBatch(const Invocation& in);

}  // namespace quillon_cli
