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

struct Plan {
    long failing = 0; // the allocation that fails, 1 being the first of `main`; 0: none
    bool isAlone = true;
    bool isDiskFull = false;
};

struct Outcome {
    int status = 0; // below 0: ended by that signal
    std::string output;
    std::string errors;
    bool operator==(Outcome const& other) const {
        return status == other.status && output == other.output && errors == other.errors;
    }
};

using Main = int (*)(int, char**, char**);

Main programMain = nullptr;
bool isCounting = false;
Plan plan;
long* allocations = nullptr; // of the process that runs `main`, in memory that both see

// The C library crashes by itself when it cannot read a catalogue of messages: a program that uses
// them is tested without the allocations that the C library makes for itself.
bool isExempt(void const* caller) {
    Dl_info info;
    return std::getenv("HALVTYPES_SHORTAGE_SPARES_C") != nullptr && dladdr(caller, &info) != 0 &&
           std::strstr(info.dli_fname, "libc.so") != nullptr;
}

bool failsNow(void const* caller) {
    if (!isCounting) {
        return false;
    }
    long const n = ++*allocations;
    bool const isPlanned = plan.isAlone ? n == plan.failing : n >= plan.failing;
    return plan.failing != 0 && isPlanned && !isExempt(caller);
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

void describe(char const* name, Outcome const& outcome) {
    std::fprintf(stderr, "--- %s: status %d, standard output\n%s--- and standard error\n%s", name,
                 outcome.status, outcome.output.c_str(), outcome.errors.c_str());
}

// The runs of one program.
class Runs {
public:
    Runs(int argc, char** argv, char** environment)
        : m_argc(argc), m_argv(argv), m_environment(environment) {}

    int all() {
        m_whole = run({});
        long const count = *allocations;
        std::fprintf(stderr, "%s: %ld allocations\n", m_argv[0], count);
        for (long i = 1; i <= count; ++i) {
            check({i, true, false});
            check({i, false, false});
        }
        check({0, true, true});
        return m_faults == 0 && count > 0 ? 0 : 1;
    }

private:
    Outcome run(Plan const& planned) {
        *allocations = 0;
        pid_t const child = fork();
        if (child == 0) {
            int const output = planned.isDiskFull ? open("/dev/full", O_WRONLY) : m_output;
            dup2(output, STDOUT_FILENO);
            dup2(m_errors, STDERR_FILENO);
            plan = planned;
            isCounting = true;
            std::exit(programMain(m_argc, m_argv, m_environment));
        }
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), takeContent(m_output),
                takeContent(m_errors)};
    }

    void check(Plan const& planned) {
        Outcome const outcome = run(planned);
        bool const isSaid = outcome.status == std::atoi(std::getenv("HALVTYPES_SHORTAGE")) &&
                            !outcome.errors.empty() && outcome.errors.back() == '\n' &&
                            outcome.output == m_whole.output.substr(0, outcome.output.size());
        if (isSaid || (outcome == m_whole && !planned.isDiskFull)) {
            return;
        }
        if (++m_faults == 1) {
            describe("with enough memory", m_whole);
        }
        if (m_faults <= 3) {
            std::fprintf(stderr, "=== %s, allocation %ld failing%s\n",
                         planned.isDiskFull ? "disk full" : "memory short", planned.failing,
                         planned.isAlone ? " alone" : " with all behind it");
            describe("then", outcome);
        }
    }

    int m_argc;
    char** m_argv;
    char** m_environment;
    int m_output = memfd_create("output", 0);
    int m_errors = memfd_create("errors", 0);
    Outcome m_whole;
    int m_faults = 0;
};

int runAll(int argc, char** argv, char** environment) {
    allocations = static_cast<long*>(mmap(nullptr, sizeof *allocations, PROT_READ | PROT_WRITE,
                                          MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    int const status = Runs(argc, argv, environment).all();
    std::_Exit(status);
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
