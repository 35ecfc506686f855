// quillonbin2xml: converts the renderer plug-in's stored binary records to Asset XML from the
// command line, through the same conversions as the Ruby module.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "archive/quick_archive.h"
#include "convert/conversions.h"
#include "options/all_options.h"
#include "options/options_file.h"
#include "platform/binary_stdio.h"
#include "record_input.h"
#include "xml/text.h"

using quillon_cli::InputForm;

namespace {

constexpr int kExitConverted = 0;
constexpr int kExitRefused = 1;
constexpr int kExitUsage = 2;
constexpr const char* kVersion = QUILLON_VERSION;  // from the VERSION file, through CMake

struct Options {
    std::string command;
    std::string file;
    std::optional<long> type;
    std::string typeKind;  // "light" or "material" for inspect's KIND:N
    InputForm form = InputForm::Auto;
    std::string output;
    bool help = false;
};

struct Command {
    const char* name;
    const char* synopsis;
    bool needsType;
    bool needsFile;
};

const Command kCommands[] = {
    {"light", "light --type N FILE      convert a stored light record (type 0 to 7)", true, true},
    {"material", "material --type N FILE   convert a stored material record (type 0 to 14)", true,
     true},
    {"options", "options                  print the default render options document", false, false},
    {"inspect",
     "inspect --type KIND:N FILE  print the objects a record holds (KIND light or material;\n"
     "                           --type scene for a stored scene record)",
     true, true},
    {"scene", "scene FILE               read a stored scene record, print the options it holds",
     false, true},
    {"coropt", "coropt FILE              convert a .coropt render options file", false, true},
    {"cormat", "cormat FILE              convert every material of a .cormat material file", false,
     true},
};

void printUsage(std::ostream& out) {
    out << "usage: quillonbin2xml COMMAND [--input raw|json] [-o FILE] ...\n\n"
           "Converts the binary scene records of the older renderer plug-in to Asset XML.\n\n"
           "commands:\n";
    for (const Command& c : kCommands) out << "  " << c.synopsis << "\n";
    out << "\nFILE holds raw bytes or a JSON array of integers (detected, or forced with\n"
           "--input); \"-\" reads standard input. -o writes the result to FILE atomically.\n"
           "exit codes: 0 converted, 1 record refused, 2 bad usage or unreadable input.\n"
           "  --help     this text (or a command's, after the command)\n"
           "  --version  the tool's version\n";
}

const Command* findCommand(const std::string& name) {
    for (const Command& c : kCommands) {
        if (name == c.name) return &c;
    }
    return nullptr;
}

int usageError(const std::string& message) {
    std::cerr << "quillonbin2xml: " << message << " (see --help)\n";
    return kExitUsage;
}

bool parseLong(const std::string& text, long& out) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    out = std::strtol(text.c_str(), &end, 10);
    return errno == 0 && end && *end == '\0';
}

// Parses the arguments; returns an exit code when the run should stop here.
std::optional<int> parseArguments(int argc, char** argv, Options& opts) {
    std::vector<std::string> args(argv + 1, argv + argc);
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](const char* flag) -> std::optional<std::string> {
            if (i + 1 >= args.size()) return std::nullopt;
            (void)flag;
            return args[++i];
        };
        if (a == "--help" || a == "-h") {
            opts.help = true;
        } else if (a == "--version") {
            std::cout << "quillonbin2xml " << kVersion << "\n";
            return kExitConverted;
        } else if (a == "--type" || a == "-t") {
            auto v = value("--type");
            if (!v) return usageError("--type needs a value");
            if (*v == "scene") {
                opts.typeKind = *v;
                opts.type = 0;
                continue;
            }
            std::string number = *v;
            const size_t colon = number.find(':');
            if (colon != std::string::npos) {
                opts.typeKind = number.substr(0, colon);
                number = number.substr(colon + 1);
            }
            long type = 0;
            if (!parseLong(number, type)) return usageError("--type needs an integer");
            opts.type = type;
        } else if (a == "--input") {
            auto v = value("--input");
            if (v && *v == "raw") {
                opts.form = InputForm::Raw;
            } else if (v && *v == "json") {
                opts.form = InputForm::Json;
            } else {
                return usageError("--input takes raw or json");
            }
        } else if (a == "-o" || a == "--output") {
            auto v = value("-o");
            if (!v || v->empty()) return usageError("-o needs a file name");
            opts.output = *v;
        } else if (a.size() > 1 && a[0] == '-') {
            return usageError("unknown option " + a);
        } else if (opts.command.empty()) {
            opts.command = a;
        } else if (opts.file.empty()) {
            opts.file = a;
        } else {
            return usageError("unexpected argument " + a);
        }
    }
    return std::nullopt;
}

