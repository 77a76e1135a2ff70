// Loaded before a program (LD_PRELOAD), it runs that program's `main` again and again, each time in
// a process of its own: with its first, second, ... allocation failing; with that one and all
// behind it failing; and with a full disk as standard output. Each has to end as if nothing had
// happened, or with a sentence and the status in HALVTYPES_SHORTAGE. The exit status is 0 if so.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <regex>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Main = int (*)(int, char**, char**);

Main programMain = nullptr;
long* allocations = nullptr; // of the process that runs `main`, in memory that all share
bool isCounting = false;
long failing = 0; // the allocation that fails, 1 being the first of `main`; 0: none
bool isAlone = true;
int faults = 0;

// The C library crashes by itself when it cannot read a catalogue of messages: a program that uses
// them is tested without the allocations that the C library makes for itself.
bool isExempt(void const* caller) {
    Dl_info info;
    return std::getenv("HALVTYPES_SHORTAGE_SPARES_C") != nullptr && dladdr(caller, &info) != 0 &&
           std::strstr(info.dli_fname, "libc.so") != nullptr;
}

bool failsNow(void const* caller) {
    long const n = isCounting ? ++*allocations : 0;
    bool const isPlanned = isAlone ? n == failing : n >= failing;
    return n != 0 && failing != 0 && isPlanned && !isExempt(caller);
}

// Runs `main` in a process of its own, its standard output going to a file or elsewhere. The
// status, or the signal below 0, and what was written.
std::string run(int argc, char** argv, int elsewhere = -1) {
    int const file = memfd_create("output", 0);
    *allocations = 0;
    if (fork() == 0) {
        lseek(STDIN_FILENO, 0, SEEK_SET);
        dup2(elsewhere >= 0 ? elsewhere : file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        isCounting = true;
        std::exit(programMain(argc, argv, environ));
    }
    int status = 0;
    wait(&status);
    std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    bool const isRead = pread(file, text.data(), text.size(), 0) >= 0;
    close(file);
    static std::regex const time("[0-9]+ ms");
    int const end = WIFEXITED(status) && isRead ? WEXITSTATUS(status) : -WTERMSIG(status);
    return std::to_string(end) + ": " + std::regex_replace(text, time, "N ms");
}

// Nothing has happened, or it is said; the first faults are shown.
void check(std::string const& outcome, std::string const& whole, std::string const& what) {
    static std::string const shortage = std::getenv("HALVTYPES_SHORTAGE") + std::string(": ");
    static std::regex const sentence("memory|space|cannot be read|cannot be written");
    bool const isSaid = outcome.rfind(shortage, 0) == 0 && std::regex_search(outcome, sentence);
    if (!isSaid && outcome != whole && ++faults <= 3) {
        std::fprintf(stderr, "=== %s: status %s\n", what.c_str(), outcome.c_str());
    }
}

int runAll(int argc, char** argv, char**) {
    allocations = static_cast<long*>(mmap(nullptr, sizeof *allocations, PROT_READ | PROT_WRITE,
                                          MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    std::string const whole = run(argc, argv);
    long const count = *allocations;
    faults = count > 0 ? 0 : 1;
    for (failing = 1; failing <= count; ++failing) {
        std::string const what = "allocation " + std::to_string(failing) + " failing ";
        isAlone = true;
        check(run(argc, argv), whole, what + "alone");
        isAlone = false;
        check(run(argc, argv), whole, what + "with all behind it");
    }
    failing = 0;
    check(run(argc, argv, open("/dev/full", O_WRONLY)), "", "disk full");
    std::_Exit(faults == 0 ? 0 : 1);
}

} // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) noexcept {
    return failsNow(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return failsNow(__builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept {
    return failsNow(__builtin_return_address(0)) ? nullptr : __libc_realloc(block, size);
}

// Called by a program's entry; everything is loaded and set up by then.
int __libc_start_main(Main main, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*unload)(), void* stackEnd) {
    programMain = main;
    auto const start =
        reinterpret_cast<decltype(&__libc_start_main)>(dlsym(RTLD_NEXT, "__libc_start_main"));
    return start(runAll, argc, argv, init, fini, unload, stackEnd);
}
}
