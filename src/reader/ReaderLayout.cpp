#include "reader/ReaderLayout.h"

#include "base/DecimalInteger.h"
#include "platform/Preferences.h"
#include "reader/PDFKitView.h"
#include "reader/ReaderSidebar.h"

#include <QScreen>
#include <QSplitter>
#include <algorithm>

namespace
{
constexpr char kWindowSizeKey[] = "readerWindowSize";     // "1100x900"
constexpr char kSidebarWidthKey[] = "readerSidebarWidth"; // in pixels
constexpr char kSidebarKey[] = "readerSidebar";           // "shown" or "hidden"
constexpr char kPagesKey[] = "readerPages";               // "light" or "dark"

/// Until a person changes it: a letter page at the width of its text beside the sidebar.
constexpr QSize kWindowSize(1100, 900);
constexpr int kLeastSidebarWidth = 160;
} // namespace

ReaderLayout::ReaderLayout(Preferences &preferences, const Parts &parts)
    : m_preferences(preferences)
    , m_parts(parts)
    , m_sidebarWidth(ReaderSidebar::kWidth)
{
    parts.sidebar->setMinimumWidth(kLeastSidebarWidth);
    parts.splitter->setStretchFactor(0, 0);
    parts.splitter->setStretchFactor(1, 1);
    parts.splitter->setCollapsible(0, false);
    parts.splitter->setCollapsible(1, false);
}

void ReaderLayout::restore()
{
    const auto text = [this](const char *key) {
        return m_preferences.text(QLatin1String(key)).value_or(QString());
    };
    const QSize screen = m_parts.window->screen()->availableSize();
    m_parts.window->resize(windowSizeFrom(text(kWindowSizeKey), screen));
    m_sidebarWidth = sidebarWidthFrom(text(kSidebarWidthKey), screen);
    m_parts.splitter->setSizes({m_sidebarWidth, m_parts.window->width() - m_sidebarWidth});
    showSidebar(text(kSidebarKey) != u"hidden");
    m_parts.view->setDarkMode(text(kPagesKey) == u"dark");
}

QSize ReaderLayout::windowSizeFrom(const QString &remembered, QSize screen)
{
    const qint64 width = decimalInteger(remembered.section(u'x', 0, 0)).value_or(0);
    const qint64 height = decimalInteger(remembered.section(u'x', 1)).value_or(0);
    if (width < 1 || height < 1)
        return kWindowSize.boundedTo(screen);
    return {int(std::min<qint64>(width, screen.width())), int(std::min<qint64>(height, screen.height()))};
}

int ReaderLayout::sidebarWidthFrom(const QString &remembered, QSize screen)
{
    const qint64 width = decimalInteger(remembered).value_or(ReaderSidebar::kWidth);
    const int most = std::max(kLeastSidebarWidth, screen.width() / 2);
    return int(std::clamp<qint64>(width, kLeastSidebarWidth, most));
}

int ReaderLayout::sidebarWidth() const
{
    return m_isSidebarShown ? m_parts.splitter->sizes().first() : m_sidebarWidth;
}

void ReaderLayout::save() const
{
    const auto set = [this](const char *key, const QString &value) {
        if (m_preferences.text(QLatin1String(key)) != value)
            m_preferences.setText(QLatin1String(key), value);
    };
    const QSize size = m_parts.window->size();
    if (!m_parts.window->isFullScreen() && !m_parts.window->isMaximized())
        set(kWindowSizeKey, QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
    set(kSidebarWidthKey, QString::number(sidebarWidth()));
    set(kSidebarKey, m_isSidebarShown ? QStringLiteral("shown") : QStringLiteral("hidden"));
    set(kPagesKey, m_parts.view->isDarkMode() ? QStringLiteral("dark") : QStringLiteral("light"));
}

void ReaderLayout::showSidebar(bool isShown)
{
    m_sidebarWidth = sidebarWidth();
    m_isSidebarShown = isShown;
    m_parts.sidebar->setVisible(isShown);
}
