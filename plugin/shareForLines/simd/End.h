// Ends what Begin.h began.
#pragma GCC pop_options
