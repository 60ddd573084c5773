#include "desktop/DesktopProgram.h"

#include "app/LibraryCommands.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QFile>
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
