// A library in front of the system's, for a disk that fails and a process that dies at a chosen moment. It
// counts the calls that change what lies in the directory DISK_ROOT, by kind: open (for writing or to make
// a file), write, rename, unlink, sync, mkdir, link, resize, mark. The environment says what becomes of the
// call number DISK_AT of the kind DISK_KIND, counted from 1:
//   DISK_HOW=before, after   the process is killed in front of it or behind it
//   DISK_HOW=power           as before; the power is gone, and DISK_RECORD tells what was on the disk
//   DISK_HOW=half            it is killed when half of the bytes are written
//   DISK_HOW=ENOSPC, EIO, EACCES, EROFS
//                            the call fails; with DISK_BAD, the path of a file, so do all that such a disk
//                            refuses, from then on until that file is gone
// DISK_SYNC_MS makes each sync take so many milliseconds more.
// DISK_LOG is a file outside, which gets a line "KIND PATH" for each call and "hit KIND PATH" at the chosen
// one. DISK_RECORD is one that gets each call with its data, for power_loss.h.

#include "tests/kill/disk_call_record.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{
enum Kind { Open, Write, Rename, Unlink, Sync, Mkdir, Link, Resize, Mark, Kinds };
const char *const kindNames[Kinds] = {"open",  "write", "rename", "unlink", "sync",
                                      "mkdir", "link",  "resize", "mark"};

std::atomic<int> counted[Kinds];
std::atomic<bool> hit{false};

template <class Call> Call systems(const char *name)
{
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}

