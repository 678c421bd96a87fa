// A library that is loaded ahead of a program's own and makes one of its allocations or system
// calls fail, counted from the start of its main function. The environment says which:
//
//   FAULT_EARLY    when it is set, what comes before the main function counts as well
//   FAULT_KIND     "alloc" or "call"
//   FAULT_AT       the number of the one that fails, from 1; 0 or absent: none
//   FAULT_LASTING  when it is set, all behind it fail as well
//   FAULT_ERROR    the error number of a call that fails
//   FAULT_SIGNAL   in place of an error: the signal that the process gets in front of the call
//   FAULT_COUNT    a file to which the number of allocations or calls goes at the end

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);
}

namespace {

enum class Kind { None, Alloc, Call };

enum class State { Asleep, Armed, Done };

std::atomic<State> state = State::Asleep;
std::atomic<long> counted = 0;
Kind kind = Kind::None;
long failing = 0;
bool isLasting = false;
int errorNumber = 0;
int signalNumber = 0;

long NumberIn(const char* name) {
    const char* const text = getenv(name);
    return text != nullptr ? atol(text) : 0;
}

void Arm() {
    const char* const text = getenv("FAULT_KIND");
    if (text != nullptr) kind = strcmp(text, "alloc") == 0 ? Kind::Alloc : Kind::Call;
    failing = NumberIn("FAULT_AT");
    isLasting = getenv("FAULT_LASTING") != nullptr;
    errorNumber = static_cast<int>(NumberIn("FAULT_ERROR"));
    signalNumber = static_cast<int>(NumberIn("FAULT_SIGNAL"));
    state = State::Armed;
}

bool Fails(Kind what) {
    if (state == State::Asleep && getenv("FAULT_EARLY") != nullptr) Arm();
    if (state != State::Armed || what != kind) return false;
    const long number = ++counted;
    if (failing == 0 || number < failing || (number > failing && !isLasting)) return false;
    if (signalNumber == 0) return true;
    raise(signalNumber);
    return false;
}

template <class Function>
Function Next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool CallFails() {
    if (!Fails(Kind::Call)) return false;
    errno = errorNumber;
    return true;
}

bool AllocFails() {
    if (!Fails(Kind::Alloc)) return false;
    errno = ENOMEM;
    return true;
}

__attribute__((destructor)) void Report() {
    state = State::Done;
    const char* const path = getenv("FAULT_COUNT");
    if (path == nullptr) return;
    char text[32];
    const int length = snprintf(text, sizeof text, "%ld", counted.load());
    const long file = syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    syscall(SYS_write, file, text, length);
    syscall(SYS_close, file);
}

int (*programsMain)(int, char**, char**);

int ArmedMain(int argc, char** argv, char** environment) {
    if (state == State::Asleep) Arm();
    return programsMain(argc, argv, environment);
}

}  // namespace

#define NEXT(name) static const auto next = Next<decltype(&name)>(#name)

extern "C" {

int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv, void (*init)(),
                      void (*fini)(), void (*ldFini)(), void* stackEnd) {
    programsMain = main;
    using Start = int (*)(int (*)(int, char**, char**), int, char**, void (*)(), void (*)(),
                          void (*)(), void*);
    return Next<Start>("__libc_start_main")(ArmedMain, argc, argv, init, fini, ldFini, stackEnd);
}

