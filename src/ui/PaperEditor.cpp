#include "ui/PaperEditor.h"

#include "ui/ClaimKeys.h"
#include "ui/FieldProblem.h"
#include "ui/TextStyles.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kSpacingPx = 4;
constexpr int kFieldGapPx = 8;
} // namespace

PaperEditor::PaperEditor(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("paperEditor"));
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kSpacingPx);
    m_title = addField(QStringLiteral("editTitle"), QStringLiteral("Title"));
    m_authors = addField(QStringLiteral("editAuthors"), QStringLiteral("Authors"));
    m_year = addField(QStringLiteral("editYear"), QStringLiteral("Year"));
    m_yearProblem = new FieldProblem(*m_year, this);
    rows->addWidget(m_yearProblem);
    addButtons();
}

QLineEdit *PaperEditor::addField(const QString &objectName, const QString &title)
{
    auto *rows = static_cast<QVBoxLayout *>(layout());
    if (rows->count() > 0)
        rows->addSpacing(kFieldGapPx);
    auto *label = new QLabel(title, this);
    label->setFont(captionFont(font()));
    auto *field = new QLineEdit(this);
    field->setObjectName(objectName);
    field->setAccessibleName(title);
    field->setPlaceholderText(title);
    label->setBuddy(field);
    connect(field, &QLineEdit::returnPressed, this, &PaperEditor::save);
    rows->addWidget(label);
    rows->addWidget(field);
    return field;
}

void PaperEditor::addButtons()
{
    auto *save = new QPushButton(QStringLiteral("Save"), this);
    save->setObjectName(QStringLiteral("saveEdit"));
    auto *cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cancelEdit"));
    for (QPushButton *button : {save, cancel})
        button->setAutoDefault(true); // Return presses the one that has the focus
    connect(save, &QPushButton::clicked, this, &PaperEditor::save);
    connect(cancel, &QPushButton::clicked, this, &PaperEditor::cancelled);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(save);
    auto *rows = static_cast<QVBoxLayout *>(layout());
    rows->addSpacing(kFieldGapPx);
    rows->addLayout(buttons);
}

void PaperEditor::begin(const PaperEditTexts &texts)
{
    m_before = texts;
    m_title->setText(texts.title);
    m_authors->setText(texts.authors);
    m_year->setText(texts.year);
    for (QLineEdit *field : {m_title, m_authors})
        field->setCursorPosition(0); // show the beginning of what is too long
    m_yearProblem->say({});
    focusFirst();
}

void PaperEditor::focusFirst()
{
    m_title->setFocus(Qt::OtherFocusReason);
    m_title->setSelection(static_cast<int>(m_title->text().size()),
                          -static_cast<int>(m_title->text().size()));
}

void PaperEditor::save()
{
    const auto edit = paperEdit(m_before, {m_title->text(), m_authors->text(), m_year->text()});
    if (edit) {
        Q_EMIT saved(*edit);
        return;
    }
    m_yearProblem->say(edit.error().message());
    m_year->setFocus(Qt::OtherFocusReason);
    m_year->selectAll();
}

bool PaperEditor::event(QEvent *event)
{
    return claimKeys(event, {Qt::Key_Escape}) || QWidget::event(event);
}

void PaperEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT cancelled();
    else
        QWidget::keyPressEvent(event);
}
