// quillonbin2xml: converts the renderer plug-in's stored binary records to Asset XML from the
// command line, through the same conversions as the Ruby module.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "exit_codes.h"
#include "messages.h"
#include "output_sink.h"
#include "platform/platform.h"

using namespace quillon_cli;

namespace {

constexpr const char* kVersion = QUILLON_VERSION;  // from the VERSION file, through CMake

std::string usageText() {
    std::string text =
        "usage: quillonbin2xml COMMAND [OPTIONS] FILE...\n\n"
        "Converts the binary scene records of the older renderer plug-in to Asset XML.\n\n"
        "commands:\n";
    for (const Command& c : commandTable()) text += "  " + std::string(c.synopsis) + "\n";
    text +=
        "\nFILE holds raw bytes or a JSON array of integers (detected, or forced with\n"
        "--input raw|json); \"-\" reads standard input. Inputs over 64 MiB, folders and\n"
        "devices are refused. -o FILE replaces FILE in one step (\"-o -\": standard output);\n"
        "options also take the form --opt=value.\n"
        "exit codes: 0 converted, 1 record refused (check: findings), 2 bad usage,\n"
        "unreadable input or a failed write, 3 internal error.\n"
        "  --help     this text (or a command's, after the command)\n"
        "  --version  the tool's version\n";
    return text;
}

int usageError(const std::string& message) {
    tell("", message + " (see --help)");
    return kExitUsage;
}

int run(int argc, char** argv) {
    Arguments args;
    std::string error;
    if (!parseArguments(std::vector<std::string>(argv + 1, argv + argc), args, error)) {
        return usageError(error);
    }
    OutputSink sink(args.output.value_or(""));
    if (args.version) {
        sink.write("quillonbin2xml " + std::string(kVersion) + "\n");
        return sink.finish();
    }
    if (args.command.empty()) {
        if (!args.help) return usageError("no command given");
        sink.write(usageText());
        return sink.finish();
    }
    const Command* command = findCommand(args.command);
    if (!command) return usageError("unknown command " + args.command);
    if (args.help) {
        sink.write("usage: quillonbin2xml " + std::string(command->synopsis) + "\n");
        return sink.finish();
    }
    const Invocation invocation{args, sink, quillon_platform::executablePath(argv[0])};
    const int status = command->run(invocation);
    return worseExit(status, sink.finish());
}

}  // namespace

int main(int argc, char** argv) {
    quillon_platform::reportBrokenPipesAsErrors();
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        tell("", std::string("internal error: ") + e.what());
    } catch (...) {
        tell("", "internal error");
    }
    return kExitInternal;
}
