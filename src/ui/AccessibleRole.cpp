#include "ui/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace
{
constexpr char kRoleProperty[] = "accessibleRole";

QAccessibleInterface *interfaceWithRole(const QString &, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    if (widget == nullptr)
        return nullptr;
    const QVariant role = widget->property(kRoleProperty);
    return role.isValid() ? new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()))
                          : nullptr;
}
} // namespace

void setAccessibleRole(QWidget &widget, QAccessible::Role role)
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(&interfaceWithRole);
        return true;
    }();
    widget.setProperty(kRoleProperty, static_cast<int>(role));
}
