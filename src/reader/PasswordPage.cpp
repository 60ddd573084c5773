#include "reader/PasswordPage.h"

#include <QLineEdit>
#include <QPushButton>

namespace
{
constexpr int kFieldWidth = 260;
}

PasswordPage::PasswordPage(QWidget *parent)
    : MessagePage(ReaderSymbol::Locked, parent)
    , m_password(new QLineEdit(this))
{
    setObjectName(QStringLiteral("passwordPage"));
    setHeading(QStringLiteral("This document is locked"));
    m_password->setObjectName(QStringLiteral("password"));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setPlaceholderText(QStringLiteral("Password"));
    m_password->setAccessibleName(QStringLiteral("Password"));
    m_password->setFixedWidth(kFieldWidth);
    addContent(m_password);
    QPushButton *cancel = addButton(QStringLiteral("cancelPassword"), QStringLiteral("Cancel"));
    QPushButton *unlock = addButton(QStringLiteral("unlock"), QStringLiteral("Open"));
    unlock->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &PasswordPage::cancelled);
    connect(unlock, &QPushButton::clicked, this, &PasswordPage::enter);
    connect(m_password, &QLineEdit::returnPressed, this, &PasswordPage::enter);
    setFocusProxy(m_password);
}

void PasswordPage::ask(const QString &problem)
{
    setProblem(problem);
    m_password->clear();
    m_password->setFocus();
}

void PasswordPage::enter()
{
    const QString password = m_password->text();
    m_password->clear(); // a second Return may not open the document again under who reads it
    if (!password.isEmpty())
        Q_EMIT entered(password);
}
