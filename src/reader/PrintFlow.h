#pragma once

#include <QObject>
#include <memory>
#include <qcorotask.h>

class QPrinter;
class QWidget;
class ReaderDocument;

/// Asks how to print, prints, and says how it goes. Main thread; returns at once.
class PrintFlow : public QObject
{
    Q_OBJECT

public:
    explicit PrintFlow(QWidget *window);

    /// `document` must outlive the flow or the printing.
    void ask(ReaderDocument &document);

private:
    QCoro::Task<> print(ReaderDocument &document, std::shared_ptr<QPrinter> printer);

    QWidget *m_window;
};
