// The operating system's services that the command-line tool needs, in one place: what a path
// names, replacing a file in one step, child processes and the terminal. Paths are UTF-8.
// Every other file stays free of system headers and #ifdef branches.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon_platform {

enum class PathKind { Missing, Regular, Directory, Other };

struct PathInfo {
    PathKind kind = PathKind::Missing;
    uint64_t size = 0;
};

// Follows links, so a link to a regular file counts as a regular file.
PathInfo inspectPath(const std::string& path);

// Puts `text` in place of `target` without a moment in which the target is partial: the text
// goes to a new, exclusively created file in the target's folder, which takes the target's
// permission bits (or the usual ones for a new file) and then replaces the target in one step.
// A link as target is kept and the file it names is replaced. Refuses a target that exists
// and is not a regular file. On failure nothing is left behind and `error` says why.
bool replaceFile(const std::string& target, const std::string& text, std::string& error);

// Writes to standard output, flushing; false with `error` set when the write failed (a full
// disk, a closed pipe).
bool writeStandardOutput(const std::string& text, std::string& error);

// Standard input as bytes, with no line-end translation.
void useBinaryStandardInput();

// A closed pipe shows as a failed write instead of ending the process.
void reportBrokenPipesAsErrors();

bool standardErrorIsTerminal();

// The running program's own file, for starting more of itself; `argv0` when the system
// cannot tell.
std::string executablePath(const char* argv0);

struct ChildProcess {
    intptr_t id = 0;
};

// Starts `program` with `arguments` (not counting the program itself), sharing this process's
// standard streams.
std::optional<ChildProcess> startProcess(const std::string& program,
                                         const std::vector<std::string>& arguments,
                                         std::string& error);

// The child's exit code once it has ended; nothing while it runs. `wait` blocks.
std::optional<int> childExitCode(ChildProcess& child, bool wait);

// A new, empty file made exclusively in `folder` whose name starts with `prefix`.
std::optional<std::string> createUniqueFile(const std::string& folder, const std::string& prefix,
                                            std::string& error);

}  // namespace quillon_platform
