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

// How a process ends: its status, below 0 the signal, and what it wrote.
struct Outcome {
    int status;
    std::string text;
};

Main programMain = nullptr;
long* allocations = nullptr; // of the process that runs `main`, in memory that all share
bool isCounting = false;
long failing = 0; // the allocation that fails, 1 being the first of `main`; 0: none
bool isAlone = true;

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

// Runs `main` in a process of its own, its standard output going to a file or elsewhere.
Outcome run(int argc, char** argv, int elsewhere = -1) {
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
    return {WIFEXITED(status) && isRead ? WEXITSTATUS(status) : -WTERMSIG(status),
            std::regex_replace(text, time, "N ms")};
}

// The number of faults, 1 or 0. Nothing has happened, or it is said; the first faults are shown.
int check(Outcome const& outcome, Outcome const& whole, std::string const& what) {
    static std::regex const sentence("memory|space|cannot be read|cannot be written");
    static int shown = 0;
    bool const isSaid = outcome.status == std::atoi(std::getenv("HALVTYPES_SHORTAGE")) &&
                        std::regex_search(outcome.text, sentence);
    if (isSaid || (outcome.status == whole.status && outcome.text == whole.text)) {
        return 0;
    }
    if (++shown <= 3) {
        std::fprintf(stderr, "=== %s: status %d\n%s\n", what.c_str(), outcome.status,
                     outcome.text.c_str());
    }
    return 1;
}

int runAll(int argc, char** argv, char**) {
    allocations = static_cast<long*>(mmap(nullptr, sizeof *allocations, PROT_READ | PROT_WRITE,
                                          MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    Outcome const whole = run(argc, argv);
    long const count = *allocations;
    int faults = count > 0 ? 0 : 1;
    for (failing = 1; failing <= count; ++failing) {
        std::string const what = "allocation " + std::to_string(failing) + " failing ";
        isAlone = true;
        faults += check(run(argc, argv), whole, what + "alone");
        isAlone = false;
        faults += check(run(argc, argv), whole, what + "with all behind it");
    }
    failing = 0;
    faults += check(run(argc, argv, open("/dev/full", O_WRONLY)), {-1, ""}, "disk full");
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
