#include "screenshots/UpdateStates.h"

#include "support/UpdaterFixture.h"
#include "ui/UpdateWindow.h"

namespace
{

constexpr char kNotes[] = R"(## Reading

- Passages that a search found are lit **on every page** they reach.
- Pages of large scans appear in half the time.

## Library

- Tags can be renamed while papers are being imported.
- A moved folder is recognised as a whole.

Thanks to all who reported; see the [whole list](https://quirevault.org/changes).)";

/// Goes through the states of an updater whose server does as it is told.
class UpdateStates : public UpdaterFixture
{
public:
    UpdateStates(QWidget *window, Camera &camera)
        : m_window(window)
        , m_camera(camera)
    {
        onWindow = [window](Updater &shown, Updater::Attention attention) {
            showUpdateWindow(shown, attention, window);
        };
    }

    void takeChecks()
    {
        offer({.version = "1.0"});
        {
            Hold hold(*this);
            updater().checkForUpdates();
            take("update-checking");
        }
        take("update-up-to-date");
        updater().dismiss();
        answers.clear();
        updater().checkForUpdates();
        take("update-check-failed");
        updater().dismiss();
    }

    void takeDownload()
    {
        FeedItem item = offerPackage(QByteArray(12'400'000, 'p'));
        item.more = "<description q:format=\"markdown\"><![CDATA[" + QByteArray(kNotes) + "]]></description>";
        offer(item);
        updater().checkForUpdates();
        take("update-available");
        {
            Hold hold(*this);
            updater().download();
            updater().receivedBytes = 3'900'000;
            take("update-downloading");
        }
        take("update-downloaded");
        updater().dismiss();
        answers["/package.deb"] = httpAnswer("200 OK", QByteArray(12'400'000, 'x'));
        updater().checkForUpdates();
        Camera::settle();
        updater().download();
        take("update-refused");
        updater().dismiss();
    }

    void takeWithoutService()
    {
        builtInFeed.clear();
        makeUpdater().checkForUpdates();
        take("update-no-service");
        updater().dismiss();
    }

private:
    void take(const char *name) { m_camera.take(m_window, QLatin1String(name)); }

    QWidget *m_window;
    Camera &m_camera;
};

} // namespace

void takeUpdateStates(QWidget *window, Camera &camera)
{
    UpdateStates states(window, camera);
    states.takeChecks();
    states.takeDownload();
    states.takeWithoutService();
}
