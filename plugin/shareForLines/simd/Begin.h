// What is defined from here on, up to the next End.h, compiles to the wide instructions, and may be
// called only from code that does, too, or after instructionSet() has said that the processor has
// them. What other headers define does not, so include them before. (Clang is told by CMake.)
//
// Another set of the same width is another name in this line; twice the same sources for two sets
// want the namespaces of simd/ and fast/ to differ.
#ifndef __clang__
#pragma GCC push_options
#pragma GCC target("avx2")
#endif
