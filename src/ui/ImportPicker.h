#pragma once

#include <QDialog>
#include <QStringList>

class ImportPickerModel;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

/// The sheet "Import Review": which of the PDFs that were found shall be added.
class ImportPicker : public QDialog
{
    Q_OBJECT

public:
    /// Absolute paths, in the order to show them.
    explicit ImportPicker(const QStringList &discovered, QWidget *parent = nullptr);

    QStringList tickedPaths() const; ///< in list order

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpFilter();
    void setUpTable();
    void setUpButtons();
    void layOut();
    void toggleAll();
    void showTicks();

    ImportPickerModel *m_model;
    QLineEdit *m_filter;
    QCheckBox *m_all;
    QTableView *m_table;
    QLabel *m_count;
    QPushButton *m_import;
    QPushButton *m_cancel;
};
