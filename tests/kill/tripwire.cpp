// Counts the calls by which a program changes its files, writes them down, and kills the program at
// one of them. To be laid between the program and the C library (LD_PRELOAD), and told by the
// environment:
//
//   TRIPWIRE_ROOT    calls on what lies below this folder count
//   TRIPWIRE_LOG     a line a call: number, name, path, what it returned, and of a write where it
//                    began; the last line of a killed program ends in "killed"
//   TRIPWIRE_AT      the number of the call at which the program dies; 0, or none: at no call
//   TRIPWIRE_WITHIN  1: not in front of it but in its middle. A kill cuts a write only where a page
//                    of memory ends, and nothing else
//
// A debugger of system calls would do the same from outside, but it counts calls by their names,
// and can't tell those on a file that has no name yet.

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr long page = 4096;
constexpr int anyMode = 0666;

struct Wire
{
    std::string root;
    int log = -1;
    long at = 0;
    bool within = false;
    std::atomic<long> calls = 0;
};

std::string variable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// Null until the program has been loaded, and in the programs that it starts.
std::atomic<Wire *> s_wire = nullptr;

[[gnu::constructor]] void strain()
{
    static Wire wire;
    wire.root = variable("TRIPWIRE_ROOT") + '/';
    const std::string log = variable("TRIPWIRE_LOG");
    // Its children, a browser and what that needs, keep nothing of a person's.
    if (log.empty() || std::strncmp(program_invocation_short_name, "kelmoran", 8) != 0)
        return;
    wire.log = int(syscall(SYS_openat, AT_FDCWD, log.c_str(),
                           O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, anyMode));
    wire.at = std::atol(variable("TRIPWIRE_AT").c_str());
    wire.within = variable("TRIPWIRE_WITHIN") == "1";
    s_wire = &wire;
}

std::string pathOf(int fd)
{
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(fd);
    const ssize_t length =
        syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), std::size_t(length)) : std::string();
}

std::string pathOf(int folder, const char *path)
{
    if (*path == '/')
        return path;
    std::error_code none;
    const std::filesystem::path base = folder == AT_FDCWD ? std::filesystem::current_path(none)
                                                          : std::filesystem::path(pathOf(folder));
    return (base / path).lexically_normal().string();
}

void note(const Wire &wire, const std::string &line)
{
    syscall(SYS_write, wire.log, line.data(), line.size());
}

[[noreturn]] void die()
{
    for (;;)
        kill(getpid(), SIGKILL);
}

/// A call on this path, which may be of no concern. `rest` is told behind what it returned.
template <typename Call>
long changing(const char *name, const std::string &path, Call call, const std::string &rest = {})
{
    Wire *wire = s_wire;
    if (!wire || path.compare(0, wire->root.size(), wire->root) != 0)
        return call();
    const long number = ++wire->calls;
    const std::string line =
        std::to_string(number) + '\t' + name + '\t' + path.substr(wire->root.size()) + '\t';
    if (number == wire->at && !wire->within) {
        note(*wire, line + "killed\n");
        die();
    }
    const long result = call();
    const int error = errno;
    note(*wire, line + std::to_string(result) + rest + '\n');
    errno = error;
    return result;
}

/// Where the next write goes.
long placeIn(int fd)
{
    struct stat status = {};
    if ((fcntl(fd, F_GETFL) & O_APPEND) != 0 && fstat(fd, &status) == 0)
        return status.st_size;
    return lseek(fd, 0, SEEK_CUR);
}

long writing(int fd, const void *data, std::size_t size)
{
    const auto whole = [&] { return syscall(SYS_write, fd, data, size); };
    Wire *wire = s_wire;
    const std::string path = wire ? pathOf(fd) : std::string();
    if (!wire || path.compare(0, wire->root.size(), wire->root) != 0)
        return whole();
    const long place = placeIn(fd);
    const long fits = page - place % page;
    const auto cut = [&] {
        if (wire->within && wire->calls == wire->at && fits < long(size)) {
            syscall(SYS_write, fd, data, fits);
            note(*wire, std::to_string(wire->at) + "\twrite\t" + path.substr(wire->root.size()) +
                            "\tkilled\n");
            die();
        }
        return whole();
    };
    return changing("write", path, cut, '\t' + std::to_string(place));
}

long opening(int folder, const char *path, int flags, mode_t mode)
{
    const auto call = [&] { return syscall(SYS_openat, folder, path, flags, mode); };
    if ((flags & (O_CREAT | O_TRUNC | O_TMPFILE)) == 0 || (flags & O_ACCMODE) == O_RDONLY)
        return call();
    return changing("open", pathOf(folder, path), call);
}

mode_t modeIn(va_list list)
{
    return mode_t(va_arg(list, unsigned));
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const mode_t mode = modeIn(list);
    va_end(list);
    return int(opening(AT_FDCWD, path, flags, mode));
}

int open64(const char *path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const mode_t mode = modeIn(list);
    va_end(list);
    return int(opening(AT_FDCWD, path, flags, mode));
}

int openat(int folder, const char *path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const mode_t mode = modeIn(list);
    va_end(list);
    return int(opening(folder, path, flags, mode));
}

ssize_t write(int fd, const void *data, size_t size)
{
    return writing(fd, data, size);
}

int ftruncate64(int fd, off64_t size) noexcept
{
    return int(changing("ftruncate", pathOf(fd), [&] { return syscall(SYS_ftruncate, fd, size); }));
}

int fchmod(int fd, mode_t mode) noexcept
{
    return int(changing("fchmod", pathOf(fd), [&] { return syscall(SYS_fchmod, fd, mode); }));
}

int fsync(int fd)
{
    return int(changing("fsync", pathOf(fd), [&] { return syscall(SYS_fsync, fd); }));
}

int fdatasync(int fd)
{
    return int(changing("fdatasync", pathOf(fd), [&] { return syscall(SYS_fdatasync, fd); }));
}

int rename(const char *from, const char *to) noexcept
{
    return int(
        changing("rename", pathOf(AT_FDCWD, to), [&] { return syscall(SYS_rename, from, to); }));
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return int(changing("link", pathOf(toFolder, to), [&] {
        return syscall(SYS_linkat, fromFolder, from, toFolder, to, flags);
    }));
}

int link(const char *from, const char *to) noexcept
{
    return int(changing("link", pathOf(AT_FDCWD, to), [&] { return syscall(SYS_link, from, to); }));
}

int unlink(const char *path) noexcept
{
    return int(
        changing("unlink", pathOf(AT_FDCWD, path), [&] { return syscall(SYS_unlink, path); }));
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return int(
        changing("mkdir", pathOf(AT_FDCWD, path), [&] { return syscall(SYS_mkdir, path, mode); }));
}

} // extern "C"
