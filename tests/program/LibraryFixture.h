#pragma once

#include "support/PdfBuilder.h"
#include "support/Printing.h"
#include "support/Program.h"
#include "support/TemporaryFolder.h"

#include <QJsonArray>
#include <QJsonObject>
#include <gtest/gtest.h>

/// A program with a library of its own and a folder of papers to import.
class LibraryFixture : public testing::Test
{
protected:
    QString paper(const QString &name, const QStringList &lines, const QByteArray &title = {},
                  const QByteArray &author = {})
    {
        PdfBuilder builder;
        if (!title.isEmpty())
            builder.title(title);
        if (!author.isEmpty())
            builder.author(author);
        return m_papers.write(name, builder.page(lines).build());
    }

    ProgramRun import(const QString &path)
    {
        return m_program.run({QStringLiteral("import"), QStringLiteral("--json"), path});
    }
    ProgramRun importAll() { return import(m_papers.path()); }

    /// The ids of a list's papers by their titles.
    QMap<QString, QString> idsByTitle()
    {
        QMap<QString, QString> ids;
        for (const QJsonValue paper :
             m_program.run({QStringLiteral("list"), QStringLiteral("--json")}).json().array())
            ids.insert(paper[QLatin1String("title")].toString(), paper[QLatin1String("id")].toString());
        return ids;
    }

    Program m_program;
    TemporaryFolder m_papers;
};
