#include <Halvora/text/HLVString.h>

#if defined(__GLIBCXX__)
// The one copy of the members that every user of the header links against.
template class std::basic_string<unsigned short>;
#endif
