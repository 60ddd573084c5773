#include "ui/LibraryGrid.h"
