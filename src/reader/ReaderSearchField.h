#pragma once

#include <QLineEdit>
#include <QProperty>

class PDFViewerController;

/// The field that searches the paper: its text is the controller's. Return goes to the next hit, with Shift
/// to the one before, Escape empties it.
class ReaderSearchField : public QLineEdit
{
    Q_OBJECT

public:
    /// `controller` must outlive the field.
    explicit ReaderSearchField(PDFViewerController &controller, QWidget *parent = nullptr);

    /// Wide enough for the whole placeholder.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The keyboard belongs to the document again.
    void leaving();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    PDFViewerController &m_controller;
    QPropertyNotifier m_observer;
};
