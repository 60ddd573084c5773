#include "ui/IndexingOverlay.h"

#include "app/LibraryViewModel.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

IndexingOverlay::IndexingOverlay(LibraryViewModel &vm, QWidget *covered)
    : ProgressOverlay(QStringLiteral("Indexing Library..."), covered)
    , m_vm(vm)
    , m_status(addLine(QStringLiteral("importStatus")))
    , m_estimate(addLine(QStringLiteral("importEstimate")))
    , m_cancel(new QPushButton(this))
{
    setObjectName(QStringLiteral("indexingOverlay"));
    m_cancel->setObjectName(QStringLiteral("cancelImport"));
    m_cancel->setAutoDefault(true);
    cardLayout()->addWidget(m_cancel, 0, Qt::AlignRight);
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_vm.cancelImport(); });
    observe();
    showProgress();
    showStatus();
    showCancelling();
    setShown(m_vm.isImporting);
}

void IndexingOverlay::observe()
{
    const auto progress = [this] {
        showProgress();
    };
    const auto status = [this] {
        showStatus();
    };
    m_observers.push_back(m_vm.importProgress.addNotifier(progress));
    m_observers.push_back(m_vm.importingCount.addNotifier(progress));
    m_observers.push_back(m_vm.importingTotal.addNotifier(progress));
    m_observers.push_back(m_vm.importStatus.addNotifier(status));
    m_observers.push_back(m_vm.importTimeEstimate.addNotifier(status));
    m_observers.push_back(m_vm.isCancellingImport.addNotifier([this] { showCancelling(); }));
    m_observers.push_back(m_vm.isImporting.addNotifier([this] { setShown(m_vm.isImporting); }));
}

void IndexingOverlay::showProgress()
{
    setProgress(m_vm.importProgress, m_vm.importingCount, m_vm.importingTotal);
}

void IndexingOverlay::showStatus()
{
    // File names have any length; their ends tell them apart best.
    const QString status = m_vm.importStatus;
    m_status->setText(m_status->fontMetrics().elidedText(status, Qt::ElideMiddle, lineWidth()));
    m_status->setToolTip(status);
    m_status->setAccessibleName(status);
    m_estimate->setText(m_vm.importTimeEstimate);
}

void IndexingOverlay::showCancelling()
{
    const bool isCancelling = m_vm.isCancellingImport;
    if (isCancelling && m_cancel->hasFocus())
        setFocus(Qt::OtherFocusReason); // the overlay's, or it would leave
    m_cancel->setText(isCancelling ? QStringLiteral("Cancelling…") : QStringLiteral("Cancel"));
    m_cancel->setEnabled(!isCancelling);
}

QWidget *IndexingOverlay::focusTarget()
{
    return m_cancel;
}
