// The platform services on Windows. Paths arrive as UTF-8 and go to the wide system calls.
#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <random>

#include "platform/platform.h"

namespace quillon_platform {

namespace {

std::wstring wide(const std::string& utf8) {
    if (utf8.empty()) return std::wstring();
    const int n =
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring out(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), out.data(), n);
    return out;
}

std::string lastError(const std::string& what) {
    return what + " (system error " + std::to_string(GetLastError()) + ")";
}

std::string folderOf(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? "." : path.substr(0, slash == 0 ? 1 : slash);
}

std::string baseNameOf(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string randomSuffix() {
    static std::mt19937_64 engine{std::random_device{}() ^ GetCurrentProcessId()};
    static const char digits[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string s;
    for (int i = 0; i < 8; ++i) s.push_back(digits[engine() % 36]);
    return s;
}

// A new file under a fresh random name; CREATE_NEW fails instead of opening an existing one.
HANDLE createExclusive(const std::string& stem, std::string& path) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        path = stem + randomSuffix();
        HANDLE h = CreateFileW(wide(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS) return h;
    }
    return INVALID_HANDLE_VALUE;
}

bool writeAll(HANDLE h, const std::string& text) {
    size_t done = 0;
    while (done < text.size()) {
        const DWORD chunk = static_cast<DWORD>(std::min<size_t>(text.size() - done, 1u << 30));
        DWORD written = 0;
        if (!WriteFile(h, text.data() + done, chunk, &written, nullptr) || written == 0) {
            return false;
        }
        done += written;
    }
    return true;
}

// One argument as the C runtime parses it back: quotes around, backslashes doubled before a
// quote.
std::wstring quoted(const std::wstring& arg) {
    if (!arg.empty() && arg.find_first_of(L" \t\n\v\"") == std::wstring::npos) return arg;
    std::wstring out = L"\"";
    size_t backslashes = 0;
    for (wchar_t c : arg) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        out.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        out.push_back(c);
    }
    out.append(backslashes * 2, L'\\');
    out.push_back(L'"');
    return out;
}

}  // namespace

PathInfo inspectPath(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(wide(path).c_str(), GetFileExInfoStandard, &data)) return {};
    PathInfo info;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
        info.kind = PathKind::Directory;
    } else if (data.dwFileAttributes & FILE_ATTRIBUTE_DEVICE) {
        info.kind = PathKind::Other;
    } else {
        info.kind = PathKind::Regular;
    }
    info.size = (uint64_t(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return info;
}

bool replaceFile(const std::string& target, const std::string& text, std::string& error) {
    const PathInfo existing = inspectPath(target);
    if (existing.kind != PathKind::Missing && existing.kind != PathKind::Regular) {
        error = "not a regular file; refusing to replace it";
        return false;
    }
    const DWORD attributes =
        existing.kind == PathKind::Regular ? GetFileAttributesW(wide(target).c_str()) : 0;
    if (attributes & FILE_ATTRIBUTE_READONLY) {
        error = "the file is read-only";
        return false;
    }
    std::string temp;
    HANDLE h = createExclusive(folderOf(target) + "\\." + baseNameOf(target) + ".", temp);
    if (h == INVALID_HANDLE_VALUE) {
        error = lastError("cannot create a file in its folder");
        return false;
    }
    bool ok = writeAll(h, text);
    if (!ok) error = lastError("cannot write");
    if (!CloseHandle(h) && ok) {
        ok = false;
        error = lastError("cannot write");
    }
    if (ok && !MoveFileExW(wide(temp).c_str(), wide(target).c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        ok = false;
        error = lastError("cannot replace the file");
    }
    if (!ok) DeleteFileW(wide(temp).c_str());
    return ok;
}

bool writeStandardOutput(const std::string& text, std::string& error) {
    if (!writeAll(GetStdHandle(STD_OUTPUT_HANDLE), text)) {
        error = lastError("cannot write standard output");
        return false;
    }
    return true;
}

void useBinaryStandardInput() { _setmode(_fileno(stdin), _O_BINARY); }

void reportBrokenPipesAsErrors() {}

bool standardErrorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

std::string executablePath(const char* argv0) {
    wchar_t buffer[32768];
    const DWORD n = GetModuleFileNameW(nullptr, buffer, 32768);
    if (n == 0 || n >= 32768) return argv0;
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, buffer, static_cast<int>(n), nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, buffer, static_cast<int>(n), out.data(), size, nullptr,
                        nullptr);
    return out;
}

std::optional<ChildProcess> startProcess(const std::string& program,
                                         const std::vector<std::string>& arguments,
                                         std::string& error) {
    std::wstring line = quoted(wide(program));
    for (const std::string& a : arguments) line += L" " + quoted(wide(a));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    if (!CreateProcessW(wide(program).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &startup, &info)) {
        error = lastError("cannot start " + program);
        return std::nullopt;
    }
    CloseHandle(info.hThread);
    return ChildProcess{reinterpret_cast<intptr_t>(info.hProcess)};
}

std::optional<int> childExitCode(ChildProcess& child, bool wait) {
    HANDLE h = reinterpret_cast<HANDLE>(child.id);
    if (WaitForSingleObject(h, wait ? INFINITE : 0) != WAIT_OBJECT_0) return std::nullopt;
    DWORD code = 3;
    GetExitCodeProcess(h, &code);
    CloseHandle(h);
    return static_cast<int>(code);
}

std::optional<std::string> createUniqueFile(const std::string& folder, const std::string& prefix,
                                            std::string& error) {
    std::string path;
    HANDLE h = createExclusive(folder + "\\" + prefix, path);
    if (h == INVALID_HANDLE_VALUE) {
        error = lastError("cannot create a file in " + folder);
        return std::nullopt;
    }
    CloseHandle(h);
    return path;
}

}  // namespace quillon_platform

#endif
