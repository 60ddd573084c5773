#pragma once

#include "store/IndexFilesResponse.h"
#include "store/Paper.h"
#include "ui/FieldAlert.h"

#include <QObject>
#include <QPointer>
#include <vector>

class ImportPicker;
class LibraryViewModel;

/// Shows what the view model wants said or asked: an alert each for an error, the outcome of an import or a
/// retag and the removal of a paper, and the sheet that reviews an import.
class LibraryAlertsModifier : public QObject
{
    Q_OBJECT

public:
    /// Alerts open over `window`, which owns this.
    LibraryAlertsModifier(LibraryViewModel &vm, QWidget *window);

    /// Shows what was there to say before the window was.
    void showPending();

private:
    void showImportPicker();

    LibraryViewModel &m_vm;
    QWidget *m_window;
    FieldAlert<QString> m_notice;
    FieldAlert<IndexFilesResponse> m_importComplete;
    FieldAlert<QString> m_retagComplete;
    FieldAlert<Paper> m_confirmDelete;
    QPointer<ImportPicker> m_picker;
    std::vector<QPropertyNotifier> m_observers;
};
