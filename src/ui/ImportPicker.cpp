#include "ui/ImportPicker.h"

#include "ui/ImportPickerModel.h"
#include "ui/Symbols.h"

#include <QAction>
#include <QCheckBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace
{
// A click anywhere on a row toggles it; by default one on the box would do so once more.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    bool editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &,
                     const QModelIndex &) override
    {
        return false;
    }
};
} // namespace

ImportPicker::ImportPicker(const QStringList &discovered, QWidget *parent)
    : QDialog(parent)
    , m_model(new ImportPickerModel(discovered, this))
    , m_filter(new QLineEdit(this))
    , m_all(new QCheckBox(this))
    , m_table(new QTableView(this))
    , m_count(new QLabel(this))
    , m_import(new QPushButton(QStringLiteral("Import Selected"), this))
    , m_cancel(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName(QStringLiteral("importPicker"));
    setWindowTitle(QStringLiteral("Import Review"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setUpFilter();
    setUpTable();
    setUpButtons();
    layOut();
    connect(m_model, &ImportPickerModel::ticksChanged, this, &ImportPicker::showTicks);
    showTicks();
    m_table->setCurrentIndex(m_model->index(0, 0));
    m_table->setFocus();
}

QStringList ImportPicker::tickedPaths() const
{
    return m_model->tickedPaths();
}

void ImportPicker::setUpFilter()
{
    m_filter->setObjectName(QStringLiteral("pickerFilter"));
    m_filter->setPlaceholderText(QStringLiteral("Filter by name or folder"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    m_filter->addAction(symbolIcon(Symbol::Search), QLineEdit::LeadingPosition);
    m_filter->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model->setFilter(text);
        m_table->setCurrentIndex(m_model->index(0, 0));
        showTicks();
    });
    m_all->setObjectName(QStringLiteral("selectAll"));
    connect(m_all, &QCheckBox::clicked, this, &ImportPicker::toggleAll);
}

void ImportPicker::setUpTable()
{
    m_table->setObjectName(QStringLiteral("pickerFiles"));
    m_table->setAccessibleName(QStringLiteral("Discovered PDFs"));
    m_table->setModel(m_model);
    m_table->setItemDelegate(new RowDelegate(m_table));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setShowGrid(false);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    // One height for all: measuring 20,000 rows would take longer than anything else here.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 10);
    QHeaderView *header = m_table->horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setStretchLastSection(false);
    header->setSectionResizeMode(ImportPickerModel::Name, QHeaderView::Stretch);
    header->setSectionResizeMode(ImportPickerModel::Folder, QHeaderView::Stretch);
    header->resizeSection(ImportPickerModel::Size,
                          m_table->fontMetrics().horizontalAdvance(QStringLiteral("1,000.0 MB")) + 24);
    m_table->installEventFilter(this);
    connect(m_table, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        if (QGuiApplication::keyboardModifiers() == Qt::NoModifier) // else rows are being selected
            m_model->toggle({index});
    });
}

void ImportPicker::setUpButtons()
{
    m_count->setObjectName(QStringLiteral("tickedCount"));
    m_import->setObjectName(QStringLiteral("importSelected"));
    m_cancel->setObjectName(QStringLiteral("cancelPicker"));
    m_import->setDefault(true);
    connect(m_import, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ImportPicker::layOut()
{
    auto *explanation = new QLabel(
        QStringLiteral("Select which of the discovered PDFs you want to add to your library."), this);
    explanation->setObjectName(QStringLiteral("pickerExplanation"));
    explanation->setWordWrap(true);
    auto *footer = new QHBoxLayout;
    footer->addWidget(m_count);
    footer->addStretch();
    footer->addWidget(m_cancel);
    footer->addWidget(m_import);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(m_filter);
    layout->addWidget(m_all);
    layout->addWidget(m_table, 1);
    layout->addLayout(footer);
    resize(720, 520);
}

bool ImportPicker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (watched == m_table && key->key() == Qt::Key_Space) {
        m_model->toggle(m_table->selectionModel()->selectedRows());
        return true;
    }
    if (watched == m_filter && key->key() == Qt::Key_Down) {
        m_table->setFocus();
        return true;
    }
    if (watched == m_filter && key->key() == Qt::Key_Escape && !m_filter->text().isEmpty()) {
        m_filter->clear(); // a second Escape closes the sheet
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void ImportPicker::toggleAll()
{
    m_model->tickShown(m_model->shownTickedCount() < m_model->rowCount());
}

/// With a filter the master toggle works on the files that are shown, and says so.
void ImportPicker::showTicks()
{
    const int shown = m_model->rowCount();
    const int ticked = m_model->shownTickedCount();
    const QString all = QStringLiteral("Select All (%1 new PDFs found)").arg(m_model->fileCount());
    const QString some =
        QStringLiteral("Select Shown (%1 of %2 new PDFs)").arg(shown).arg(m_model->fileCount());
    m_all->setText(m_model->isFiltered() ? some : all);
    // A partial state is only ever shown: a click always leads to all or none.
    m_all->setCheckState(shown > 0 && ticked == shown ? Qt::Checked
                         : ticked > 0                 ? Qt::PartiallyChecked
                                                      : Qt::Unchecked);
    m_all->setEnabled(shown > 0);
    m_count->setText(QStringLiteral("%1 selected").arg(m_model->tickedCount()));
    m_import->setEnabled(m_model->tickedCount() > 0);
}
