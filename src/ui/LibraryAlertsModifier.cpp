#include "ui/LibraryAlertsModifier.h"

#include "app/LibraryViewModel.h"
#include "ui/Alert.h"
#include "ui/ImportFailuresDialog.h"
#include "ui/ImportPicker.h"

#include <QPushButton>

namespace
{
QMessageBox *noticeBox(const QString &message, QWidget *window)
{
    QMessageBox *box = Alert::make(
        {.name = QStringLiteral("noticeAlert"), .title = QStringLiteral("Notice"), .message = message},
        QMessageBox::Warning, window);
    Alert::addDismissButton(box);
    return box;
}

QString outcome(const IndexFilesResponse &response)
{
    QString text = QStringLiteral("%1 files successfully indexed.").arg(response.indexed.size());
    if (!response.errors.isEmpty())
        text += QStringLiteral("\n%1 errors occurred.").arg(response.errors.size());
    return text;
}

void offerFailures(QMessageBox *box, const QMap<QString, QString> &errors)
{
    QPushButton *details = box->addButton(QStringLiteral("Show Details…"), QMessageBox::ActionRole);
    details->setObjectName(QStringLiteral("showDetails"));
    // Any button closes its box. The list belongs beside the alert, not in its place.
    details->disconnect();
    QObject::connect(details, &QPushButton::clicked, box,
                     [box, errors] { (new ImportFailuresDialog(errors, box))->open(); });
}

QMessageBox *importCompleteBox(const IndexFilesResponse &response, QWidget *window)
{
    const bool isClean = response.errors.isEmpty();
    QMessageBox *box = Alert::make({.name = QStringLiteral("importCompleteAlert"),
                                    .title = QStringLiteral("Import Complete"),
                                    .message = outcome(response)},
                                   isClean ? QMessageBox::Information : QMessageBox::Warning, window);
    Alert::addDismissButton(box);
    if (!isClean)
        offerFailures(box, response.errors);
    return box;
}

QMessageBox *retagCompleteBox(const QString &result, QWidget *window)
{
    QMessageBox *box = Alert::make({.name = QStringLiteral("retagCompleteAlert"),
                                    .title = QStringLiteral("Retag Complete"),
                                    .message = result},
                                   QMessageBox::Information, window);
    Alert::addDismissButton(box);
    return box;
}

QMessageBox *confirmDeleteBox(LibraryViewModel &vm, const Paper &paper, QWidget *window)
{
    QMessageBox *box = Alert::make({.name = QStringLiteral("confirmDeleteAlert"),
                                    .title = QStringLiteral("Remove from Library?"),
                                    .message = u"This will remove \"" + paper.title +
                                               u"\" from the library and its index. The PDF file itself will "
                                               u"not be deleted."},
                                   QMessageBox::Question, window);
    Alert::askBeforeDestroying(box, QStringLiteral("Remove"), [&vm, paper] { vm.deletePaper(paper); });
    return box;
}
} // namespace

LibraryAlertsModifier::LibraryAlertsModifier(LibraryViewModel &vm, QWidget *window)
    : QObject(window)
    , m_vm(vm)
    , m_window(window)
    , m_notice(vm.errorMessage, [window](const QString &message) { return noticeBox(message, window); })
    , m_importComplete(
          vm.lastImportResult,
          [window](const IndexFilesResponse &response) { return importCompleteBox(response, window); })
    , m_retagComplete(vm.retagResult,
                      [window](const QString &result) { return retagCompleteBox(result, window); })
    , m_confirmDelete(vm.confirmDeletePaper,
                      [&vm, window](const Paper &paper) { return confirmDeleteBox(vm, paper, window); })
{
    m_observers.push_back(m_vm.showImportPicker.addNotifier([this] { showImportPicker(); }));
}

void LibraryAlertsModifier::showPending()
{
    m_notice.follow();
    m_importComplete.follow();
    m_retagComplete.follow();
    m_confirmDelete.follow();
    showImportPicker();
}

void LibraryAlertsModifier::showImportPicker()
{
    if (!m_vm.showImportPicker) {
        if (m_picker)
            m_picker->reject();
        return;
    }
    if (m_picker)
        return;
    m_picker = new ImportPicker(m_vm.discoveredPDFs, m_window);
    connect(m_picker, &QDialog::finished, this, [this](int result) {
        const QStringList ticked = m_picker->tickedPaths();
        m_picker.clear(); // closing deletes it
        m_vm.showImportPicker = false;
        if (result == QDialog::Accepted)
            m_vm.importSelected(ticked);
    });
    m_picker->open();
}
