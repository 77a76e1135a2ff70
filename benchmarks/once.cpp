// Runs a program once and prints what that took: microseconds of the processor, pages touched.

#include <cstdio>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char** argv) {
    pid_t program;
    int status;
    rusage used;
    if (argc < 2 || posix_spawn(&program, argv[1], nullptr, nullptr, argv + 1, environ) != 0 ||
        wait4(program, &status, 0, &used) != program || status != 0) {
        return 1;
    }
    long seconds = used.ru_utime.tv_sec + used.ru_stime.tv_sec;
    long microseconds = used.ru_utime.tv_usec + used.ru_stime.tv_usec;
    return std::printf("%ld %ld\n", 1000000 * seconds + microseconds, used.ru_minflt) < 0;
}
