#pragma once

#include <QProperty>
#include <QString>
#include <functional>

/// Looks for newer versions of the program. Main thread.
class Updater
{
public:
    /// Shows the outcome of a check to the person who asked for it.
    using ShowResult = std::function<void(const QString &result)>;

    explicit Updater(ShowResult showResult);

    /// Whether a check can find anything out: false as long as no update service is configured.
    QProperty<bool> canCheckForUpdates;

    /// Checks, and shows the outcome; without a service, that there is none.
    void checkForUpdates();

private:
    ShowResult m_showResult;
};
