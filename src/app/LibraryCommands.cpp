#include "app/LibraryCommands.h"
