// What the real engine is allowed, and what becomes of documents that ask for more.
#include "pdf/EngineDocument.h"
#include "platform/InputFile.h"
#include "support/PdfBuilder.h"
#include "support/Printing.h"
#include "support/Programs.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace
{
using OpenResult = Result<std::unique_ptr<PDFDocument>>;

OpenResult opened(const QByteArray &pdf)
{
    const TemporaryFolder folder;
    const Result<InputFile> file = InputFile::open(folder.write(QStringLiteral("sample.pdf"), pdf));
    return engineOpener({.program = pdfEngineProgram()})(*file, {});
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The process whose parent this one is; 0 when there is none.
pid_t childProcess()
{
    const QByteArray parent = "\nPPid:\t" + QByteArray::number(getpid()) + '\n';
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (contentOf(u"/proc/" + name + u"/status").contains(parent))
            return name.toInt();
    }
    return 0;
}

[[maybe_unused]] bool hasChildren()
{
    return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

QByteArray limitsOf(pid_t process)
{
    return contentOf(QStringLiteral("/proc/%1/limits").arg(process));
}

QByteArray nested(int levels)
{
    return QByteArray(levels, '[') + QByteArray(levels, ']');
}

/// Either an error of this page alone or an answer, but no lost engine.
void expectEngineSurvives(PDFDocument &document)
{
    for (qint64 page = 0; page < document.pageCount(); ++page) {
        const Result<QByteArray> text = document.pageText(page);
        EXPECT_TRUE(text || isPDFError(text.error(), PDFErrorCode::PageUnavailable));
        const Result<PDFBitmap> picture = document.thumbnail(page, 300, 400);
        EXPECT_TRUE(picture || isPDFError(picture.error(), PDFErrorCode::PageUnavailable));
    }
}
} // namespace

TEST(EngineConfinement, HoldsForEveryThreadOfTheEngine)
{
    const OpenResult document = opened(PdfBuilder().page({QStringLiteral("Word")}).build());
    ASSERT_TRUE(document);
    const pid_t engine = childProcess();
    ASSERT_GT(engine, 0);
    const QDir threads(QStringLiteral("/proc/%1/task").arg(engine));
    const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    EXPECT_GE(names.size(), 2);
    for (const QString &name : names) {
        const QByteArray status = contentOf(threads.filePath(name + u"/status"));
        EXPECT_TRUE(status.contains("\nSeccomp:\t2\n")) << status.toStdString();
        EXPECT_TRUE(status.contains("\nNoNewPrivs:\t1\n")) << status.toStdString();
    }
}

TEST(EngineConfinement, LimitsTheEngine)
{
    const OpenResult document = opened(PdfBuilder().page({QStringLiteral("Word")}).build());
    ASSERT_TRUE(document);
    const std::string limits = limitsOf(childProcess()).toStdString();
    EXPECT_THAT(limits, testing::ContainsRegex("Max cpu time +600 +600 "));
    EXPECT_THAT(limits, testing::ContainsRegex("Max core file size +0 +0 "));
    EXPECT_THAT(limits, testing::ContainsRegex("Max file size +0 +0 "));
    EXPECT_THAT(limits, testing::ContainsRegex("Max processes +0 +0 "));
    EXPECT_THAT(limits, testing::ContainsRegex("Max open files +6 +6 "));
}

TEST(EngineConfinement, DocumentsNestedWithoutMeasureDoNotEndTheEngine)
{
    constexpr int kLevels = 100'000;
    const QByteArray arrays = nested(kLevels);
    const QByteArray dictionaries = QByteArray("<</A").repeated(kLevels) + QByteArray(">>").repeated(kLevels);
    for (const QByteArray &deep : {QByteArray("/Deep " + arrays), QByteArray("/Deep" + dictionaries),
                                   QByteArray("/Contents " + arrays)}) {
        const OpenResult document =
            opened(PdfBuilder().page(PdfPage{.entries = deep}).page({QStringLiteral("Second")}).build());
        ASSERT_TRUE(document) << document.error().message().toStdString();
        expectEngineSurvives(**document);
        EXPECT_EQ((*document)->pageText(1).value_or(QByteArray()), QByteArray("Second\n"));
    }
}

TEST(EngineConfinement, ContentNestedWithoutMeasureDoesNotEndTheEngine)
{
    constexpr int kLevels = 100'000;
    for (const QByteArray &drawing : {QByteArray(nested(kLevels) + " TJ"), QByteArray("q ").repeated(kLevels),
                                      QByteArray("/Span BMC ").repeated(kLevels)}) {
        const OpenResult document =
            opened(PdfBuilder().page(PdfPage{.drawing = drawing}).page({QStringLiteral("Second")}).build());
        ASSERT_TRUE(document) << document.error().message().toStdString();
        expectEngineSurvives(**document);
        EXPECT_EQ((*document)->pageText(1).value_or(QByteArray()), QByteArray("Second\n"));
    }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(EngineConfinement, ADocumentThatNeedsTooMuchMemoryIsAnErrorAndLeavesNoProcess)
{
    // One string of 64 MiB, and just not as much room in the engine.
    const QByteArray drawing = "BT /F1 12 Tf (" + QByteArray(64 << 20, 'x') + ") Tj ET";
    {
        const OpenResult document =
            opened(PdfBuilder().page(PdfPage{.drawing = drawing}).page({QStringLiteral("Second")}).build());
        ASSERT_TRUE(document) << document.error().message().toStdString();
        const pid_t engine = childProcess();
        ASSERT_GT(engine, 0);
        // The engine's stack alone is 256 MiB of address space, used or not.
        const rlimit tight = {rlim_t(340) << 20, rlim_t(340) << 20};
        ASSERT_EQ(prlimit(engine, RLIMIT_AS, &tight, nullptr), 0);
        const Result<QByteArray> text = (*document)->pageText(0);
        ASSERT_FALSE(text);
        EXPECT_TRUE(isPDFError(text.error(), PDFErrorCode::PageUnavailable));
        EXPECT_EQ(text.error().reason, QStringLiteral("it needs too much memory"));
        EXPECT_EQ((*document)->pageText(1).value_or(QByteArray()), QByteArray("Second\n"));
    }
    EXPECT_FALSE(hasChildren());
}
#endif
