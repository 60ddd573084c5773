#include "ui/ClosingQuestion.h"

#include "app/LibraryViewModel.h"
#include "ui/Alert.h"

#include <QPushButton>

ClosingQuestion::ClosingQuestion(LibraryViewModel &vm, QWidget *window)
    : QObject(window)
    , m_vm(vm)
    , m_window(window)
    , m_observer(vm.isImporting.addNotifier([this] {
        m_isConfirmed = false;
        if (m_box)
            m_box->reject();
    }))
{
}

bool ClosingQuestion::mayClose(std::function<void()> closeAgain)
{
    if (!m_vm.isImporting || m_isConfirmed)
        return true;
    m_closeAgain = std::move(closeAgain);
    if (!m_box)
        ask();
    return false;
}

void ClosingQuestion::ask()
{
    m_box =
        Alert::make({.name = QStringLiteral("stopImportAlert"),
                     .title = QStringLiteral("Stop the Import?"),
                     .message = QStringLiteral("An import is running. The files indexed so far stay in the "
                                               "library; the others are not added.")},
                    QMessageBox::Question, m_window);
    QPushButton *stop = m_box->addButton(QStringLiteral("Stop and Close"), QMessageBox::DestructiveRole);
    QPushButton *keep = m_box->addButton(QStringLiteral("Keep Importing"), QMessageBox::RejectRole);
    m_box->setDefaultButton(keep);
    m_box->setEscapeButton(keep);
    connect(stop, &QPushButton::clicked, this, [this] {
        m_isConfirmed = true;
        m_vm.cancelImport();
        // Not now: the click is still the box's.
        QMetaObject::invokeMethod(m_window, m_closeAgain, Qt::QueuedConnection);
    });
    m_box->open();
}
