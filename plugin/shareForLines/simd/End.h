// Ends what Begin.h began.
#ifndef __clang__
#pragma GCC pop_options
#endif
