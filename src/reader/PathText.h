#pragma once

#include <QTextEdit>

/// A path as plain text, in as many lines as it needs; a line may end at any character, since a path has no
/// blanks. It can be selected and copied as it is.
class PathText : public QTextEdit
{
    Q_OBJECT

public:
    explicit PathText(int width, QWidget *parent = nullptr);

    void setPath(const QString &path);

protected:
    void changeEvent(QEvent *event) override;

private:
    void fitHeight();
};
