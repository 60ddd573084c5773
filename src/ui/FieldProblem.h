#pragma once

#include <QWidget>

class QAction;
class QLineEdit;
class WrappedLabel;

/// Says beneath a field why its text cannot be taken, marks the field, and tells a screen reader. Hidden
/// while there is no problem; typing clears it.
class FieldProblem : public QWidget
{
    Q_OBJECT

public:
    /// `field` must outlive this.
    explicit FieldProblem(QLineEdit &field, QWidget *parent = nullptr);

    void say(const QString &problem); ///< empty: there is none
    QString problem() const;

private:
    QLineEdit &m_field;
    WrappedLabel *m_text;
    QAction *m_mark;
};
