#pragma once

#include "ui/ProgressOverlay.h"

#include <QProperty>
#include <vector>

class LibraryViewModel;
class QPushButton;

/// Covers the library while an import runs, and offers to stop it.
class IndexingOverlay : public ProgressOverlay
{
    Q_OBJECT

public:
    IndexingOverlay(LibraryViewModel &vm, QWidget *covered);

protected:
    QWidget *focusTarget() override;

private:
    void observe();
    void showProgress();
    void showStatus();
    void showCancelling();

    LibraryViewModel &m_vm;
    QLabel *m_status;
    QLabel *m_estimate;
    QPushButton *m_cancel;
    std::vector<QPropertyNotifier> m_observers;
};
