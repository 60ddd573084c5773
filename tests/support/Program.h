#pragma once

#include "support/TemporaryFolder.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <functional>

/// How a run of the program ended.
struct ProgramRun {
    int status = -1; ///< exit status; -1 when it was killed or did not end
    QString out;
    QString err;

    QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
};

/// The real `quirevault` with a library of its own that goes with the test. Book look-ups are off.
class Program
{
public:
    Program();

    ProgramRun run(const QStringList &arguments) const;
    /// Starts the program and gives the running process to `meanwhile` before waiting for its end.
    ProgramRun run(const QStringList &arguments, const std::function<void(QProcess &)> &meanwhile) const;

    QString dataFolder() const { return m_home.path(QStringLiteral("data/Quirevault")); }
    QString libraryPath() const { return dataFolder() + u"/library.db"; }
    void setEnvironment(const QString &name, const QString &value) { m_environment.insert(name, value); }
    void setWorkingFolder(const QString &path) { m_workingFolder = path; }
    /// Runs in the child before the program starts; only async-signal-safe calls.
    void setChildSetup(std::function<void()> setup) { m_childSetup = std::move(setup); }

private:
    TemporaryFolder m_home;
    QProcessEnvironment m_environment;
    QString m_workingFolder;
    std::function<void()> m_childSetup;
};
