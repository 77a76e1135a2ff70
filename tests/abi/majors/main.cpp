// Loads the plugins named, each linked with a major version of its own, works with them and with
// what it is linked with itself, unloads them in both orders, and ends. A static that was taken
// down twice would end it with a signal.
#include "Component.h"

#include <dlfcn.h>

#include <cstdio>
#include <string>
#include <vector>

#if defined(HALVTYPES_IS_LINKED)
extern "C" Component const component;
#endif

namespace {

int failed(std::string const& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

bool shareNothing(Component const& a, Component const& b) {
    return a.version != b.version && a.empty != b.empty;
}

int run(std::vector<std::string> const& paths, bool isReversed) {
    std::vector<void*> handles;
    std::vector<Component const*> parts;
#if defined(HALVTYPES_IS_LINKED)
    parts.push_back(&component);
#endif
    for (auto const& path : paths) {
        handles.push_back(dlopen(path.c_str(), RTLD_NOW));
        if (handles.back() == nullptr) {
            return failed(dlerror());
        }
        parts.push_back(static_cast<Component const*>(dlsym(handles.back(), "component")));
    }
    for (auto const* part : parts) {
        if (!part->work()) {
            return failed("wrong results beside another major version");
        }
    }
    if (parts.size() != 2 || !shareNothing(*parts[0], *parts[1])) {
        return failed("two major versions share their statics");
    }
    while (!handles.empty()) {
        auto const at = isReversed ? handles.end() - 1 : handles.begin();
        dlclose(*at);
        handles.erase(at);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> const paths(argv + 1, argv + argc);
    int const first = run(paths, false);
    return first != 0 ? first : run(paths, true);
}