// Writes next to the target and renames into place, so a failed run leaves no partial file.
bool writeAtomically(const std::string& path, const std::string& text) {
    const std::string temp = path + ".tmp-quillonbin2xml";
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        if (!out) return false;
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        out.flush();
        if (!out) {
            std::remove(temp.c_str());
            return false;
        }
    }
    if (std::rename(temp.c_str(), path.c_str()) != 0) {
        std::remove(temp.c_str());
        return false;
    }
    return true;
}

int emit(const Options& opts, const std::string& text) {
    if (opts.output.empty()) {
        std::cout << text;
        std::cout.flush();
        return std::cout ? kExitConverted : kExitUsage;
    }
    if (!writeAtomically(opts.output, text)) {
        std::cerr << "quillonbin2xml: cannot write " << opts.output << "\n";
        return kExitUsage;
    }
    return kExitConverted;
}

std::string shownName(const Options& opts) { return opts.file == "-" ? "<stdin>" : opts.file; }

// The record's bytes, or the exit code when there are none to read.
std::optional<int> loadRecord(const Options& opts, std::string& bytes) {
    const std::optional<std::string> content = quillon_cli::readInputFile(opts.file);
    if (!content) {
        std::cerr << "quillonbin2xml: " << shownName(opts) << ": cannot read the file\n";
        return kExitUsage;
    }
    std::string error;
    const std::optional<std::string> decoded =
        quillon_cli::decodeRecord(*content, opts.form, error);
    if (!decoded) {
        std::cerr << "quillonbin2xml: " << shownName(opts) << ": " << error << "\n";
        return kExitUsage;
    }
    if (decoded->empty()) {
        std::cerr << "quillonbin2xml: " << shownName(opts) << ": the record is empty\n";
        return kExitRefused;
    }
    bytes = *decoded;
    return std::nullopt;
}

// A stored scene record: the options document it leaves, as serialize_to_xml gives it.
int runSceneCommand(const Options& opts) {
    std::string bytes;
    if (auto stop = loadRecord(opts, bytes)) return *stop;
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(bytes.data(), bytes.size());
    CorvaneCore::ReadTrace trace;
    const bool read = CorvaneCore::readSceneRecord(archive, &trace);
    const std::string reason =
        trace.failureText().empty() ? "the scene record was refused" : trace.failureText();
    if (opts.command == "inspect") {
        std::cout << trace.treeText();
        if (!read) std::cout << "refused: " << reason << "\n";
        return read ? kExitConverted : kExitRefused;
    }
    if (!read) {
        std::cerr << "quillonbin2xml: " << shownName(opts) << ": " << reason << "\n";
        return kExitRefused;
    }
    return emit(opts, CorvaneCore::optionsDocument());
}