const char *setting(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The path of \a path below \a directory, a descriptor or AT_FDCWD, without links resolved.
std::string absolute(int directory, const char *path)
{
    if (path[0] == '/')
        return path;
    char base[PATH_MAX] = "";
    if (directory == AT_FDCWD) {
        if (getcwd(base, sizeof base) == nullptr)
            return path;
    } else {
        char link[64];
        std::snprintf(link, sizeof link, "/proc/self/fd/%d", directory);
        const ssize_t size = readlink(link, base, sizeof base - 1);
        base[size < 0 ? 0 : size] = 0;
    }
    return std::string(base) + '/' + path;
}

/// The path of an open file, "" if it is none.
std::string pathOf(int fd)
{
    char link[64], path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    const ssize_t size = readlink(link, path, sizeof path - 1);
    return size <= 0 || path[0] != '/' ? std::string() : std::string(path, size_t(size));
}

bool isConcerned(const std::string &path)
{
    const std::string root = setting("DISK_ROOT");
    return !root.empty() && (path + '/').compare(0, root.size() + 1, root + '/') == 0;
}

void append(const char *file, const std::string &bytes)
{
    if (file[0] == 0)
        return;
    const int fd = systems<int (*)(const char *, int, ...)>("open")(
        file, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    const ssize_t written =
        systems<ssize_t (*)(int, const void *, size_t)>("write")(fd, bytes.data(), bytes.size());
    (void)written;
    close(fd);
}

void die()
{
    std::raise(SIGKILL);
}

int errorOf(const char *how)
{
    static const struct {
        const char *name;
        int error;
    } errors[] = {{"ENOSPC", ENOSPC}, {"EIO", EIO}, {"EACCES", EACCES}, {"EROFS", EROFS}};
    for (const auto &row : errors)
        if (std::strcmp(row.name, how) == 0)
            return row.error;
    return 0;
}

/// Whether a disk in the state \a error refuses calls of the kind \a kind.
bool refuses(int error, Kind kind)
{
    switch (error) {
    case ENOSPC: return kind != Unlink && kind != Sync && kind != Rename;
    case EACCES: return kind != Write && kind != Sync && kind != Resize; // open files stay so
    case EROFS: return kind != Sync;
    default: return true;
    }
}

bool exists(const char *path)
{
    return access(path, F_OK) == 0;
}

/// One call of the program's: counted, and perhaps the chosen one.
class Call
{
public:
    Call(Kind kind, const std::string &path) : m_how(setting("DISK_HOW"))
    {
        m_concerned = isConcerned(path);
        if (!m_concerned)
            return;
        const int number = ++counted[kind];
        append(setting("DISK_LOG"), std::string(kindNames[kind]) + ' ' + path + '\n');
        m_chosen = std::strcmp(setting("DISK_KIND"), kindNames[kind]) == 0 &&
                   number == std::atoi(setting("DISK_AT"));
        const int error = errorOf(m_how);
        if (m_chosen) {
            hit = true;
            append(setting("DISK_LOG"), std::string("hit ") + kindNames[kind] + ' ' + path + '\n');
        }
        const bool bad = hit && setting("DISK_BAD")[0] != 0 && exists(setting("DISK_BAD"));
        if (error != 0 && (m_chosen || bad) && refuses(error, kind))
            m_error = error;
        if (m_chosen && (std::strcmp(m_how, "before") == 0 || std::strcmp(m_how, "power") == 0))
            die();
    }
    ~Call()
    {
        if (m_chosen && std::strcmp(m_how, "after") == 0)
            die();
    }
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    [[nodiscard]] bool fails() const
    {
        if (m_error != 0)
            errno = m_error;
        return m_error != 0;
    }
    [[nodiscard]] bool isHalved() const { return m_chosen && std::strcmp(m_how, "half") == 0; }
    /// Keeps what has been done.
    void record(const std::string &entry) const
    {
        if (m_concerned)
            append(setting("DISK_RECORD"), entry);
    }

private:
    const char *m_how;
    bool m_concerned = false;
    bool m_chosen = false;
    int m_error = 0;
};

using OpenAt = int (*)(int, const char *, int, ...);

int openBy(const char *name, int directory, const char *path, int flags, mode_t mode)
{
    const auto call = systems<OpenAt>(name);
    if ((flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) == 0)
        return call(directory, path, flags, mode);
    const std::string file = absolute(directory, path);
    const Call disk(Open, file);
    if (disk.fails())
        return -1;
    const bool present = exists(file.c_str());
    const int fd = call(directory, path, flags, mode);
    if (fd >= 0 && (!present || (flags & O_TRUNC) != 0))
        disk.record(diskCallRecord(present ? "trunc" : "make", file));
    return fd;
}

/// Whether \a fd has no places to write at: a pipe, a socket, a terminal. Leaves errno alone.
bool isStream(int fd)
{
    const int former = errno;
    const bool stream = lseek64(fd, 0, SEEK_CUR) < 0 && errno == ESPIPE;
    errno = former;
    return stream;
}

ssize_t writeBy(int fd, const void *bytes, size_t size, off64_t at)
{
    if (isStream(fd))
        return syscall(SYS_write, fd, bytes,
                       size); // for a signal's handler too: no memory, no search for names
    const auto call = systems<ssize_t (*)(int, const void *, size_t)>("write");
    const auto callAt = systems<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    const auto put = [&](size_t part) {
        return at < 0 ? call(fd, bytes, part) : callAt(fd, bytes, part, at);
    };
    const std::string path = pathOf(fd);
    if (!isConcerned(path))
        return put(size);
    const Call disk(Write, path);
    if (disk.fails())
        return -1;
    if (disk.isHalved()) {
        const ssize_t written = put(size / 2);
        (void)written;
        die();
    }
    const off64_t position = at >= 0                                ? at
                             : (fcntl(fd, F_GETFL) & O_APPEND) != 0 ? lseek64(fd, 0, SEEK_END)
                                                                    : lseek64(fd, 0, SEEK_CUR);
    const ssize_t written = put(size);
    if (written > 0)
        disk.record(diskCallRecord("write", path, std::to_string(position),
                                   std::string(static_cast<const char *>(bytes), size_t(written))));
    return written;
}

template <class Do>
int onPath(Kind kind, const char *what, const std::string &path, const std::string &other, Do act)
{
    const Call disk(kind, path);
    if (disk.fails())
        return -1;
    const int result = act();
    if (result == 0)
        disk.record(diskCallRecord(what, path, other));
    return result;
}

int syncBy(const char *name, int fd)
{
    return onPath(Sync, "sync", pathOf(fd), "", [&] {
        usleep(useconds_t(std::atoi(setting("DISK_SYNC_MS"))) * 1000);
        return systems<int (*)(int)>(name)(fd);
    });
}

int renameBy(int fromRoot, const char *from, int toRoot, const char *to, unsigned flags)
{
    const std::string source = absolute(fromRoot, from);
    return onPath(Rename, "rename", absolute(toRoot, to), source, [&] {
        return systems<int (*)(int, const char *, int, const char *, unsigned)>("renameat2")(
            fromRoot, from, toRoot, to, flags);
    });
}

int unlinkBy(int directory, const char *path, int flags)
{
    return onPath(
        Unlink, (flags & AT_REMOVEDIR) != 0 ? "rmdir" : "unlink", absolute(directory, path), "",
        [&] { return systems<int (*)(int, const char *, int)>("unlinkat")(directory, path, flags); });
}

int linkBy(int fromRoot, const char *from, int toRoot, const char *to, int flags)
{
    const std::string source = absolute(fromRoot, from);
    return onPath(Link, "link", absolute(toRoot, to), source, [&] {
        return systems<int (*)(int, const char *, int, const char *, int)>("linkat")(fromRoot, from, toRoot,
                                                                                     to, flags);
    });
}

int resizeBy(const char *name, int fd, off64_t size)
{
    return onPath(Resize, "resize", pathOf(fd), std::to_string(size),
                  [&] { return systems<int (*)(int, off64_t)>(name)(fd, size); });
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}
} // namespace

// NOLINTBEGIN(cert-dcl50-cpp): the system's own forms
extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openBy("openat", AT_FDCWD, path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openBy("openat64", AT_FDCWD, path, flags, mode);
}

extern "C" int openat(int directory, const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openBy("openat", directory, path, flags, mode);
}

extern "C" int openat64(int directory, const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openBy("openat64", directory, path, flags, mode);
}
// NOLINTEND(cert-dcl50-cpp)

extern "C" int creat(const char *path, mode_t mode)
{
    return openBy("openat", AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

extern "C" ssize_t write(int fd, const void *bytes, size_t size)
{
    return writeBy(fd, bytes, size, -1);
}

extern "C" ssize_t pwrite(int fd, const void *bytes, size_t size, off_t at)
{
    return writeBy(fd, bytes, size, at);
}

extern "C" ssize_t pwrite64(int fd, const void *bytes, size_t size, off64_t at)
{
    return writeBy(fd, bytes, size, at);
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    return renameBy(AT_FDCWD, from, AT_FDCWD, to, 0);
}

extern "C" int renameat(int fromRoot, const char *from, int toRoot, const char *to) noexcept
{
    return renameBy(fromRoot, from, toRoot, to, 0);
}

extern "C" int renameat2(int fromRoot, const char *from, int toRoot, const char *to, unsigned flags) noexcept
{
    return renameBy(fromRoot, from, toRoot, to, flags);
}

extern "C" int unlink(const char *path) noexcept
{
    return unlinkBy(AT_FDCWD, path, 0);
}

extern "C" int unlinkat(int directory, const char *path, int flags) noexcept
{
    return unlinkBy(directory, path, flags);
}

extern "C" int rmdir(const char *path) noexcept
{
    return unlinkBy(AT_FDCWD, path, AT_REMOVEDIR);
}

extern "C" int remove(const char *path) noexcept
{
    struct stat status = {};
    const bool directory = lstat(path, &status) == 0 && S_ISDIR(status.st_mode);
    return unlinkBy(AT_FDCWD, path, directory ? AT_REMOVEDIR : 0);
}

extern "C" int fsync(int fd)
{
    return syncBy("fsync", fd);
}

extern "C" int fdatasync(int fd)
{
    return syncBy("fdatasync", fd);
}

extern "C" int mkdir(const char *path, mode_t mode) noexcept
{
    return onPath(Mkdir, "mkdir", absolute(AT_FDCWD, path), "",
                  [&] { return systems<int (*)(const char *, mode_t)>("mkdir")(path, mode); });
}

extern "C" int link(const char *from, const char *to) noexcept
{
    return linkBy(AT_FDCWD, from, AT_FDCWD, to, 0);
}

extern "C" int linkat(int fromRoot, const char *from, int toRoot, const char *to, int flags) noexcept
{
    return linkBy(fromRoot, from, toRoot, to, flags);
}

extern "C" int ftruncate(int fd, off_t size) noexcept
{
    return resizeBy("ftruncate64", fd, size);
}

extern "C" int ftruncate64(int fd, off64_t size) noexcept
{
    return resizeBy("ftruncate64", fd, size);
}

extern "C" int setxattr(const char *path, const char *name, const void *value, size_t size,
                        int flags) noexcept
{
    return onPath(Mark, "mark", absolute(AT_FDCWD, path), "", [&] {
        return systems<int (*)(const char *, const char *, const void *, size_t, int)>("setxattr")(
            path, name, value, size, flags);
    });
}
