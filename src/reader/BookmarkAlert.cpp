#include "reader/BookmarkAlert.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kWidth = 380;

QLabel *plainLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}
} // namespace

BookmarkAlert::BookmarkAlert(const QString &hint, QWidget *window)
    : QDialog(window)
    , m_label(new QLineEdit(this))
{
    setObjectName(QStringLiteral("bookmarkAlert"));
    setWindowTitle(QStringLiteral("Bookmark Selection"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumWidth(kWidth);
    m_label->setObjectName(QStringLiteral("bookmarkLabel"));
    m_label->setPlaceholderText(QStringLiteral("Label (optional)"));
    m_label->setAccessibleName(QStringLiteral("Label"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Save)->setText(QStringLiteral("Save"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));

    auto *column = new QVBoxLayout(this);
    QLabel *title = plainLabel(windowTitle(), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    column->addWidget(title);
    column->addWidget(plainLabel(QStringLiteral("Add a label for this bookmark, or leave blank."), this));
    if (!hint.isEmpty())
        column->addWidget(plainLabel(hint, this));
    column->addWidget(m_label);
    column->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        Q_EMIT saved(m_label->text());
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}