void* malloc(size_t size) {
    return AllocFails() ? nullptr : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    return AllocFails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, size_t size) {
    return AllocFails() ? nullptr : __libc_realloc(block, size);
}
void* aligned_alloc(size_t alignment, size_t size) {
    return AllocFails() ? nullptr : __libc_memalign(alignment, size);
}
void* memalign(size_t alignment, size_t size) {
    return AllocFails() ? nullptr : __libc_memalign(alignment, size);
}
int posix_memalign(void** block, size_t alignment, size_t size) {
    if (AllocFails()) return ENOMEM;
    *block = __libc_memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

int open(const char* path, int flags, ...) {
    va_list list;
    va_start(list, flags);
    const mode_t mode = va_arg(list, mode_t);
    va_end(list);
    if (CallFails()) return -1;
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
int open64(const char* path, int flags, ...) {
    va_list list;
    va_start(list, flags);
    const mode_t mode = va_arg(list, mode_t);
    va_end(list);
    return open(path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...) {
    va_list list;
    va_start(list, flags);
    const mode_t mode = va_arg(list, mode_t);
    va_end(list);
    if (CallFails()) return -1;
    return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}
int mkostemp(char* path, int flags) {
    NEXT(mkostemp);
    return CallFails() ? -1 : next(path, flags);
}
int pipe(int ends[2]) {
    NEXT(pipe);
    return CallFails() ? -1 : next(ends);
}
int pipe2(int ends[2], int flags) {
    NEXT(pipe2);
    return CallFails() ? -1 : next(ends, flags);
}
int dup(int descriptor) {
    NEXT(dup);
    return CallFails() ? -1 : next(descriptor);
}
int dup2(int from, int to) {
    NEXT(dup2);
    return CallFails() ? -1 : next(from, to);
}
int fcntl(int descriptor, int command, ...) {
    va_list list;
    va_start(list, command);
    void* const argument = va_arg(list, void*);
    va_end(list);
    if (CallFails()) return -1;
    return static_cast<int>(syscall(SYS_fcntl, descriptor, command, argument));
}
int fcntl64(int descriptor, int command, ...) {
    va_list list;
    va_start(list, command);
    void* const argument = va_arg(list, void*);
    va_end(list);
    return fcntl(descriptor, command, argument);
}
FILE* fopen(const char* path, const char* mode) {
    NEXT(fopen);
    return CallFails() ? nullptr : next(path, mode);
}
FILE* fopen64(const char* path, const char* mode) {
    NEXT(fopen64);
    return CallFails() ? nullptr : next(path, mode);
}
ssize_t read(int descriptor, void* buffer, size_t size) {
    NEXT(read);
    return CallFails() ? -1 : next(descriptor, buffer, size);
}
size_t fread(void* buffer, size_t size, size_t count, FILE* file) {
    NEXT(fread);
    if (!CallFails()) return next(buffer, size, count, file);
    constexpr int kErrorSeen = 0x20;  // of the C library
    file->_flags |= kErrorSeen;
    return 0;
}
ssize_t pread(int descriptor, void* buffer, size_t size, off_t at) {
    NEXT(pread);
    return CallFails() ? -1 : next(descriptor, buffer, size, at);
}
ssize_t write(int descriptor, const void* bytes, size_t size) {
    NEXT(write);
    return CallFails() ? -1 : next(descriptor, bytes, size);
}
ssize_t writev(int descriptor, const iovec* parts, int count) {
    NEXT(writev);
    return CallFails() ? -1 : next(descriptor, parts, count);
}
int close(int descriptor) {
    NEXT(close);
    const bool fails = CallFails();
    const int number = errno;
    const int result = next(descriptor);
    if (!fails) return result;
    errno = number;
    return -1;
}
int fclose(FILE* file) {
    NEXT(fclose);
    const bool fails = CallFails();
    const int number = errno;
    const int result = next(file);
    if (!fails) return result;
    errno = number;
    return EOF;
}
int stat(const char* path, struct stat* status) {
    NEXT(stat);
    return CallFails() ? -1 : next(path, status);
}
int lstat(const char* path, struct stat* status) {
    NEXT(lstat);
    return CallFails() ? -1 : next(path, status);
}
int fstat(int descriptor, struct stat* status) {
    NEXT(fstat);
    return CallFails() ? -1 : next(descriptor, status);
}
int statx(int folder, const char* path, int flags, unsigned int wanted, struct statx* status) {
    NEXT(statx);
    return CallFails() ? -1 : next(folder, path, flags, wanted, status);
}
int fstatat(int folder, const char* path, struct stat* status, int flags) {
    NEXT(fstatat);
    return CallFails() ? -1 : next(folder, path, status, flags);
}
ssize_t readlink(const char* path, char* text, size_t size) {
    NEXT(readlink);
    return CallFails() ? -1 : next(path, text, size);
}
char* getcwd(char* text, size_t size) {
    NEXT(getcwd);
    return CallFails() ? nullptr : next(text, size);
}
int access(const char* path, int permission) {
    NEXT(access);
    return CallFails() ? -1 : next(path, permission);
}
int faccessat(int folder, const char* path, int permission, int flags) {
    NEXT(faccessat);
    return CallFails() ? -1 : next(folder, path, permission, flags);
}
int linkat(int from, const char* path, int to, const char* newPath, int flags) {
    NEXT(linkat);
    return CallFails() ? -1 : next(from, path, to, newPath, flags);
}
int rename(const char* from, const char* to) {
    NEXT(rename);
    return CallFails() ? -1 : next(from, to);
}
int unlink(const char* path) {
    NEXT(unlink);
    return CallFails() ? -1 : next(path);
}
int flock(int descriptor, int operation) {
    NEXT(flock);
    return CallFails() ? -1 : next(descriptor, operation);
}
int chmod(const char* path, mode_t mode) {
    NEXT(chmod);
    return CallFails() ? -1 : next(path, mode);
}
ssize_t getxattr(const char* path, const char* name, void* value, size_t size) {
    NEXT(getxattr);
    return CallFails() ? -1 : next(path, name, value, size);
}
ssize_t fgetxattr(int descriptor, const char* name, void* value, size_t size) {
    NEXT(fgetxattr);
    return CallFails() ? -1 : next(descriptor, name, value, size);
}
int fsetxattr(int descriptor, const char* name, const void* value, size_t size, int flags) {
    NEXT(fsetxattr);
    return CallFails() ? -1 : next(descriptor, name, value, size, flags);
}
int fremovexattr(int descriptor, const char* name) {
    NEXT(fremovexattr);
    return CallFails() ? -1 : next(descriptor, name);
}
int fchown(int descriptor, uid_t owner, gid_t group) {
    NEXT(fchown);
    return CallFails() ? -1 : next(descriptor, owner, group);
}
int fchmod(int descriptor, mode_t mode) {
    NEXT(fchmod);
    return CallFails() ? -1 : next(descriptor, mode);
}
off_t lseek(int descriptor, off_t offset, int from) {
    NEXT(lseek);
    return CallFails() ? -1 : next(descriptor, offset, from);
}
off64_t lseek64(int descriptor, off64_t offset, int from) {
    NEXT(lseek64);
    return CallFails() ? -1 : next(descriptor, offset, from);
}
int fallocate(int descriptor, int mode, off_t offset, off_t size) {
    NEXT(fallocate);
    return CallFails() ? -1 : next(descriptor, mode, offset, size);
}
int ftruncate(int descriptor, off_t size) {
    NEXT(ftruncate);
    return CallFails() ? -1 : next(descriptor, size);
}
int poll(pollfd* waiting, nfds_t count, int milliseconds) {
    NEXT(poll);
    return CallFails() ? -1 : next(waiting, count, milliseconds);
}
int fsync(int descriptor) {
    NEXT(fsync);
    return CallFails() ? -1 : next(descriptor);
}
int mkdir(const char* path, mode_t mode) {
    NEXT(mkdir);
    return CallFails() ? -1 : next(path, mode);
}

}  // extern "C"
