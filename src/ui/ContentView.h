#pragma once

#include "reader/PDFOpenRequest.h"
#include "ui/WindowLayout.h"

#include <QMainWindow>
#include <QProperty>
#include <functional>
#include <vector>

class ClosingQuestion;
class CoverCache;
class DragWatcher;
class FileDropTarget;
class LibraryAlertsModifier;
class LibraryCommands;
class LibraryView;
class LibraryViewModel;
class PaperDetailPanel;
class Preferences;
class QSplitter;
class QToolBar;
class Sidebar;
class TagAlerts;
class WindowCommands;

/// The library window: sidebar, search field with grid or results, and detail panel, with menus, toolbar,
/// alerts and overlays. It shows the view model's state and calls its operations.
class ContentView : public QMainWindow
{
    Q_OBJECT

public:
    /// All must outlive the window.
    struct Collaborators {
        LibraryViewModel &vm;
        LibraryCommands &commands;
        CoverCache &covers;
        Preferences &preferences; ///< remembers the window's layout
        OpenReaderWindow openWindow;
        /// Whether the window is being closed because the program ends.
        std::function<bool()> isQuitting = [] {
            return false;
        };
    };
    explicit ContentView(Collaborators collaborators, QWidget *parent = nullptr);
    ~ContentView() override;

Q_SIGNALS:
    /// The person closed the window (an import that runs has been asked about).
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addPanes();
    void addOverlays();
    void connectPanes();
    void connectCommands();
    void connectCards();
    void connectDrags();
    void editDetails(void (PaperDetailPanel::*edit)());
    void lockToolBar();
    void tellFocus();

    LibraryViewModel &m_vm;
    LibraryCommands &m_commands;
    const std::function<bool()> m_isQuitting;
    WindowCommands *m_windowCommands;
    QToolBar *m_toolBar;
    QSplitter *m_panes;
    Sidebar *m_sidebar;
    LibraryView *m_library;
    PaperDetailPanel *m_details;
    FileDropTarget *m_dropTarget;
    TagAlerts *m_tagAlerts;
    LibraryAlertsModifier *m_alerts;
    WindowLayout m_layout;
    ClosingQuestion *m_closingQuestion;
    DragWatcher *m_drags;
    bool m_wasShown = false;
    std::vector<QPropertyNotifier> m_observers;
};
