/* Loads the library at run time and reads a number: load LIBRARY */
#include <dlfcn.h>
#include <orvex/parse.h>
#include <stdio.h>

int main(int argc, char **argv)
{
    int32_t value = 0;
    void *const library = argc == 2 ? dlopen(argv[1], RTLD_NOW) : NULL;
    if (library == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    const __typeof__(&parse_integer) parse = (__typeof__(&parse_integer))dlsym(library, "parse_integer");
    return parse != NULL && parse("0x1f", &value) == 0 && value == 31 && dlclose(library) == 0 ? 0 : 2;
}
