#include "ui/PaperListModel.h"
