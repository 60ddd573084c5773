#include "reader/PrintFlow.h"

#include "reader/PagePrinter.h"
#include "reader/ReaderDocument.h"

#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <algorithm>
#include <limits>

PrintFlow::PrintFlow(QWidget *window)
    : QObject(window)
    , m_window(window)
{
}

void PrintFlow::ask(ReaderDocument &document)
{
    if (!document.isOpen())
        return;
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(m_window->windowTitle());
    auto *dialog = new QPrintDialog(printer.get(), m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setMinMax(1, int(std::min<qint64>(document.pageCount(), std::numeric_limits<int>::max())));
    const QPointer itsDocument(&document);
    connect(dialog, &QDialog::accepted, this, [this, itsDocument, printer] {
        if (itsDocument)
            print(*itsDocument, printer);
    });
    dialog->open();
}

QCoro::Task<> PrintFlow::print(ReaderDocument &document, std::shared_ptr<QPrinter> printer)
{
    const QPointer self(this);
    auto *pages = new PagePrinter(document, std::move(printer), this);
    const QPointer progress(new QProgressDialog(QStringLiteral("Printing…"), QStringLiteral("Cancel"), 0,
                                                int(pages->pageCount()), m_window));
    progress->setWindowModality(Qt::WindowModal);
    connect(pages, &PagePrinter::progressed, progress.data(),
            [progress](qint64 done) { progress->setValue(int(done)); });
    connect(progress.data(), &QProgressDialog::canceled, pages, &PagePrinter::cancel);
    auto printing = pages->print();
    const std::optional<QString> problem = co_await printing;
    if (!self)
        co_return;
    delete progress.data();
    pages->deleteLater();
    if (!problem)
        co_return;
    auto *box =
        new QMessageBox(QMessageBox::Warning, QStringLiteral("Print"), *problem, QMessageBox::Ok, m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}
