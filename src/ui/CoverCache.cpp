#include "ui/CoverCache.h"
