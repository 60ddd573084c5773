#pragma once

#include <QProperty>
#include <QWidget>
#include <vector>

class PDFViewerController;
class QLabel;
class QLineEdit;

/// The number of the page that is shown, to be typed over, with the page's own label and the count beside it.
class PageField : public QWidget
{
    Q_OBJECT

public:
    /// `controller` must outlive the field.
    explicit PageField(PDFViewerController &controller, QWidget *parent = nullptr);

    /// Puts the keyboard into the field, its text selected.
    void edit();

Q_SIGNALS:
    /// A page was chosen, or none: the keyboard belongs to the document again.
    void done();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showPage();
    void showCount();
    /// What stands beside the number of that page.
    QString textFor(qint64 pageNumber) const;
    /// For the longest label, so that what is beside it stays where it is while pages go by.
    void makeRoom();

    PDFViewerController &m_controller;
    QLineEdit *m_number;
    QLabel *m_count;
    std::vector<QPropertyNotifier> m_observers;
};
