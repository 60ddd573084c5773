// The composition root of the program `quirevault-search-provider`.
#include "searchprovider/SearchProviderProgram.h"

int main(int argc, char **argv)
{
    return runSearchProvider(argc, argv);
}
