#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// A folder that goes with the test.
class TemporaryFolder
{
public:
    QString path(const QString &name = {}) const
    {
        return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
    }

    /// Writes a file and answers its path.
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << file.errorString().toStdString();
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};
