#pragma once

#include "app/PaperEditTexts.h"

#include <QWidget>

class FieldProblem;
class QLineEdit;

/// The fields that edit a paper's title, authors and year in place. Return saves, Escape cancels.
class PaperEditor : public QWidget
{
    Q_OBJECT

public:
    explicit PaperEditor(QWidget *parent = nullptr);

    /// Fills the fields and puts the focus into the first one.
    void begin(const PaperEditTexts &texts);
    void focusFirst();

Q_SIGNALS:
    void saved(const PaperEdit &edit); ///< `edit` may change nothing
    void cancelled();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLineEdit *addField(const QString &objectName, const QString &title);
    void addButtons();
    void save();

    PaperEditTexts m_before;
    QLineEdit *m_title;
    QLineEdit *m_authors;
    QLineEdit *m_year;
    FieldProblem *m_yearProblem;
};
