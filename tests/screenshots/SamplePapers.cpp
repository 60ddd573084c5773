#include "screenshots/SamplePapers.h"

#include "support/PdfBuilder.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>

namespace
{

// Title | authors | year | tags | what it is about. All invented.
constexpr char kPapers[] = R"(
Sparse Attention over Graph Neighbourhoods|Mira Halvorsen, Tobias Renn|2021|Graphs, Machine Learning|We let each node of a graph neural network attend to a sparse sample of its neighbourhood
A Field Guide to Message Passing in Graph Neural Networks|Ines Okafor|2022|Graphs, Machine Learning, Surveys|This survey orders graph neural networks by what their nodes may say to each other
Estimating Tail Latency from Coarse Histograms|Jonas Brandt, Leila Farrokh|2018|Systems|A histogram with few buckets still bounds the tail latency of a service
The Quiet Queue: Scheduling without Preemption|Petra Vondrak|2016|Systems|Short requests need no preemption when long ones announce themselves
Write-Ahead Logs on Persistent Memory|Leila Farrokh, Sam Adeyemi|2020|Systems, Databases|A log that lives in persistent memory need not be written twice
Full-Text Ranking when Documents Are Long|Anneke de Wit|2015|Information Retrieval|Length normalisation of ranked retrieval misjudges documents that cover several subjects
Passages before Papers: Ranking Evidence|Anneke de Wit, Ravi Menon|2019|Information Retrieval|Readers remember passages, so a search over papers should rank passages first
Snippets that Readers Trust|Clara Beaumont|2017|Information Retrieval, Human Factors|We asked ninety readers which snippets let them recognise a passage
Reading on Paper, Reading on Glass|Clara Beaumont, Yusuf Demir|2014|Human Factors|Readers place what they have read on the page, and lose the place while scrolling
How Researchers Keep Their Papers|Noor Haddad|2013|Human Factors, Surveys|Interviews with forty researchers about folders, tags and forgetting
Low-Rank Updates of Large Factorisations|Viktor Sandoval|2009|Numerical Analysis|Updating a singular value decomposition costs less than computing it again
Krylov Methods for the Impatient|Viktor Sandoval, Hana Kim|2012|Numerical Analysis, Surveys|A tour of iterative solvers for those who stop early
Rounding Errors in Long Sums|Edith Larkin|1987|Numerical Analysis|The order of a sum decides how many of its digits are true
Saddle Points Seldom Matter|Hana Kim|2018|Optimisation, Machine Learning|Noise leads gradient descent away from saddle points of most losses
Convex Relaxations of Assignment Problems|Oleg Marchetti|2004|Optimisation|Relaxing an assignment problem keeps its solution for almost all costs
Bandits with Delayed Regret|Ravi Menon, Mira Halvorsen|2020|Optimisation, Machine Learning|The reward of an action may come long after the next one is taken
Knots in Polymer Rings|Greta Lindqvist|2001|Physics|Ring polymers in good solvents are knotted less often than their length suggests
Spectra of Cold Molecular Ions|Greta Lindqvist, Andrei Popescu|2007|Physics|Trapped ions show rotational lines that warm gases wash out
Drift of Optical Clocks over a Decade|Andrei Popescu|2019|Physics|We compare two optical clocks over ten years and find where they drift
Turbulence behind Porous Discs|Maren Oduya|2011|Physics, Fluids|A porous disc sheds smaller vortices than a solid one, and later
Slow Flow through Fractured Rock|Maren Oduya, Ivo Keller|2015|Fluids, Earth Science|Fractures carry most of the water through rock that seems tight
Tree Rings as Clocks of Volcanic Winters|Solveig Aas|1998|Earth Science|Narrow rings in five forests date eruptions that no chronicle names
Soils Remember Fire|Solveig Aas, Diego Fuentes|2010|Earth Science, Ecology|Charcoal layers tell fires apart that lie four centuries back
Pollinators in Fragmented Meadows|Diego Fuentes|2016|Ecology|Bees cross roads less readily than rivers
Counting Birds by Their Songs|Amara Nwosu|2021|Ecology, Machine Learning|A network that hears one night of a forest counts its birds as well as three people
Protein Folding by Local Moves|Felix Baumgart|2006|Biology|A chain that may only turn at one place folds sooner than one that may turn at all
Gene Drift in Island Populations|Felix Baumgart, Amara Nwosu|2013|Biology, Ecology|Islands lose variety in steps, with each of their droughts
A Short History of the Footnote in Mathematics|Edith Larkin|1994|History|Footnotes carried priority disputes before journals had letters
Proofs that Compute|Lucian Ferro|2005|Logic|From a proof of existence one may read off the thing that exists
Types for Units of Measure|Lucian Ferro, Petra Vondrak|2014|Logic, Programming Languages|A type checker that knows metres from seconds finds errors of physics
Garbage Collection in Bounded Time|Tobias Renn|2010|Programming Languages, Systems|A collector that never pauses longer than a frame of the screen
Incremental Parsing for Editors|Hana Kim, Lucian Ferro|2019|Programming Languages|Parsing again after each key costs less than waiting for the last one
Confidence Intervals for Medians of Small Samples|Jonas Brandt|2003|Statistics|Seven values suffice for an interval around their median
Imputing What Nobody Measured|Ines Okafor, Jonas Brandt|2017|Statistics|Missing values that are missing for a reason must not be filled in by the mean
Causal Claims from Observed Networks|Yusuf Demir|2020|Statistics, Graphs|Who follows whom does not tell who convinced whom
Colouring Planar Graphs by Hand|Oleg Marchetti, Edith Larkin|1991|Graphs, History|How four colours were found for maps before machines looked at all cases
)";

