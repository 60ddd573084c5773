#include "ui/TagNameDialog.h"

#include "app/LibraryViewModel.h"

#include <QCompleter>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kWidthPx = 380; ///< chosen: a tag name and the longest message in three lines

QLabel *paragraph(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}
} // namespace

TagNameDialog::TagNameDialog(const Texts &texts, QWidget *parent)
    : QDialog(parent)
    , m_field(new QLineEdit(this))
    , m_problem(paragraph({}, this))
    , m_accept(new QPushButton(texts.accept, this))
{
    setWindowTitle(texts.title);
    setAccessibleDescription(texts.message);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_field->setObjectName(QStringLiteral("tagNameField"));
    m_field->setPlaceholderText(texts.field);
    m_field->setAccessibleName(texts.field);
    m_problem->setObjectName(QStringLiteral("tagNameProblem"));
    m_accept->setObjectName(QStringLiteral("acceptButton"));
    layOut(texts);
    connect(m_field, &QLineEdit::textChanged, this, &TagNameDialog::judgeName);
    judgeName();
}

void TagNameDialog::layOut(const Texts &texts)
{
    QLabel *title = paragraph(texts.title, this);
    title->setObjectName(QStringLiteral("alertTitle"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    QLabel *message = paragraph(texts.message, this);
    message->setObjectName(QStringLiteral("alertMessage"));

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_accept, QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    m_accept->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &TagNameDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(message);
    layout->addWidget(m_field);
    layout->addWidget(m_problem);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(kWidthPx);
}

void TagNameDialog::setName(const QString &name)
{
    m_field->setText(name);
    m_field->selectAll();
}

void TagNameDialog::offerCompletions(const QStringList &names)
{
    auto *completer = new QCompleter(names, m_field);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    m_field->setCompleter(completer);
}

QString TagNameDialog::name() const
{
    return m_field->text().trimmed();
}

void TagNameDialog::accept()
{
    if (!m_accept->isEnabled())
        return;
    const QString accepted = name();
    QDialog::accept();
    Q_EMIT chosen(accepted);
}

/// A blank field says nothing: nobody has done anything wrong yet.
void TagNameDialog::judgeName()
{
    const QString problem = name().isEmpty() ? QString() : tagNameProblem(name());
    m_problem->setText(problem);
    m_accept->setEnabled(!name().isEmpty() && problem.isEmpty());
    m_field->setAccessibleDescription(problem);
}
