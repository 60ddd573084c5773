#pragma once

#include "ui/ProgressOverlay.h"

#include <QProperty>
#include <vector>

class LibraryViewModel;

/// Covers the library while its papers are retagged.
class RetaggingOverlay : public ProgressOverlay
{
    Q_OBJECT

public:
    RetaggingOverlay(LibraryViewModel &vm, QWidget *covered);

private:
    void showProgress();

    LibraryViewModel &m_vm;
    std::vector<QPropertyNotifier> m_observers;
};