int runRecordCommand(const Options& opts) {
    const std::string shownName = ::shownName(opts);
    std::string loaded;
    if (auto stop = loadRecord(opts, loaded)) return *stop;
    const std::optional<std::string> bytes = loaded;
    const std::string kind = opts.command == "inspect" ? opts.typeKind : opts.command;
    const int32_t type = static_cast<int32_t>(*opts.type);
    const bool known =
        kind == "light" ? CorvaneCore::isLightType(type) : CorvaneCore::isMaterialType(type);
    if (!known) {
        std::cerr << "quillonbin2xml: " << shownName << ": no " << kind << " class has type id "
                  << type << "\n";
        return kExitRefused;
    }
    CorvaneCore::QuickArchive archive(1);
    archive.writeBytes(bytes->data(), bytes->size());
    CorvaneCore::ReadTrace trace;
    const std::optional<std::string> xml =
        kind == "light" ? CorvaneCore::convertLight(archive, type, &trace)
                        : CorvaneCore::convertMaterial(archive, type, &trace);
    const std::string reason =
        trace.failureText().empty()
            ? "the " + kind + " record of type " + std::to_string(type) + " was refused"
            : trace.failureText();
    if (opts.command == "inspect") {
        std::cout << trace.treeText();
        if (!xml) std::cout << "refused: " << reason << "\n";
        return xml ? kExitConverted : kExitRefused;
    }
    if (!xml) {
        std::cerr << "quillonbin2xml: " << shownName << ": " << reason << "\n";
        return kExitRefused;
    }
    return emit(opts, *xml);
}

int runCoroptCommand(const Options& opts) {
    if (!std::ifstream(opts.file, std::ios::binary)) {
        std::cerr << "quillonbin2xml: " << opts.file << ": cannot read the file\n";
        return kExitUsage;
    }
    CorvaneCore::AllOptions options;
    CorvaneCore::CorOptFile file;
    if (!file.read(options, CorvaneCore::utf8ToWide(opts.file))) {
        std::cerr << "quillonbin2xml: " << opts.file << ": the options file was refused\n";
        return kExitRefused;
    }
    return emit(opts, CorvaneCore::optionsDocument(options));
}

// The file's bytes as they stand: a .cormat file is binary, never a JSON array.
int runCormatCommand(const Options& opts) {
    const std::string shownName = opts.file == "-" ? "<stdin>" : opts.file;
    const std::optional<std::string> content = quillon_cli::readInputFile(opts.file);
    if (!content) {
        std::cerr << "quillonbin2xml: " << shownName << ": cannot read the file\n";
        return kExitUsage;
    }
    const std::optional<std::string> xml = CorvaneCore::convertCorMat(*content);
    if (!xml) {
        std::cerr << "quillonbin2xml: " << shownName << ": the material file was refused\n";
        return kExitRefused;
    }
    return emit(opts, *xml);
}

int run(int argc, char** argv) {
    Options opts;
    if (auto stop = parseArguments(argc, argv, opts)) return *stop;
    if (opts.command.empty()) {
        if (opts.help) {
            printUsage(std::cout);
            return kExitConverted;
        }
        printUsage(std::cerr);
        return kExitUsage;
    }
    const Command* command = findCommand(opts.command);
    if (!command) return usageError("unknown command " + opts.command);
    if (opts.help) {
        std::cout << "usage: quillonbin2xml " << command->synopsis << "\n";
        return kExitConverted;
    }
    if (command->needsType && !opts.type) return usageError(opts.command + " needs --type N");
    if (command->needsFile && opts.file.empty()) return usageError(opts.command + " needs FILE");
    if (!command->needsFile && !opts.file.empty()) {
        return usageError(opts.command + " takes no FILE");
    }
    if (opts.command == "inspect" && opts.typeKind != "light" && opts.typeKind != "material" &&
        opts.typeKind != "scene") {
        return usageError("inspect needs --type light:N, --type material:N or --type scene");
    }
    if (opts.command == "scene" || (opts.command == "inspect" && opts.typeKind == "scene")) {
        return runSceneCommand(opts);
    }
    if (opts.command == "options") return emit(opts, CorvaneCore::optionsDocument());
    if (opts.command == "coropt") return runCoroptCommand(opts);
    if (opts.command == "cormat") return runCormatCommand(opts);
    return runRecordCommand(opts);
}

}  // namespace

int main(int argc, char** argv) {
    quillon_platform::useBinaryStandardStreams();
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        std::cerr << "quillonbin2xml: internal error: " << e.what() << "\n";
    } catch (...) {
        std::cerr << "quillonbin2xml: internal error\n";
    }
    return kExitRefused;
}
