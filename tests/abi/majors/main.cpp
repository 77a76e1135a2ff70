// Loads the plugins named, each linked with a major version of its own, works with them and with
// what it is linked with itself, unloads them in both orders, and ends. A static that was taken
// down twice would end it with a signal.
#include "Component.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#if defined(HALVTYPES_IS_LINKED)
extern "C" Component const component;
#endif

namespace {

void expect(bool isRight, char const* why) {
    if (!isRight) {
        std::fprintf(stderr, "%s\n", why);
        std::exit(1);
    }
}

void run(char** paths, bool isReversed) {
    std::vector<void*> handles;
    std::vector<Component const*> parts;
#if defined(HALVTYPES_IS_LINKED)
    parts.push_back(&component);
#endif
    for (; *paths != nullptr; ++paths) {
        handles.push_back(dlopen(*paths, RTLD_NOW));
        expect(handles.back() != nullptr, *paths);
        parts.push_back(static_cast<Component const*>(dlsym(handles.back(), "component")));
    }
    for (auto const* part : parts) {
        expect(part->work(), "wrong results beside another major version");
    }
    expect(parts.size() == 2 && parts[0]->version != parts[1]->version &&
               parts[0]->empty != parts[1]->empty,
           "two major versions share their statics");
    isReversed ? std::reverse(handles.begin(), handles.end()) : void();
    std::for_each(handles.begin(), handles.end(), dlclose);
}

} // namespace

int main(int, char** argv) {
    run(argv + 1, false);
    run(argv + 1, true);
}
