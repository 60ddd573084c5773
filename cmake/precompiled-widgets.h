// Headers that nearly every file of the windows reaches and that never change.
#include "precompiled.h"

#include <QAction>
#include <QBoxLayout>
#include <QEvent>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QProperty>
#include <QWidget>
#include <qcorotask.h>
