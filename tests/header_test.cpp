// The same program as C++20 sees it.
#include "header_test.c"
