#pragma once

#include <Qt>
#include <initializer_list>

class QEvent;

/// Keeps the window's shortcuts from taking one of `keys` from the widget that has the focus. Call it from
/// `event`; true when the event was the question whether a shortcut may have the key, and is answered.
bool claimKeys(QEvent *event, std::initializer_list<Qt::Key> keys);
