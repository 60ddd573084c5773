#pragma once

#include <QAccessible>

class QWidget;

/// Gives `widget` a role for screen readers other than the one its class has. Call it when the widget is
/// made.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);
