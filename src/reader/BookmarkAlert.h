#pragma once

#include <QDialog>

class QLineEdit;

/// Asks for the label of a bookmark. Deleted when it closes, so that the next one starts blank.
class BookmarkAlert : public QDialog
{
    Q_OBJECT

public:
    /// `hint` says, where it is not empty, why nothing will be stored.
    BookmarkAlert(const QString &hint, QWidget *window);

Q_SIGNALS:
    void saved(const QString &label);

private:
    QLineEdit *m_label;
};
