#pragma once

#include "screenshots/Camera.h"

class QWidget;

/// Takes a picture of each state of the update window over `window`, from a server on this machine.
void takeUpdateStates(QWidget *window, Camera &camera);
