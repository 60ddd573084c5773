#include "app/LibraryViewModel.h"
