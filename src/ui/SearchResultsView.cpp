#include "ui/SearchResultsView.h"
