#pragma once

#include <QEventLoop>
#include <QProperty>

/// Runs the event loop until `isThere()`, asked whenever the property changes.
template <typename T, typename Condition> void awaitThat(QProperty<T> &property, const Condition &isThere)
{
    QEventLoop loop;
    const auto observer = property.addNotifier([&] {
        if (isThere())
            loop.quit();
    });
    if (!isThere())
        loop.exec();
}

/// Runs the event loop until the property has the value.
template <typename T> void awaitValue(QProperty<T> &property, const T &value)
{
    awaitThat(property, [&] { return property.value() == value; });
}
