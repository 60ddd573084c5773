#include "desktop/DesktopProgram.h"

#include "app/LibraryCommands.h"
#include "app/OpenRequestArguments.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace
{

/// Calls `use` with the library window as soon as the event loop runs with it on the screen.
class UseOfTheWindow : public QObject
{
public:
    explicit UseOfTheWindow(std::function<void(QWidget *window)> use)
        : m_use(std::move(use))
    {
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show && object->objectName() == u"libraryWindow") {
            auto *window = static_cast<QWidget *>(object);
            QMetaObject::invokeMethod(
                window, [this, window] { m_use(window); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    std::function<void(QWidget *)> m_use;
};

} // namespace

class DesktopProgramTest : public testing::Test
{
protected:
    void SetUp() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("XDG_DATA_HOME", m_home.path(QStringLiteral("data")).toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_home.path(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", m_home.path().toLocal8Bit());
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    }

    int run(std::function<void(QWidget *window)> use)
    {
        UseOfTheWindow watch(std::move(use));
        int argc = 1;
        char name[] = "quirevault-desktop";
        char *argv[] = {name, nullptr};
        DesktopProgram program(argc, argv);
        program.application().installEventFilter(&watch);
        return program.run();
    }

    /// The session of a program that crashed twice, just after it had opened this one paper.
    void leaveBadSession()
    {
        ASSERT_TRUE(QDir().mkpath(m_home.path(QStringLiteral("data/Quirevault"))));
        const PDFOpenRequest request{.id = QUuid::createUuid(),
                                     .url = QUrl::fromLocalFile(m_home.path(QStringLiteral("a.pdf")))};
        m_home.write(m_session, '[' + toBytes(request) + ']');
        ASSERT_TRUE(QDir().mkpath(m_home.path(QStringLiteral("config/Quirevault"))));
        m_home.write(QStringLiteral("config/Quirevault/Quirevault.ini"),
                     "[General]\nbadEndsAfterRestoring=2\n");
    }

    /// Answers the question whether papers that may have ended the program are to be opened again.
    static void answer(const QWidget *window, QMessageBox::ButtonRole role)
    {
        auto *question = window->findChild<QMessageBox *>(QStringLiteral("askToReopen"));
        ASSERT_TRUE(question);
        EXPECT_TRUE(question->text().startsWith(u"Quirevault ended unexpectedly twice"));
        for (QAbstractButton *button : question->buttons()) {
            if (question->buttonRole(button) == role)
                button->click();
        }
    }

    const QString m_session = QStringLiteral("data/Quirevault/session.json");
    TemporaryFolder m_home;
};

TEST_F(DesktopProgramTest, EndsWhenItsLastWindowIsClosed)
{
    bool wasShown = false;
    EXPECT_EQ(run([&](QWidget *window) {
                  wasShown = window->isVisible();
                  window->close();
              }),
              0);
    EXPECT_TRUE(wasShown);
    EXPECT_TRUE(QFile::exists(m_home.path(QStringLiteral("data/Quirevault/library.db"))));
    EXPECT_TRUE(QFile::exists(m_home.path(QStringLiteral("data/Quirevault/session.json"))));
}

TEST_F(DesktopProgramTest, GoesOnWhileAnotherOfItsWindowsIsOpen)
{
    bool endedTooSoon = true;
    QPointer<QWidget> other;
    run([&](QWidget *window) {
        other = new QWidget; // as a reader window would be
        other->setAttribute(Qt::WA_DeleteOnClose);
        other->show();
        window->close();
        QTimer::singleShot(0, other, [&] {
            endedTooSoon = false;
            other->close();
        });
    });
    EXPECT_FALSE(endedTooSoon);
}

TEST_F(DesktopProgramTest, LeavesPapersClosedThatThePersonDoesNotWantBack)
{
    leaveBadSession();
    run([&](QWidget *window) {
        answer(window, QMessageBox::RejectRole);
        window->close();
    });
    QFile session(m_home.path(m_session));
    ASSERT_TRUE(session.open(QIODevice::ReadOnly));
    EXPECT_EQ(session.readAll(), "[]");
}

TEST_F(DesktopProgramTest, OpensPapersAgainThatThePersonWantsBack)
{
    leaveBadSession();
    QPointer<QWidget> reader;
    run([&](QWidget *window) {
        answer(window, QMessageBox::AcceptRole);
        for (QWidget *other : QApplication::topLevelWidgets()) {
            if (other->objectName() == u"readerWindow")
                reader = other;
        }
        EXPECT_TRUE(reader);
        window->close();
        if (reader)
            reader->close();
    });
}
