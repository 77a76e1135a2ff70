// Part of the library only when it is linked with -static-libstdc++. Its copy of the standard
// library numbers the facets of a locale as the program's does once streams are set up; else none
// of the program's streams would have the facets that the library asks for.
#include <ios>

static std::ios_base::Init const streams;
