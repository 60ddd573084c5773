#pragma once

#include "reader/MessagePage.h"

class QLineEdit;

/// Asks for the password of a locked document, in the document's place.
class PasswordPage : public MessagePage
{
    Q_OBJECT

public:
    explicit PasswordPage(QWidget *parent = nullptr);

    /// Empty for the first attempt; else the password is to be typed anew.
    void ask(const QString &problem);

Q_SIGNALS:
    void entered(const QString &password);
    void cancelled();

private:
    void enter();

    QLineEdit *m_password;
};
