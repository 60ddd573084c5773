#include "reader/ListOrHint.h"

#include <QAbstractItemView>
#include <QLabel>

ListOrHint::ListOrHint(QAbstractItemView *list, QWidget *parent)
    : QStackedWidget(parent)
    , m_list(list)
    , m_hint(new QLabel(this))
{
    m_hint->setObjectName(QStringLiteral("hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setMargin(16);
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    addWidget(m_list);
    addWidget(m_hint);
}

void ListOrHint::setHint(const QString &text)
{
    m_hint->setText(text);
    setCurrentWidget(text.isEmpty() ? static_cast<QWidget *>(m_list) : m_hint);
}

QString ListOrHint::hint() const
{
    return currentWidget() == m_hint ? m_hint->text() : QString();
}
