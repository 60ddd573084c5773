#include "ui/FieldProblem.h"

#include "ui/Symbols.h"
#include "ui/WrappedLabel.h"

#include <QAccessible>
#include <QAction>
#include <QLineEdit>
#include <QVBoxLayout>

FieldProblem::FieldProblem(QLineEdit &field, QWidget *parent)
    : QWidget(parent)
    , m_field(field)
    , m_text(new WrappedLabel(this))
    , m_mark(field.addAction(symbolIcon(Symbol::MissingFile), QLineEdit::TrailingPosition))
{
    m_text->setObjectName(QString(field.objectName() % u"Problem"));
    m_text->setFont(captionFont(font()));
    m_mark->setVisible(false);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_text);
    hide();
    connect(&field, &QLineEdit::textEdited, this, [this] { say({}); });
}

void FieldProblem::say(const QString &problem)
{
    m_text->setWrappedText(problem);
    m_mark->setVisible(!problem.isEmpty());
    m_mark->setToolTip(problem);
    m_field.setAccessibleDescription(problem);
    setVisible(!problem.isEmpty());
    if (problem.isEmpty())
        return;
    QAccessibleEvent said(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

QString FieldProblem::problem() const
{
    return m_text->text();
}
