#include "ui/PaperDetailPanel.h"
