#pragma once

#include "reader/PassageRow.h"

#include <QListView>

/// A list of passages, one of which may be marked as the one that is shown. A click or Return opens one.
class PassageList : public QListView
{
    Q_OBJECT

public:
    explicit PassageList(QWidget *parent = nullptr);

    void setRows(const QList<PassageRow> &rows) { m_model.setRows(rows); }
    /// Marks a row and scrolls to it; -1 marks none.
    void setCurrent(int index);
    const PassageListModel &rows() const { return m_model; }

Q_SIGNALS:
    void opened(int index);
    void deleteRequested(int index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    PassageListModel m_model;
};
