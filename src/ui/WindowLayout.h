#pragma once

#include <QList>
#include <QString>

class Preferences;
class QSplitter;
class QWidget;

// Preferences of the library window's layout.
inline constexpr char kLibraryGeometryKey[] = "libraryWindow/geometry"; ///< as Qt saves it, in Base64
inline constexpr char kLibraryWidthsKey[] = "libraryWindow/widths"; ///< of the panes in pixels, with commas
inline constexpr char kLibraryHiddenKey[] =
    "libraryWindow/hidden"; ///< names of the hidden panes, with commas

/// Remembers where the library window stood and how its panes shared it.
class WindowLayout
{
public:
    /// All must outlive the layout; `splitter` holds the window's panes, which have object names.
    WindowLayout(Preferences &preferences, QWidget *window, QSplitter *splitter);

    /// The window as it was left, or, for what is not known, as given.
    void restore(QSize size, const QList<int> &paneWidths);
    void save();

private:
    Preferences &m_preferences;
    QWidget *m_window;
    QSplitter *m_splitter;
    QList<int> m_widths; ///< a hidden pane has none of its own: what it had
};
