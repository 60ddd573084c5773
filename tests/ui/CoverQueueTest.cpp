#include "ui/CoverQueue.h"

#include "platform/Paths.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <QPainter>

namespace
{
CoverQueue::Waiting asked(int number)
{
    CoverQueue::Waiting waiting;
    waiting.question = {QString::number(number), QSize(10, 10)};
    return waiting;
}

QString takenFrom(CoverQueue &queue)
{
    const auto waiting = queue.takeNewest();
    return waiting ? waiting->question.path : QStringLiteral("nothing");
}

QString writeCover(const TemporaryFolder &folder, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    const QString path = folder.path(QStringLiteral("cover.jpg"));
    EXPECT_TRUE(image.save(path));
    return path;
}
} // namespace

TEST(CoverQueue, AnswersTheNewestQuestionFirst)
{
    CoverQueue queue;
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(queue.ask(asked(i)));
    EXPECT_EQ(takenFrom(queue), u"2");
    EXPECT_EQ(takenFrom(queue), u"1");
    EXPECT_EQ(takenFrom(queue), u"0");
    EXPECT_EQ(takenFrom(queue), u"nothing");
}

TEST(CoverQueue, MovesAQuestionThatIsAskedAgainToTheFront)
{
    CoverQueue queue;
    queue.ask(asked(0));
    queue.ask(asked(1));
    EXPECT_FALSE(queue.ask(asked(0))) << "its worker is under way";
    EXPECT_EQ(takenFrom(queue), u"0");
    EXPECT_EQ(takenFrom(queue), u"1");
    EXPECT_EQ(takenFrom(queue), u"nothing");
}

TEST(CoverQueue, AsksOnceWhileAQuestionIsBeingAnswered)
{
    CoverQueue queue;
    queue.ask(asked(0));
    EXPECT_EQ(takenFrom(queue), u"0");
    EXPECT_FALSE(queue.ask(asked(0)));
    EXPECT_EQ(takenFrom(queue), u"nothing");
    EXPECT_FALSE(queue.settle(asked(0).question, 0));
    EXPECT_TRUE(queue.ask(asked(0)));
}

TEST(CoverQueue, AsksAgainWhatWasAskedAnewWhileItWasAnswered)
{
    CoverQueue queue;
    queue.ask(asked(0));
    queue.takeNewest();
    CoverQueue::Waiting later = asked(0);
    later.round = 1;
    EXPECT_FALSE(queue.ask(later));
    EXPECT_TRUE(queue.settle(later.question, 0));
    const auto again = queue.takeNewest();
    ASSERT_TRUE(again);
    EXPECT_EQ(again->round, 1);
    EXPECT_FALSE(queue.settle(later.question, 1));
    EXPECT_EQ(takenFrom(queue), u"nothing");
}

TEST(CoverQueue, ForgetsTheOldestOfTooMany)
{
    CoverQueue queue;
    for (int i = 0; i <= CoverQueue::kMostWaiting; ++i)
        queue.ask(asked(i));
    QStringList taken;
    while (const auto waiting = queue.takeNewest())
        taken.append(waiting->question.path);
    EXPECT_EQ(taken.size(), CoverQueue::kMostWaiting);
    EXPECT_EQ(taken.last(), u"1") << "0 is forgotten";
    EXPECT_TRUE(queue.ask(asked(0))) << "and may be asked again";
}

TEST(CoverQueue, ForgetsAllWhenCleared)
{
    CoverQueue queue;
    queue.ask(asked(0));
    queue.clear();
    EXPECT_EQ(takenFrom(queue), u"nothing");
}

TEST(AnswerFromDisk, FitsTheCoverIntoTheBox)
{
    const TemporaryFolder folder;
    const QString path = writeCover(folder, {300, 400});
    EXPECT_EQ(answerFromDisk({path, {168, 224}}, 0).image->size(), QSize(168, 224));
    EXPECT_EQ(answerFromDisk({path, {336, 448}}, 0).image->size(), QSize(336, 448));
    EXPECT_EQ(answerFromDisk({writeCover(folder, {300, 100}), {168, 224}}, 0).image->size(), QSize(168, 56));
}

TEST(AnswerFromDisk, KeepsASliverVisible)
{
    const TemporaryFolder folder;
    EXPECT_EQ(answerFromDisk({writeCover(folder, {4000, 2}), {168, 224}}, 0).image->size(), QSize(168, 1));
}

TEST(AnswerFromDisk, DoesNotReadAPictureThatIsAsItWas)
{
    const TemporaryFolder folder;
    const QString path = writeCover(folder, {30, 40});
    const qint64 modified = answerFromDisk({path, {10, 10}}, 0).modified;
    EXPECT_NE(modified, 0);
    EXPECT_FALSE(answerFromDisk({path, {10, 10}}, modified).image);
    EXPECT_TRUE(answerFromDisk({path, {10, 10}}, modified - 1).image);
}

TEST(AnswerFromDisk, FindsTheCoverOfALibraryThatWasMoved)
{
    const TemporaryFolder folder;
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", folder.path().toLocal8Bit());
    ASSERT_TRUE(QDir().mkpath(coversFolder()));
    ASSERT_TRUE(QFile::rename(writeCover(folder, {30, 40}), QString(coversFolder() + u"/0a.jpg")));
    const CoverAnswer answer =
        answerFromDisk({QStringLiteral("/no/such/home/Quirevault/covers/0a.jpg"), {30, 40}}, 0);
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
    EXPECT_NE(answer.modified, 0);
    ASSERT_TRUE(answer.image);
    EXPECT_EQ(answer.image->size(), QSize(30, 40));
}

TEST(AnswerFromDisk, HasNoPictureOfAMissingOrBrokenCover)
{
    const TemporaryFolder folder;
    const CoverAnswer missing = answerFromDisk({folder.path(QStringLiteral("none.jpg")), {10, 10}}, 0);
    EXPECT_EQ(missing.modified, 0);
    EXPECT_TRUE(missing.image->isNull());
    const CoverAnswer broken =
        answerFromDisk({folder.write(QStringLiteral("b.jpg"), "no picture"), {10, 10}}, 0);
    EXPECT_NE(broken.modified, 0);
    EXPECT_TRUE(broken.image->isNull());
}

TEST(AnswerFromDisk, TellsWhetherAFileIsThere)
{
    const TemporaryFolder folder;
    EXPECT_NE(answerFromDisk({folder.write(QStringLiteral("a.pdf"), "x"), {}}, 0).modified, 0);
    EXPECT_EQ(answerFromDisk({folder.path(QStringLiteral("b.pdf")), {}}, 0).modified, 0);
    EXPECT_EQ(answerFromDisk({folder.path(), {}}, 0).modified, 0) << "a folder is no PDF";
}
