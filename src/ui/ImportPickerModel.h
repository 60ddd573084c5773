#pragma once

#include "ui/FileSizes.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

/// The files that an import found, with a tick each; a filter narrows the rows, never the ticks.
class ImportPickerModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Folder, Size, ColumnCount };

    /// Absolute paths, shown in this order; all are ticked.
    explicit ImportPickerModel(const QStringList &paths, QObject *parent = nullptr);

    /// Shows the files whose name or folder contains every word of `text`, in any case.
    void setFilter(const QString &text);
    bool isFiltered() const { return m_shown.size() != m_files.size(); }

    int fileCount() const { return static_cast<int>(m_files.size()); }
    int tickedCount() const { return m_tickedCount; }
    QStringList tickedPaths() const; ///< in list order, whether shown or not

    int shownTickedCount() const;
    void tickShown(bool isTicked);
    /// Ticks the rows, or unticks them when all are ticked.
    void toggle(const QModelIndexList &rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    void ticksChanged();

private:
    struct File {
        QString path;
        QString searched; ///< the path in folded case
    };

    QVariant text(int file, int column) const;
    QString sizeText(int file) const;
    void setTicked(int file, bool isTicked);
    void announceTicks(int firstRow, int lastRow);
    void storeSize(int file, qint64 bytes);

    std::vector<File> m_files;
    std::vector<bool> m_ticked; ///< by file
    int m_tickedCount = 0;
    std::vector<int> m_shown;            ///< the file of each row, ascending
    mutable std::vector<qint64> m_sizes; ///< by file; see the constants beside `sizeText`
    mutable FileSizes m_reader;
};
