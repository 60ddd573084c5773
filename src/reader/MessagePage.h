#pragma once

#include "reader/ReaderSymbols.h"

#include <QWidget>

class PathText;
class QLabel;
class QPushButton;
class QVBoxLayout;

/// What a reader window shows in the document's place when there is something to say: a picture, a heading,
/// the file and what one can do about it.
class MessagePage : public QWidget
{
    Q_OBJECT

public:
    explicit MessagePage(ReaderSymbol symbol, QWidget *parent = nullptr);

    void setHeading(const QString &heading);
    /// Of the file, which can be selected.
    void setPath(const QString &path);
    /// What came of the last attempt; empty for nothing.
    void setProblem(const QString &problem);
    QPushButton *addButton(const QString &name, const QString &text);
    /// Between the texts and the buttons.
    void addContent(QWidget *content);

protected:
    void changeEvent(QEvent *event) override;

private:
    QLabel *addLabel(const QString &name);
    void showSymbol();

    ReaderSymbol m_symbol;
    QVBoxLayout *m_column;
    QWidget *m_buttons;
    QLabel *m_picture;
    QLabel *m_heading;
    PathText *m_path;
    QLabel *m_problem;
};
