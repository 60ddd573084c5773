#include "ui/WindowLayout.h"

#include "platform/Preferences.h"

#include <QSplitter>
#include <QWidget>

namespace
{
QStringList listIn(const Preferences &preferences, const char *key)
{
    return preferences.text(QLatin1String(key)).value_or(QString()).split(u',', Qt::SkipEmptyParts);
}

/// The widths that were saved, when they are ones: `count` whole numbers above 0.
QList<int> savedWidths(const Preferences &preferences, int count)
{
    QList<int> widths;
    const QStringList texts = listIn(preferences, kLibraryWidthsKey);
    for (const QString &text : texts)
        widths.append(text.toInt());
    return widths.size() == count && !widths.contains(0) ? widths : QList<int>();
}
} // namespace

WindowLayout::WindowLayout(Preferences &preferences, QWidget *window, QSplitter *splitter)
    : m_preferences(preferences)
    , m_window(window)
    , m_splitter(splitter)
{
}

void WindowLayout::restore(QSize size, const QList<int> &paneWidths)
{
    m_window->resize(size);
    const QString geometry = m_preferences.text(QLatin1String(kLibraryGeometryKey)).value_or(QString());
    m_window->restoreGeometry(QByteArray::fromBase64(geometry.toLatin1()));

    const QList<int> saved = savedWidths(m_preferences, m_splitter->count());
    m_widths = saved.isEmpty() ? paneWidths : saved;
    m_splitter->setSizes(m_widths);
    const QStringList hidden = listIn(m_preferences, kLibraryHiddenKey);
    for (int pane = 0; pane < m_splitter->count(); ++pane)
        m_splitter->widget(pane)->setHidden(hidden.contains(m_splitter->widget(pane)->objectName()));
}

void WindowLayout::save()
{
    QStringList widths;
    QStringList hidden;
    const QList<int> sizes = m_splitter->sizes();
    for (int pane = 0; pane < m_splitter->count(); ++pane) {
        if (sizes.at(pane) > 0)
            m_widths[pane] = sizes.at(pane);
        if (m_splitter->widget(pane)->isHidden())
            hidden.append(m_splitter->widget(pane)->objectName());
        widths.append(QString::number(m_widths.at(pane)));
    }
    m_preferences.setText(QLatin1String(kLibraryGeometryKey),
                          QString::fromLatin1(m_window->saveGeometry().toBase64()));
    m_preferences.setText(QLatin1String(kLibraryWidthsKey), widths.join(u','));
    m_preferences.setText(QLatin1String(kLibraryHiddenKey), hidden.join(u','));
}
