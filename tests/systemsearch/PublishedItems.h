#pragma once

#include "platform/SystemSearchIndex.h"
#include "support/TemporaryFolder.h"
#include "systemsearch/ItemFile.h"
#include "systemsearch/ItemSearch.h"
#include "systemsearch/ItemWriting.h"

#include <gtest/gtest.h>

struct ItemText {
    QString title;
    QStringList names = {};
    QStringList keywords = {};
    int year = 0;
};

/// An item as it is published of a paper.
inline SearchableItem item(const QString &id, const ItemText &text)
{
    SearchableItem item{
        .uniqueIdentifier = id,
        .domainIdentifier = QStringLiteral("org.quirevault.Quirevault.library"),
        .contentType = QStringLiteral("application/pdf"),
        .title = text.title,
        .authorNames = text.names,
        .contentDescription = u"Research paper by " + text.names.join(u", "),
        .keywords = text.keywords,
        .contentCreationDate = {},
    };
    if (text.year != 0)
        item.contentCreationDate = QDate(text.year, 1, 1).startOfDay();
    return item;
}

inline QStringList words(const QString &text)
{
    return text.split(u' ');
}

/// A file of published items and a search in it.
class PublishedItems : public testing::Test
{
protected:
    SideDatabase &database()
    {
        const Result<SideDatabase *> opened = m_file.forWriting();
        EXPECT_TRUE(opened) << (opened ? QString() : opened.error().message()).toStdString();
        return **opened;
    }

    void put(const QList<SearchableItem> &items) { EXPECT_TRUE(putItems(database(), items)); }

    QStringList find(const QString &text) { return m_search.find(words(text)); }

    /// How many times anything in the file was written, ever.
    qint64 changes() { return database().number(QStringLiteral("SELECT total_changes()")).value(); }

    TemporaryFolder m_folder;
    const QString m_path = m_folder.path(QStringLiteral("search.db"));
    ItemFile m_file{m_path};
    ItemSearch m_search{m_path};
};
