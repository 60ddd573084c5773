#include "app/SidebarCounts.h"

#include "support/ViewModelFixture.h"

class SidebarCountsTest : public testing::Test, protected ViewModelFixture
{
protected:
    qint64 countOf(const SidebarItem &item) { return vm().sidebarCounts().counts.value().value(item); }
    void count() { waitFor(vm().sidebarCounts().load()); }

    const SidebarItem m_all;
    const SidebarItem m_reading{.kind = SidebarItem::Kind::CurrentlyReading, .tag = {}};
    const SidebarItem m_recent{.kind = SidebarItem::Kind::RecentlyImported, .tag = {}};
    const QString m_topology = QStringLiteral("Topology");
};

TEST_F(SidebarCountsTest, CountsThePapersOfEveryRow)
{
    addPaper(QStringLiteral("a"), QStringLiteral("a"), {m_topology, QStringLiteral("_currently_reading")});
    addPaper(QStringLiteral("b"), QStringLiteral("b"), {m_topology});
    addPaper(QStringLiteral("c"), QStringLiteral("c"));
    count();
    EXPECT_EQ(countOf(m_all), 3);
    EXPECT_EQ(countOf(m_reading), 1);
    EXPECT_EQ(countOf(SidebarItem::ofTag(m_topology)), 2);
    EXPECT_EQ(countOf(m_recent), 0) << "nothing was imported yet";
}

TEST_F(SidebarCountsTest, CountsThePapersSinceTheLastImport)
{
    addPaper(QStringLiteral("a"), QStringLiteral("a"));
    preferences.setText(QLatin1String(kLastImportDateKey), toStoredTime(clock.now()));
    static_cast<void>(storePaper(QStringLiteral("/new.pdf")).has_value());
    count();
    EXPECT_EQ(countOf(m_recent), 1);
}

TEST_F(SidebarCountsTest, AreZeroForATagThatNoPaperCarries)
{
    waitFor(vm().createTag(m_topology));
    EXPECT_EQ(countOf(SidebarItem::ofTag(m_topology)), 0);
}

TEST_F(SidebarCountsTest, FollowTheTags)
{
    addPaper(QStringLiteral("a"), QStringLiteral("a"));
    load();
    waitFor(vm().addTag(QStringLiteral("a"), m_topology));
    EXPECT_EQ(countOf(SidebarItem::ofTag(m_topology)), 1);
}

TEST_F(SidebarCountsTest, AreKeptWhenCountingFails)
{
    addPaper(QStringLiteral("a"), QStringLiteral("a"));
    count();
    library.run(QStringLiteral("DROP TABLE tags"));
    testing::internal::CaptureStdout();
    count();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "SidebarCounts: Error counting papers: no such table: tags\n");
    EXPECT_EQ(countOf(m_all), 1);
}
