#pragma once

#include "app/Updater.h"
#include "platform/Preferences.h"
#include "support/FakeClock.h"
#include "support/RecordingFileOpener.h"
#include "support/UpdateFixture.h"

#include <future>
#include <memory>
#include <utility>

/// An updater of a program of version 1.0 over a server on this machine and a clock that the test drives.
struct UpdaterFixture : UpdateFixture {
    UpdaterFixture()
    {
        qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
        makeUpdater();
    }
    ~UpdaterFixture() { instance.reset(); }

    /// An updater in place of the one that is there, as after a new start of the program.
    Updater &makeUpdater()
    {
        instance.reset();
        instance = std::make_unique<Updater>(
            Updater::Collaborators{.http = http,
                                   .preferences = preferences,
                                   .clock = clock,
                                   .opener = opener,
                                   .program = program,
                                   .builtInFeed = builtInFeed,
                                   .folder = packages,
                                   .timeouts = timeouts,
                                   .showWindow = [this](Updater &updater, Updater::Attention attention) {
                                       windowsShown.append(attention);
                                       if (onWindow)
                                           onWindow(updater, attention);
                                   }});
        return *instance;
    }
    Updater &updater() { return *instance; }

    /// Holds the server's answers back while it lives.
    class Hold
    {
    public:
        explicit Hold(UpdateFixture &fixture)
            : m_fixture(fixture)
        {
            m_fixture.intercept = [released = m_release.get_future().share()](const auto &) {
                released.wait();
                return false;
            };
        }
        ~Hold() { release(); }
        void release()
        {
            if (!std::exchange(m_isReleased, true))
                m_release.set_value();
        }

    private:
        UpdateFixture &m_fixture;
        std::promise<void> m_release;
        bool m_isReleased = false;
    };

    QString packages = folder.path(QStringLiteral("Downloads"));
    QString builtInFeed = feedAddress();
    UpdateTimeouts timeouts;
    FakeClock clock;
    Preferences preferences;
    RecordingFileOpener opener;
    QList<Updater::Attention> windowsShown;
    std::function<void(Updater &updater, Updater::Attention attention)> onWindow;
    std::unique_ptr<Updater> instance;
};
