#include "support/Program.h"
#include "support/Programs.h"

namespace
{
/// Far beyond any run; a test that reaches it has found a hang.
constexpr int kHangMs = 280'000;
} // namespace

Program::Program()
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    setEnvironment(QStringLiteral("XDG_DATA_HOME"), m_home.path(QStringLiteral("data")));
    setEnvironment(QStringLiteral("XDG_CONFIG_HOME"), m_home.path(QStringLiteral("config")));
    setEnvironment(QStringLiteral("QUIREVAULT_OPENLIBRARY_URL"), QString());
}

ProgramRun Program::run(const QStringList &arguments) const
{
    return run(arguments, [](QProcess &) {});
}

ProgramRun Program::run(const QStringList &arguments, const std::function<void(QProcess &)> &meanwhile) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setWorkingDirectory(m_workingFolder);
    if (m_childSetup)
        process.setChildProcessModifier(m_childSetup);
    process.start(commandLineProgram(), arguments);
    EXPECT_TRUE(process.waitForStarted());
    meanwhile(process);
    const bool ended = process.waitForFinished(kHangMs) || process.state() == QProcess::NotRunning;
    EXPECT_TRUE(ended) << "The program did not end";
    ProgramRun run;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    if (ended && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    return run;
}
