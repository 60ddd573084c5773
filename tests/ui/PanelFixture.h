#pragma once

#include "support/RecordingFileOpener.h"
#include "support/ViewModelFixture.h"
#include "ui/CoverCache.h"
#include "ui/PaperDetailPanel.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QtTest/QTest>
#include <gtest/gtest.h>

/// A detail panel over a real library, in a window that has the focus.
class PanelFixture : public testing::Test, protected ViewModelFixture
{
protected:
    ~PanelFixture() override { panel.reset(); }

    /// Shows the panel with the paper selected.
    void show(const std::optional<Paper> &paper)
    {
        load();
        vm().select(paper);
        panel->resize(320, 900);
        panel->show();
        QApplication::setActiveWindow(panel.get());
        QCoreApplication::processEvents();
    }
    void showPaper(const QStringList &tags = {})
    {
        show(addPaper(QStringLiteral("p"), QStringLiteral("On Graphs"), tags, QStringLiteral("Ada Moss"),
                      1998));
    }

    template <typename Widget = QWidget> Widget *find(const char *name)
    {
        auto *found = panel->findChild<Widget *>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void click(const char *name) { QTest::mouseClick(find(name), Qt::LeftButton); }
    /// Replaces what is in the field by typing.
    void type(const char *field, const QString &text)
    {
        find<QLineEdit>(field)->selectAll();
        QTest::keyClick(find(field), Qt::Key_Backspace);
        QTest::keyClicks(find(field), text);
    }
    /// Waits until the selected paper is as `condition` says.
    template <typename Condition> void waitForPaper(Condition condition)
    {
        waitUntil(vm().selectedPaper,
                  [&](const std::optional<Paper> &paper) { return paper && condition(*paper); });
    }
    Paper stored() { return paper(QStringLiteral("p")).value(); }

    RecordingFileOpener files;
    CoverCache covers;
    QList<PDFOpenRequest> requests;
    std::unique_ptr<PaperDetailPanel> panel = std::make_unique<PaperDetailPanel>(
        vm(), covers, [this](const PDFOpenRequest &request) { requests.append(request); }, nullptr,
        PaperDetailPanel::Surroundings{files, clock, library.bookmarkEvents});
};
