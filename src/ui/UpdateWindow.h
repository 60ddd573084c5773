#pragma once

#include "app/Updater.h"

#include <QDialog>
#include <QProperty>
#include <vector>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class ReleaseNotesView;

/// Shows how far the updater has come, what it found and what can be done about it. Follows its phase, and
/// closes when there is nothing left to say; closing it dismisses that.
class UpdateWindow : public QDialog
{
    Q_OBJECT

public:
    /// The updater must be there as long as the window is open.
    explicit UpdateWindow(Updater &updater, QWidget *parent = nullptr);

private:
    /// The buttons, each made once and shown in some phases.
    struct Buttons {
        QPushButton *skip = nullptr;
        QPushButton *later = nullptr;
        QPushButton *download = nullptr;
        QPushButton *cancel = nullptr;
        QPushButton *showInFolder = nullptr;
        QPushButton *openPackage = nullptr;
        QPushButton *tryAgain = nullptr;
        QPushButton *close = nullptr;
    };

    void layOut();
    QHBoxLayout *makeButtons();
    void follow();
    void showTexts();
    void showProgress();
    void showButtons();
    QList<QPushButton *> buttonsFor(UpdatePhase phase) const;
    void announce();

    Updater &m_updater;
    QLabel *m_heading;
    QLabel *m_text;
    ReleaseNotesView *m_notes;
    QProgressBar *m_bar;
    QLabel *m_count;
    QCheckBox *m_daily;
    Buttons m_buttons;
    std::vector<QPropertyNotifier> m_observers;
};

/// Shows the one update window over `parent` (null for none), or brings it forward; unasked it takes no
/// focus.
void showUpdateWindow(Updater &updater, Updater::Attention attention, QWidget *parent);
