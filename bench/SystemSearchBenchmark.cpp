// Times publishing 100,000 papers for the desktop's search, the first time and again, and what the search
// provider takes to start and to answer over a session bus of its own. Prints figures in the form that
// bench/run reads.
#include "Figures.h"
#include "SearchProviderBenchmark.h"
#include "Vocabulary.h"
#include "indexing/CoreSpotlightIndexer.h"
#include "platform/Sha256.h"
#include "store/Paper.h"
#include "systemsearch/FileSearchIndex.h"
#include "systemsearch/ItemSearch.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>
#include <random>

namespace
{

constexpr int kPapers = 100'000;

/// Papers as a real library has them: titles of common and rare words, one to five authors, some tags.
class PaperGenerator
{
public:
    QList<Paper> papers()
    {
        QList<Paper> all;
        for (int number = 0; number < kPapers; ++number)
            all.append(paper(QStringLiteral("/papers/%1.pdf").arg(number)));
        return all;
    }

private:
    QString word() { return QString::fromLatin1(m_vocabulary.anyWord(m_random())); }
    QString name()
    {
        QString name = QString::fromLatin1(m_vocabulary.subjectWord(m_random()));
        name[0] = name[0].toUpper();
        return name;
    }

    Paper paper(const QString &path)
    {
        QStringList title{name()};
        while (title.size() < qsizetype(5 + m_random() % 8))
            title.append(word());
        QStringList authors;
        for (std::uint64_t count = 1 + m_random() % 5; count > 0; --count)
            authors.append(name().left(1) + u". " + name());
        return {.id = sha256Hex(path.toUtf8()).left(32),
                .title = title.join(u' '),
                .authors = authors.join(u", "),
                .year = 1980 + qint64(m_random() % 45),
                .coverPath = {},
                .filepath = path,
                .tags = {name(), name(), QStringLiteral("Collection %1").arg(m_random() % 12)}};
    }

    const Vocabulary m_vocabulary;
    std::mt19937_64 m_random{5};
};

struct Cost {
    Milliseconds time{0};
    Milliseconds processor{0}; ///< tells more than the time where other programs run
};

Milliseconds processorTime()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// What a publication costs, with everything that it takes, to the end of its writing.
Cost publicationCost(const QString &path, const QList<Paper> &papers)
{
    const Milliseconds before = processorTime();
    const Milliseconds time = timeOf([&] {
        FileSearchIndex index(path);
        CoreSpotlightIndexer(index).publish(papers); // the index writes it before it ends
    });
    return {.time = time, .processor = processorTime() - before};
}

void figure(const char *what, double value, const char *unit, const char *target)
{
    std::printf("100,000 papers: %s\t%.2f\t-\t%s\t%s\n", what, value, unit, target);
}

void measurePublishing(const QString &path, QList<Paper> papers)
{
    const Cost first = publicationCost(path, papers);
    figure("publishing them the first time", first.time.count() / 1000, "s", "-");
    figure("publishing them the first time, processor time", first.processor.count() / 1000, "s", "-");
    std::vector<Milliseconds> times;
    std::vector<Milliseconds> processorTimes;
    for (int round = 0; round < 15; ++round) {
        const Cost again = publicationCost(path, papers);
        times.push_back(again.time);
        processorTimes.push_back(again.processor);
    }
    figure("publishing them again, unchanged", median(times).count(), "ms", "most 300");
    figure("publishing them again, processor time", median(processorTimes).count(), "ms", "most 300");
    for (qsizetype i = 0; i < papers.size(); i += 1000)
        papers[i].tags.append(QStringLiteral("Changed"));
    figure("publishing them again, 100 changed", publicationCost(path, papers).time.count(), "ms", "-");
    figure("the file", double(QFileInfo(path).size()) / 1e6, "MB", "-");
}

struct Query {
    const char *what;
    const char *terms;
};

constexpr Query kQueries[] = {
    {"a rare word", "saddlepoint"},
    {"a common word", "matrix"},
    {"the prefix of one letter", "t"},
    {"the prefix of two letters", "ma"},
    {"the prefix of four letters", "matr"},
    {"three terms", "matrix energy the"},
    {"three terms of one letter", "q z x"},
    {"three common prefixes", "an of th"},
    {"a title and an author", "matrix m"},
    {"sixteen terms of one letter", "a b c d e f g h i j k l m n o p"},
    {"a word that is in no paper", "qqqqqq"},
    {"a word that every description has", "research"},
    {"words that every description has", "research paper by"},
    {"words that every description has and a name", "paper by mat"},
};

void measureSearch(const QString &path, const QString &title)
{
    ItemSearch search(path);
    const auto measure = [&](const char *what, const QStringList &terms) {
        std::vector<Milliseconds> times;
        qsizetype found = 0;
        for (int round = 0; round < 21; ++round)
            times.push_back(timeOf([&] { found = search.find(terms).size(); }));
        const QByteArray text =
            QByteArray("search for ") + what + ", " + QByteArray::number(found) + " found";
        figure(text.constData(), median(times).count(), "ms", "most 20");
    };
    measure("a whole title", title.split(u' '));
    for (const Query &query : kQueries)
        measure(query.what, QString::fromLatin1(query.terms).split(u' '));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir home;
    const QString path = home.filePath(QStringLiteral("Quirevault/system-search.db"));
    const QList<Paper> papers = PaperGenerator().papers();
    measurePublishing(path, papers);
    measureSearch(path, papers[kPapers / 2].title);
    measureProvider(home.path());
}
