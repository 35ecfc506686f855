// The platform services on POSIX systems.
#ifndef _WIN32

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "platform/platform.h"

extern char** environ;

namespace quillon_platform {

namespace {

std::string systemError(const std::string& what) { return what + ": " + std::strerror(errno); }

std::string folderOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    if (slash == 0) return "/";
    return path.substr(0, slash);
}

std::string baseNameOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The file a link names, so that replacing it keeps the link.
std::string resolvedTarget(const std::string& target) {
    struct stat link {};
    if (lstat(target.c_str(), &link) != 0 || !S_ISLNK(link.st_mode)) return target;
    char resolved[PATH_MAX];
    return realpath(target.c_str(), resolved) ? std::string(resolved) : target;
}

// The bits a new file gets from this process: 0666 less the umask.
mode_t newFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

bool writeAll(int fd, const std::string& text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

}  // namespace

PathInfo inspectPath(const std::string& path) {
    struct stat st {};
    if (stat(path.c_str(), &st) != 0) return {};
    PathInfo info;
    info.kind = S_ISREG(st.st_mode)   ? PathKind::Regular
                : S_ISDIR(st.st_mode) ? PathKind::Directory
                                      : PathKind::Other;
    info.size = static_cast<uint64_t>(st.st_size);
    return info;
}

bool replaceFile(const std::string& requested, const std::string& text, std::string& error) {
    const std::string target = resolvedTarget(requested);
    struct stat st {};
    mode_t mode = 0;
    if (stat(target.c_str(), &st) == 0) {
        if (!S_ISREG(st.st_mode)) {
            error = "not a regular file; refusing to replace it";
            return false;
        }
        mode = st.st_mode & 07777;
    } else if (errno == ENOENT) {
        mode = newFileMode();
    } else {
        error = systemError("cannot look at the file");
        return false;
    }
    std::string temp = folderOf(target) + "/." + baseNameOf(target) + ".XXXXXX";
    const int fd = mkstemp(temp.data());
    if (fd < 0) {
        error = systemError("cannot create a file in its folder");
        return false;
    }
    bool ok = fchmod(fd, mode) == 0 && writeAll(fd, text);
    if (!ok) error = systemError("cannot write");
    if (close(fd) != 0 && ok) {
        ok = false;
        error = systemError("cannot write");
    }
    if (ok && rename(temp.c_str(), target.c_str()) != 0) {
        ok = false;
        error = systemError("cannot replace the file");
    }
    if (!ok) unlink(temp.c_str());
    return ok;
}

bool writeStandardOutput(const std::string& text, std::string& error) {
    if (!writeAll(STDOUT_FILENO, text)) {
        error = systemError("cannot write standard output");
        return false;
    }
    return true;
}

void useBinaryStandardInput() {}

void reportBrokenPipesAsErrors() { signal(SIGPIPE, SIG_IGN); }

bool standardErrorIsTerminal() { return isatty(STDERR_FILENO) == 1; }

std::string executablePath(const char* argv0) {
    char buffer[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (n > 0) return std::string(buffer, static_cast<size_t>(n));
    return argv0;
}

std::optional<ChildProcess> startProcess(const std::string& program,
                                         const std::vector<std::string>& arguments,
                                         std::string& error) {
    std::vector<std::string> all{program};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& a : all) argv.push_back(a.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int rc = posix_spawn(&pid, program.c_str(), nullptr, nullptr, argv.data(), environ);
    if (rc != 0) {
        error = "cannot start " + program + ": " + std::strerror(rc);
        return std::nullopt;
    }
    return ChildProcess{static_cast<intptr_t>(pid)};
}

std::optional<int> childExitCode(ChildProcess& child, bool wait) {
    int status = 0;
    pid_t done = 0;
    do {
        done = waitpid(static_cast<pid_t>(child.id), &status, wait ? 0 : WNOHANG);
    } while (done < 0 && errno == EINTR);
    if (done == 0) return std::nullopt;
    if (done < 0) return 3;
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    return 3;  // ended by a signal: an internal failure of the child
}

std::optional<std::string> createUniqueFile(const std::string& folder, const std::string& prefix,
                                            std::string& error) {
    std::string path = folder + "/" + prefix + "XXXXXX";
    const int fd = mkstemp(path.data());
    if (fd < 0) {
        error = systemError("cannot create a file in " + folder);
        return std::nullopt;
    }
    close(fd);
    return path;
}

}  // namespace quillon_platform

#endif
