// quirevault-pdf-engine: reads one PDF on behalf of Quirevault, in a process that can do nothing else.
#include "engine/Server.h"

int main()
{
    return serveDocument();
}
