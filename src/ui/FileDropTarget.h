#pragma once

#include <QStringList>
#include <QWidget>

/// Covers its parent while files are dragged over it, says what a drop does, and takes the drop.
class FileDropTarget : public QWidget
{
    Q_OBJECT

public:
    explicit FileDropTarget(QWidget *parent);

    void setShown(bool isShown);

Q_SIGNALS:
    void dropped(const QStringList &locations); ///< absolute paths of files and folders

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
