#include "ui/ClaimKeys.h"

#include <QKeyEvent>
#include <algorithm>

bool claimKeys(QEvent *event, std::initializer_list<Qt::Key> keys)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (std::find(keys.begin(), keys.end(), key) == keys.end())
        return false;
    event->accept();
    return true;
}
