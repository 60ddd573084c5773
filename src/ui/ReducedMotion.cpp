#include "ui/ReducedMotion.h"

#include <QApplication>
#include <QStyle>

bool prefersReducedMotion()
{
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
}
