#include "ui/ContentView.h"
