#pragma once

#include "reader/PDFOpenRequest.h"
#include "store/Bookmark.h"

#include <QAbstractButton>

class QVBoxLayout;

/// One bookmark: label, passage and page. A double click or Return opens a reader window at its page, with
/// the passage lit; the button at its side, the context menu and Delete remove it.
class BookmarkRow : public QAbstractButton
{
    Q_OBJECT

public:
    /// `filepath` is the PDF of the paper.
    BookmarkRow(const Bookmark &bookmark, const QString &filepath, OpenReaderWindow openWindow,
                QWidget *parent = nullptr);

    const Bookmark &bookmark() const { return m_bookmark; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void deleteRequested();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addTexts(QVBoxLayout &lines);
    QWidget *makeDeleteButton();
    void addContextMenu();
    void open();

    Bookmark m_bookmark;
    QString m_filepath;
    OpenReaderWindow m_openWindow;
};
