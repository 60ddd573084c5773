#include "app/SidebarCounts.h"
