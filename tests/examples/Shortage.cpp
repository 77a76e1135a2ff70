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
    std::string output, errors;
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

std::string takeContent(int file) {
    std::string content(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    if (pread(file, content.data(), content.size(), 0) < 0 || ftruncate(file, 0) != 0) {
        std::abort();
    }
    lseek(file, 0, SEEK_SET);
    static std::regex const time("[0-9]+ ms");
    return std::regex_replace(content, time, "N ms");
}

// Runs `main` in a process of its own, its standard output going to a file or elsewhere.
Outcome run(int argc, char** argv, int elsewhere = -1) {
    static int const output = memfd_create("output", 0);
    static int const errors = memfd_create("errors", 0);
    *allocations = 0;
    pid_t const child = fork();
    if (child == 0) {
        dup2(elsewhere >= 0 ? elsewhere : output, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        lseek(STDIN_FILENO, 0, SEEK_SET);
        isCounting = true;
        std::exit(programMain(argc, argv, environ));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), takeContent(output),
            takeContent(errors)};
}

// Whether it says what was short, behind nothing or the start of what it should have written.
bool isSaid(Outcome const& outcome, Outcome const& whole) {
    static std::regex const sentence("memory|space|cannot be read|cannot be written");
    return outcome.status == std::atoi(std::getenv("HALVTYPES_SHORTAGE")) &&
           std::regex_search(outcome.errors, sentence) &&
           outcome.output == whole.output.substr(0, outcome.output.size());
}

bool isWhole(Outcome const& outcome, Outcome const& whole) {
    return outcome.status == whole.status && outcome.output == whole.output &&
           outcome.errors == whole.errors;
}

// The number of faults, 1 or 0; the first ones are shown.
int report(bool isGood, std::string const& what, Outcome const& outcome) {
    static int shown = 0;
    if (!isGood && ++shown <= 3) {
        std::fprintf(stderr, "=== %s: status %d\n%s--- standard error\n%s", what.c_str(),
                     outcome.status, outcome.output.c_str(), outcome.errors.c_str());
    }
    return isGood ? 0 : 1;
}

int runAll(int argc, char** argv, char**) {
    allocations = static_cast<long*>(mmap(nullptr, sizeof *allocations, PROT_READ | PROT_WRITE,
                                          MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    Outcome const whole = run(argc, argv);
    long const count = *allocations;
    int faults = report(count != 0, "no allocation is counted", whole);
    for (failing = 1; failing <= count; ++failing) {
        for (bool const alone : {true, false}) {
            isAlone = alone;
            Outcome const outcome = run(argc, argv);
            faults += report(isSaid(outcome, whole) || isWhole(outcome, whole),
                             "allocation " + std::to_string(failing) + " failing" +
                                 (alone ? " alone" : " with all behind it"),
                             outcome);
        }
    }
    failing = 0;
    Outcome const outcome = run(argc, argv, open("/dev/full", O_WRONLY));
    faults += report(isSaid(outcome, whole), "disk full", outcome);
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
