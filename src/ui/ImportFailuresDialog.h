#pragma once

#include <QDialog>
#include <QMap>
#include <QString>

class QTableView;

/// The files that an import could not index: name, folder and reason of each. Rows can be copied as text.
class ImportFailuresDialog : public QDialog
{
    Q_OBJECT

public:
    /// `errors`: the reason by path.
    explicit ImportFailuresDialog(const QMap<QString, QString> &errors, QWidget *parent = nullptr);

    void copy(); ///< the selected rows, or all when none is, one a line with tabs between

private:
    QTableView *m_table;
};
