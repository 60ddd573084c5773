#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for the name of a tag. Cannot be accepted with a name that no tag of the user's may have, and says
/// why.
class TagNameDialog : public QDialog
{
    Q_OBJECT

public:
    struct Texts {
        QString title;
        QString field;
        QString message;
        QString accept; ///< the button
    };
    explicit TagNameDialog(const Texts &texts, QWidget *parent = nullptr);

    void setName(const QString &name);               ///< what the field holds, selected
    void offerCompletions(const QStringList &names); ///< while typing

    QString name() const; ///< without spaces around it

    void accept() override; ///< refuses a name that does not do

Q_SIGNALS:
    void chosen(const QString &name); ///< the dialog was accepted

private:
    void layOut(const Texts &texts);
    void judgeName();

    QLineEdit *m_field;
    QLabel *m_problem;
    QPushButton *m_accept;
};