constexpr PdfBox kSheet{0, 0, 595, 842}; // A4
constexpr int kLineLength = 74;

QStringList wrapped(const QString &text)
{
    QStringList lines{QString()};
    for (const QString &word : text.split(u' ')) {
        if (lines.last().size() + word.size() > kLineLength)
            lines.append(QString());
        lines.last() += lines.last().isEmpty() ? word : QString(u' ' + word);
    }
    return lines;
}

/// A band of the paper's own colour above the text, and strokes that stand for a figure.
QByteArray drawingOf(const SamplePaper &paper)
{
    const size_t hash = qHash(paper.title, 1);
    const auto part = [hash](int shift) -> QByteArray {
        return QByteArray::number(0.25 + static_cast<double>((hash >> shift) & 0xff) / 512, 'f', 2) + ' ';
    };
    const QByteArray colour = part(0) + part(8) + part(16);
    QByteArray drawing = colour + "rg 0 826 595 16 re f " + colour + "RG 2 w ";
    for (int bar = 0; bar < 9; ++bar) {
        const int height = 20 + static_cast<int>((hash >> (bar * 3)) % 90);
        drawing += QByteArray::number(72 + bar * 50) + " 120 30 " + QByteArray::number(height) + " re f ";
    }
    return drawing + "0 0 0 rg ";
}

/// Lines begin at the edge of the sheet: this is their margin.
QStringList indented(const QStringList &lines)
{
    QStringList moved;
    for (const QString &line : lines)
        moved.append(QString(16, u' ') + line);
    return moved;
}

QStringList bodyOf(const SamplePaper &paper, int page)
{
    QStringList lines;
    for (int paragraph = 0; paragraph < 3; ++paragraph) {
        const QString text =
            QStringLiteral("%1. Section %2.%3 compares this with what is known, and says where "
                           "the two part. The measurements of the appendix agree with it.")
                .arg(paper.abstract)
                .arg(page)
                .arg(paragraph + 1);
        lines += wrapped(text);
        lines.append(QString());
    }
    return lines;
}

} // namespace

QList<SamplePaper> samplePapers()
{
    QList<SamplePaper> papers;
    for (const QString &line : QString::fromUtf8(kPapers).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(u'|');
        papers.append({.title = fields[0],
                       .authors = fields[1],
                       .year = fields[2].toInt(),
                       .tags = fields[3].split(QStringLiteral(", ")),
                       .abstract = fields[4]});
    }
    return papers;
}

QString writeSamplePdf(const SamplePaper &paper, const QString &folder)
{
    PdfBuilder builder;
    builder.title(PdfBuilder::utf16(paper.title)).author(PdfBuilder::utf16(paper.authors));
    QStringList first{QString(), QString()}; // below the band
    first += wrapped(paper.title);
    first += {QString(), paper.authors, QString::number(paper.year), QString()};
    builder.page(PdfPage{
        .lines = indented(first + bodyOf(paper, 1)), .mediaBox = kSheet, .drawing = drawingOf(paper)});
    const int pages = 2 + static_cast<int>(qHash(paper.title, 1) % 14);
    for (int page = 2; page <= pages; ++page)
        builder.page(PdfPage{.lines = indented(bodyOf(paper, page)), .mediaBox = kSheet});
    QString name = paper.title.toLower();
    name.replace(QRegularExpression(QStringLiteral("[^a-z0-9]+")), QStringLiteral("-"));
    QFile file(folder + u'/' + name + u".pdf");
    if (file.open(QIODevice::WriteOnly))
        file.write(builder.build());
    return file.fileName();
}
