#pragma once

#include "reader/ReaderDocument.h"

#include <QImage>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <qcorotask.h>
#include <stop_token>

class QPainter;
class QPrinter;

/// Prints pages of a document, drawn by its engine one after another while reading goes on. Main thread.
class PagePrinter : public QObject
{
    Q_OBJECT

public:
    /// `printer` says which pages, all when it says nothing. Printing ends with a reason when `document` goes
    /// or is lost.
    PagePrinter(ReaderDocument &document, std::shared_ptr<QPrinter> printer, QObject *parent = nullptr);
    /// Ends printing; what was not printed yet is not.
    ~PagePrinter() override;

    qint64 pageCount() const { return m_last - m_first + 1; }
    /// Answers why it failed, or nothing. A page that cannot be read is left blank.
    QCoro::Task<std::optional<QString>> print();
    void cancel() { m_stop.request_stop(); }

Q_SIGNALS:
    void progressed(qint64 pagesDone);

private:
    QCoro::Task<Result<QImage>> pictureOf(qint64 pageIndex);
    static void draw(QPainter &painter, const QImage &picture);

    QPointer<ReaderDocument> m_document;
    std::shared_ptr<QPrinter> m_printer;
    qint64 m_first; ///< 0-based
    qint64 m_last;
    std::stop_source m_stop;
};
