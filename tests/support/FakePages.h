#pragma once

#include "reader/PageLayout.h"
#include "reader/PageSource.h"

#include <algorithm>
#include <map>
#include <vector>

/// Pages that are answered by hand. Lives apart from the view, which owns only `source()`.
class FakePages
{
public:
    struct Question {
        PlannedJob planned;
        std::stop_token stop;
        PageSource::Answered answered;
    };

    explicit FakePages(qint64 pageCount, QSizeF size = QSizeF(600, 800))
        : count(pageCount)
        , usualSize(size)
    {
    }

    qint64 count;
    QSizeF usualSize;
    std::map<qint64, QSizeF> otherSizes;
    std::map<qint64, PDFPageText> texts;
    std::map<qint64, QList<PDFLink>> links;
    /// Jobs' pages that fail in this way, by kind.
    std::map<std::pair<PageJob::Kind, qint64>, Error> failures;
    bool isOpen = true;
    QColor color = Qt::white;

    std::vector<Question> questions; ///< not answered yet

    std::unique_ptr<PageSource> source() { return std::make_unique<Source>(*this); }

    /// Answers what was asked first.
    void answerNext()
    {
        const Question question = questions.front();
        questions.erase(questions.begin());
        question.answered(question.stop.stop_requested() ? cancelledError() : answerTo(question.planned.job));
    }

    /// Kinds of which the answers are there at once, for who does not wait for them.
    std::vector<PageJob::Kind> ready;
    void handOver(PageJob::Kind kind)
    {
        if (std::find(ready.begin(), ready.end(), kind) == ready.end())
            return;
        const auto isOfKind = [kind](const Question &question) {
            return question.planned.job.kind == kind;
        };
        for (auto next = std::find_if(questions.begin(), questions.end(), isOfKind); next != questions.end();
             next = std::find_if(questions.begin(), questions.end(), isOfKind)) {
            std::rotate(questions.begin(), next, next + 1);
            answerNext();
        }
    }

    /// Answers until nothing more is asked.
    void answerAll()
    {
        while (!questions.empty())
            answerNext();
    }

    /// Those not answered nor stopped.
    std::vector<PageJob> wanted(PageJob::Kind kind) const
    {
        std::vector<PageJob> jobs;
        for (const Question &question : questions) {
            if (question.planned.job.kind == kind && !question.stop.stop_requested())
                jobs.push_back(question.planned.job);
        }
        return jobs;
    }

    Result<PageAnswer> answerTo(const PageJob &job) const
    {
        if (const auto failing = failures.find({job.kind, job.page}); failing != failures.end())
            return failing->second;
        switch (job.kind) {
        case PageJob::Kind::Sizes:
            return PageAnswer(sizesFrom(job.page));
        case PageJob::Kind::Picture:
            return PageAnswer(picture(job.tile));
        case PageJob::Kind::Text:
            return PageAnswer(valueOf(texts, job.page));
        case PageJob::Kind::Links:
            return PageAnswer(valueOf(links, job.page));
        }
        Q_UNREACHABLE();
    }

private:
    class Source : public PageSource
    {
    public:
        explicit Source(FakePages &pages)
            : m_pages(pages)
        {
        }
        bool isOpen() const override { return m_pages.isOpen; }
        qint64 pageCount() const override { return m_pages.count; }
        void ask(const PlannedJob &planned, std::stop_token stop, Answered answered) override
        {
            m_pages.questions.push_back({planned, std::move(stop), std::move(answered)});
        }
        void handOver(PageJob::Kind kind) override { m_pages.handOver(kind); }

    private:
        FakePages &m_pages;
    };

    template <typename T> static T valueOf(const std::map<qint64, T> &values, qint64 page)
    {
        const auto found = values.find(page);
        return found == values.end() ? T() : found->second;
    }

    PageSizes sizesFrom(qint64 first) const
    {
        PageSizes sizes;
        for (qint64 page = first; page < std::min(count, first + PageLayout::kBlockPages); ++page) {
            const auto other = otherSizes.find(page);
            sizes.push_back(other == otherSizes.end() ? usualSize : other->second);
        }
        return sizes;
    }

    QImage picture(const PageTile &tile) const
    {
        QImage image(tile.part.size(), QImage::Format_RGB32);
        image.fill(color);
        return image;
    }
};

/// A text whose lines stand one below the other, 20 points high, each character 10 points wide, from (50,
/// 100) on.
inline PDFPageText placedLines(const QStringList &lines)
{
    QList<QRectF> boxes;
    for (qsizetype row = 0; row < lines.size(); ++row) {
        for (qsizetype column = 0; column < lines[row].size(); ++column)
            boxes.append(QRectF(50 + 10.0 * double(column), 100 + 20.0 * double(row), 10, 20));
        boxes.append(QRectF());
    }
    return PDFPageText(lines.join(u'\n') + u'\n', boxes);
}
