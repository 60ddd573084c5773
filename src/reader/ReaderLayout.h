#pragma once

#include <QSize>

class PDFKitView;
class Preferences;
class QSplitter;
class QWidget;
class ReaderSidebar;

/// Remembers how a person likes reader windows: their size, the sidebar and dark pages.
class ReaderLayout
{
public:
    struct Parts {
        QWidget *window;
        QSplitter *splitter; ///< sidebar and pages
        ReaderSidebar *sidebar;
        PDFKitView *view;
    };
    /// All must outlive the layout.
    ReaderLayout(Preferences &preferences, const Parts &parts);

    void restore();
    void save() const;
    /// Shows or hides the sidebar; its width stays.
    void showSidebar(bool isShown);
    bool isSidebarShown() const { return m_isSidebarShown; }

    /// What was remembered (any text), as far as a screen of that size has room for it.
    static QSize windowSizeFrom(const QString &remembered, QSize screen);
    static int sidebarWidthFrom(const QString &remembered, QSize screen);

private:
    int sidebarWidth() const;

    Preferences &m_preferences;
    Parts m_parts;
    bool m_isSidebarShown = true;
    int m_sidebarWidth;
};
