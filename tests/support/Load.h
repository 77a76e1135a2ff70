#pragma once

// POSIX's names for loading a library at run time.
#if defined(_WIN32)
#    include <windows.h>

enum { RTLD_NOW, RTLD_LOCAL = 0 };
inline HMODULE dlopen(char const* file, int) {
    return LoadLibraryA(file);
}
inline void* dlsym(void* library, char const* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
inline int dlclose(void* library) {
    return FreeLibrary(static_cast<HMODULE>(library)) ? 0 : 1;
}
inline DWORD dlerror() {
    return GetLastError();
}
#else
#    include <dlfcn.h>
#endif
