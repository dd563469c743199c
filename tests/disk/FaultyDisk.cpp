#include "FaultyDisk.h"

#include <cerrno>
#include <cstdarg>
#include <filesystem>
#include <map>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace faultyDisk {
namespace {

struct State
{
    fs::path root;
    fs::path away;
    Way way = Way::None;
    std::size_t fault = 0;
    bool twoDisks = false;

    std::vector<Call> calls;
    std::map<int, std::string> files; ///< those that are open
    std::string victim;
    int fullOnce = -1; ///< the file whose next write finds no room
};

State s_state;
bool s_watching = false;

/// The program has one thread that writes; the others are the toolkit's.
bool isWatched()
{
    return s_watching && ::getpid() == ::gettid();
}

/// While one lives, calls go to the system as they are.
class Aside
{
public:
    Aside()
        : m_former(std::exchange(s_watching, false))
        , m_errno(errno)
    {
    }
    ~Aside()
    {
        s_watching = m_former;
        errno = m_errno;
    }
    Aside(const Aside &) = delete;
    Aside &operator=(const Aside &) = delete;

private:
    const bool m_former;
    const int m_errno;
};

/// The path below the root; empty for any other file.
std::string below(const char *name)
{
    if (!isWatched() || name == nullptr)
        return {};
    // Not the current path, which is gone once bin/ has been deleted.
    const fs::path path = (s_state.root / "bin" / name).lexically_normal();
    const std::string relative = path.lexically_relative(s_state.root).string();
    const bool inside = !relative.starts_with("..") && relative != ".";
    return inside ? relative : std::string();
}

bool exists(const std::string &relative)
{
    const Aside aside;
    std::error_code error;
    return fs::exists(fs::symlink_status(s_state.root / relative, error));
}

/// Moves a file or folder out of the way; bin/ is deleted, since what is above a folder that has
/// moved is somewhere else.
void moveAway(const std::string &relative)
{
    const Aside aside;
    std::error_code error;
    const fs::path from = s_state.root / relative;
    if (relative == "bin") {
        fs::remove_all(from, error);
        return;
    }
    const fs::path to = s_state.away / relative;
    fs::create_directories(to.parent_path(), error);
    fs::rename(from, to, error);
}

void putFolder(const std::string &relative)
{
    moveAway(relative);
    const Aside aside;
    std::error_code error;
    fs::create_directories(s_state.root / relative / "in the way", error);
}

void deleteFile(const std::string &relative)
{
    const Aside aside;
    std::error_code error;
    fs::remove(s_state.root / relative, error);
}

std::string folderOf(const std::string &relative)
{
    return fs::path(relative).parent_path().string();
}

bool takesRoom(Kind kind)
{
    return kind == Kind::Create || kind == Kind::Write || kind == Kind::Folder;
}

bool opens(Kind kind)
{
    return kind == Kind::Look || kind == Kind::Open || kind == Kind::Create;
}

bool changes(Kind kind)
{
    return kind != Kind::Look && kind != Kind::Read && kind != Kind::Sync;
}

/// What happens to the disk before the call that is named.
void strike(const std::string &path)
{
    s_state.victim = path;
    if (s_state.way == Way::Folder)
        putFolder(path);
    else if (s_state.way == Way::Lost)
        moveAway(folderOf(path));
    else if (s_state.way == Way::Deleted)
        deleteFile(path);
}

/// Counts a call; the number of the error with which it fails, 0 if it goes to the system.
int refusal(Kind kind, const std::string &path)
{
    const std::size_t number = s_state.calls.size();
    s_state.calls.push_back({kind, path});
    if (number < s_state.fault)
        return 0;
    const bool now = number == s_state.fault;
    if (now)
        strike(path);
    switch (s_state.way) {
    case Way::Full: // what waits in a cache finds out when it is to be written
        return takesRoom(kind) || (now && kind == Kind::Sync) ? ENOSPC : 0;
    case Way::WasFull:
        return now ? ENOSPC : 0;
    case Way::Broken:
        return now ? EIO : 0;
    case Way::Denied:
        return now || (path == s_state.victim && opens(kind)) ? EACCES : 0;
    case Way::ReadOnly:
        return changes(kind) ? EROFS : 0;
    default:
        return 0;
    }
}

bool isFull()
{
    return s_state.way == Way::Full || s_state.way == Way::WasFull;
}

int failed(int error)
{
    errno = error;
    return -1;
}

/// The toolkit writes a file that is to replace another without a name at first.
bool isNameless(int flags)
{
    return (flags & O_TMPFILE) == O_TMPFILE;
}

Kind kindOfOpening(const std::string &path, int flags)
{
    if (isNameless(flags))
        return Kind::Create;
    if ((flags & O_ACCMODE) == O_RDONLY)
        return Kind::Look;
    return (flags & O_CREAT) != 0 && !exists(path) ? Kind::Create : Kind::Open;
}

int openFile(int folder, const char *name, int flags, mode_t mode)
{
    std::string path;
    if (isNameless(flags) || (flags & O_DIRECTORY) == 0)
        path = below(name);
    if (!path.empty()) {
        if (isNameless(flags))
            path += nameless;
        if (const int error = refusal(kindOfOpening(path, flags), path))
            return failed(error);
    }
    const int file = int(::syscall(SYS_openat, folder, name, flags, mode));
    if (!path.empty() && file >= 0)
        s_state.files[file] = path;
    return file;
}

/// The path of a file that is open; empty for any that isn't watched.
std::string opened(int file)
{
    if (!isWatched())
        return {};
    const auto found = s_state.files.find(file);
    return found == s_state.files.end() ? std::string() : found->second;
}

ssize_t writeFile(int file, const void *bytes, std::size_t size)
{
    const std::string path = opened(file);
    if (!path.empty()) {
        if (std::exchange(s_state.fullOnce, -1) == file)
            return failed(ENOSPC);
        const bool first = s_state.calls.size() == s_state.fault;
        if (const int error = refusal(Kind::Write, path)) {
            if (!first || !isFull() || size < 2)
                return failed(error);
            s_state.fullOnce = file;
            return ::syscall(SYS_write, file, bytes, size / 2);
        }
    }
    return ::syscall(SYS_write, file, bytes, size);
}

int onOpenFile(Kind kind, int file, long call, long argument = 0)
{
    const std::string path = opened(file);
    if (!path.empty()) {
        if (const int error = refusal(kind, path))
            return failed(error);
    }
    return int(::syscall(call, file, argument));
}

int move(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    const std::string target = below(to);
    if (!target.empty()) {
        if (s_state.twoDisks && folderOf(below(from)) != folderOf(target))
            return failed(EXDEV);
        if (const int error = refusal(Kind::Move, target))
            return failed(error);
    }
    return int(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

/// A file without a name gets one.
int name(int fromFolder, const char *from, int toFolder, const char *to, int flags)
{
    const std::string path = below(to);
    if (!path.empty()) {
        if (const int error = refusal(Kind::Create, path))
            return failed(error);
    }
    return int(::syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int removeFile(int folder, const char *name, int flags)
{
    const std::string path = below(name);
    if (!path.empty()) {
        if (const int error = refusal(Kind::Remove, path))
            return failed(error);
    }
    return int(::syscall(SYS_unlinkat, folder, name, flags));
}

} // namespace

const char *nameOf(Kind kind)
{
    constexpr const char *names[] = {"open to read", "open",     "create", "read",   "write",
                                     "sync",         "truncate", "move",   "remove", "make folder"};
    return names[int(kind)];
}

const char *nameOf(Way way)
{
    constexpr const char *names[] = {"none",      "full",     "was full", "broken", "no permission",
                                     "read-only", "a folder", "lost",     "deleted"};
    return names[int(way)];
}

bool concerns(Way way, const Call &call)
{
    const bool lock = call.path == "kelmoran.lock";
    const bool named = !call.path.ends_with(nameless) && call.kind != Kind::Folder;
    switch (way) {
    case Way::Full:
    case Way::WasFull:
        return takesRoom(call.kind) || call.kind == Kind::Sync;
    case Way::Broken:
        return true;
    case Way::Denied:
        return opens(call.kind) || call.kind == Kind::Move || call.kind == Kind::Remove ||
               call.kind == Kind::Folder;
    case Way::ReadOnly:
        return changes(call.kind);
    case Way::Folder:
        return !lock && named;
    case Way::Lost:
        return folderOf(call.path) != "";
    case Way::Deleted:
        return !lock && named;
    default:
        return false;
    }
}

void watch(const std::string &root, const std::string &away, Way way, std::size_t fault,
           bool twoDisks)
{
    s_state = {};
    s_state.root = root;
    s_state.away = away;
    s_state.way = way;
    s_state.fault = fault;
    s_state.twoDisks = twoDisks;
    s_watching = true;
}

std::vector<Call> leave()
{
    s_watching = false;
    return std::exchange(s_state.calls, {});
}

std::size_t count()
{
    return s_state.calls.size();
}

} // namespace faultyDisk

// In place of the system's own, for the program and for every library that it uses.
extern "C" {

int open(const char *name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return faultyDisk::openFile(AT_FDCWD, name, flags, mode);
}

int open64(const char *name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return faultyDisk::openFile(AT_FDCWD, name, flags, mode);
}

int close(int file)
{
    if (faultyDisk::isWatched())
        faultyDisk::s_state.files.erase(file);
    return int(::syscall(SYS_close, file));
}

ssize_t read(int file, void *into, std::size_t size)
{
    const std::string path = faultyDisk::opened(file);
    if (!path.empty()) {
        if (const int error = faultyDisk::refusal(faultyDisk::Kind::Read, path))
            return faultyDisk::failed(error);
    }
    return ::syscall(SYS_read, file, into, size);
}

ssize_t write(int file, const void *bytes, std::size_t size)
{
    return faultyDisk::writeFile(file, bytes, size);
}

int fsync(int file)
{
    return faultyDisk::onOpenFile(faultyDisk::Kind::Sync, file, SYS_fsync);
}

int fdatasync(int file)
{
    return faultyDisk::onOpenFile(faultyDisk::Kind::Sync, file, SYS_fdatasync);
}

int ftruncate(int file, off_t size) noexcept
{
    return faultyDisk::onOpenFile(faultyDisk::Kind::Truncate, file, SYS_ftruncate, size);
}

int ftruncate64(int file, off64_t size) noexcept
{
    return faultyDisk::onOpenFile(faultyDisk::Kind::Truncate, file, SYS_ftruncate, size);
}

int rename(const char *from, const char *to) noexcept
{
    return faultyDisk::move(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned flags) noexcept
{
    return faultyDisk::move(fromFolder, from, toFolder, to, flags);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return faultyDisk::name(fromFolder, from, toFolder, to, flags);
}

int unlink(const char *name) noexcept
{
    return faultyDisk::removeFile(AT_FDCWD, name, 0);
}

int mkdir(const char *name, mode_t mode) noexcept
{
    const std::string path = faultyDisk::below(name);
    if (!path.empty()) {
        if (const int error = faultyDisk::refusal(faultyDisk::Kind::Folder, path))
            return faultyDisk::failed(error);
    }
    return int(::syscall(SYS_mkdirat, AT_FDCWD, name, mode));
}
}
