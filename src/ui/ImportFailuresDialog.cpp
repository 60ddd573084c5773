#include "ui/ImportFailuresDialog.h"

#include "platform/Paths.h"
#include "ui/Symbols.h"

#include <QAction>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace
{
QStandardItem *textItem(const QString &text)
{
    auto *item = new QStandardItem(text);
    item->setToolTip(text);
    item->setEditable(false);
    return item;
}

QStandardItemModel *modelOf(const QMap<QString, QString> &errors, QObject *parent)
{
    auto *model = new QStandardItemModel(0, 3, parent);
    model->setHorizontalHeaderLabels(
        {QStringLiteral("File"), QStringLiteral("Folder"), QStringLiteral("Reason")});
    for (auto error = errors.begin(); error != errors.end(); ++error) {
        const QFileInfo file(error.key());
        model->appendRow(
            {textItem(file.fileName()), textItem(pathForPeople(file.path())), textItem(error.value())});
    }
    return model;
}

void setUp(QTableView *table)
{
    table->setObjectName(QStringLiteral("failedFiles"));
    table->setAccessibleName(QStringLiteral("Files that failed"));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setColumnWidth(0, 180);
    table->setColumnWidth(1, 180);
}
} // namespace

ImportFailuresDialog::ImportFailuresDialog(const QMap<QString, QString> &errors, QWidget *parent)
    : QDialog(parent)
    , m_table(new QTableView(this))
{
    setObjectName(QStringLiteral("importFailures"));
    setWindowTitle(QStringLiteral("Files That Failed"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_table->setModel(modelOf(errors, this));
    setUp(m_table);

    auto *copyRows = new QAction(symbolIcon(Symbol::Copy), QStringLiteral("Copy"), this);
    copyRows->setShortcut(QKeySequence::Copy);
    connect(copyRows, &QAction::triggered, this, &ImportFailuresDialog::copy);
    m_table->addAction(copyRows);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *copyButton = buttons->addButton(copyRows->text(), QDialogButtonBox::ActionRole);
    copyButton->setObjectName(QStringLiteral("copyFailures"));
    copyButton->setIcon(copyRows->icon());
    copyButton->setToolTip(QStringLiteral("Copy the selected rows, or all, as text"));
    connect(copyButton, &QPushButton::clicked, copyRows, &QAction::trigger);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(buttons);
    resize(720, 360);
}

void ImportFailuresDialog::copy()
{
    const QAbstractItemModel *model = m_table->model();
    const QItemSelectionModel *selection = m_table->selectionModel();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row) {
        if (selection->hasSelection() && !selection->isRowSelected(row))
            continue;
        lines.append(model->index(row, 0).data().toString() + u'\t' + model->index(row, 1).data().toString() +
                     u'\t' + model->index(row, 2).data().toString());
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}
