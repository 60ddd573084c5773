#pragma once

#include <QStringList>
#include <QWidget>

class FlowLayout;
class TagChip;

/// A paper's tags as chips in rows that wrap.
class TagChips : public QWidget
{
    Q_OBJECT

public:
    explicit TagChips(QWidget *parent = nullptr);

    /// Chips that stay keep the focus; where the focused one goes, its neighbour gets it.
    void setTags(const QStringList &tags);

Q_SIGNALS:
    void removeRequested(const QString &tag);
    /// The chip that had the focus is gone, and it was the last one.
    void focusLost();

private:
    TagChip *chipAt(int index) const;
    void insertChip(int index, const QString &tag);
    void takeChip(int index);
    void orderForTabKey();
    void focusNear(int index);

    FlowLayout *m_rows;
};
