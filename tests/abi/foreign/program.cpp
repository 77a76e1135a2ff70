#include <Halvora/Halvora.h>

int main() {}
