// quirevault-screenshots FOLDER [SCALE]: writes a picture of every state of the library window and of reader
// windows into FOLDER, on the offscreen platform; at a scale other than 1, of the main ones.
#include "screenshots/Camera.h"
#include "screenshots/DarkPalette.h"
#include "screenshots/ReaderScenes.h"
#include "screenshots/Stage.h"
#include "screenshots/UpdateStates.h"
#include "ui/AboutPanel.h"
#include "ui/PaperDetailPanel.h"
#include "ui/ShortcutsWindow.h"
#include "ui/TagAlerts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QFileInfo>
#include <QHashFunctions>
#include <QMenu>
#include <QTemporaryDir>
#include <cstdio>

namespace
{

const auto kPaper = QStringLiteral("Passages before Papers: Ranking Evidence");

/// Goes through the states of one window.
class Session
{
public:
    Session(const QString &home, Camera &camera)
        : m_stage(home)
        , m_camera(camera)
    {
    }

    void takeEmptyLibrary()
    {
        m_stage.vm().loadPapers();
        take("empty");
        m_stage.vm().isLoading = true;
        take("loading");
        m_stage.vm().isLoading = false;
        m_stage.fillLibrary();
    }

    void takeMainStates()
    {
        take("grid");
        vm().select(m_stage.paper(kPaper));
        take("grid-selected");
        search(QStringLiteral("network"));
        take("results");
        search(QStringLiteral("title:zeppelin"));
        take("no-matches");
        search(QString());
        m_stage.part<PaperDetailPanel>("paperDetailPanel")->beginEditing();
        take("detail-editing");
        vm().select({});
        vm().select(m_stage.paper(kPaper));
        m_stage.window().resize(800, 700);
        take("narrow");
        m_stage.window().resize(1340, 840);
    }

    void takeImport()
    {
        QStringList found = m_stage.files();
        found.sort();
        vm().discoveredPDFs = found;
        vm().showImportPicker = true;
        take("review-sheet");
        vm().showImportPicker = false;

        vm().importingTotal = 120;
        vm().importingCount = 51;
        vm().importProgress = 51.0 / 120;
        vm().importStatus = QStringLiteral("Indexed: krylov-methods-for-the-impatient.pdf");
        vm().importTimeEstimate = QStringLiteral("~38s remaining");
        vm().isImporting = true;
        take("import-running");
        m_stage.window().close(); // asks
        take("alert-closing");
        vm().isImporting = false;

        const QString folder = QFileInfo(found.first()).path();
        vm().lastImportResult =
            IndexFilesResponse{.indexed = QStringList(49, QStringLiteral("id")),
                               .errors = {{QString(folder + u"/scan-0417.pdf"),
                                           QStringLiteral("Failed to load PDF: the file is damaged")},
                                          {QString(folder + u"/private.pdf"),
                                           QStringLiteral("Failed to load PDF: it needs a password")}}};
        take("alert-import-complete");
        m_stage.part<QAbstractButton>("showDetails")->click();
        take("import-failures");
        closeDialogs();
        vm().lastImportResult = std::nullopt;
    }

    void takeAlerts()
    {
        vm().errorMessage = QStringLiteral("The library database could not be opened.");
        take("alert-notice");
        vm().errorMessage = std::nullopt;
        vm().confirmDeletePaper = m_stage.paper(kPaper);
        take("alert-remove");
        vm().confirmDeletePaper = std::nullopt;
        vm().retagCount = 17;
        vm().retagTotal = 36;
        vm().retagProgress = 17.0 / 36;
        vm().isRetagging = true;
        take("retag-running");
        vm().isRetagging = false;
        vm().retagResult = QStringLiteral("Retagged 36 papers.");
        take("alert-retag-complete");
        vm().retagResult = std::nullopt;
        takeTagAlerts();
        showAboutPanel(&m_stage.window());
        take("about");
        closeDialogs();
        (new ShortcutsWindow(&m_stage.window()))->show();
        take("shortcuts");
        closeDialogs();
    }

    void takeUpdates() { takeUpdateStates(&m_stage.window(), m_camera); }

    void takeMenus()
    {
        auto *papers = m_stage.part<QAbstractItemView>("papers");
        openMenu(papers, papers->visualRect(papers->model()->index(1, 0)).center());
        take("menu-card");
        closePopups();
        auto *sidebar = m_stage.part<QAbstractItemView>("sidebarView");
        const QModelIndex tags = sidebar->model()->index(1, 0);
        openMenu(sidebar, sidebar->visualRect(sidebar->model()->index(2, 0, tags)).center());
        take("menu-tag");
        closePopups();
    }

    void takeDark()
    {
        const QPalette light = QApplication::palette();
        QApplication::setPalette(darkPalette());
        take("dark-grid");
        search(QStringLiteral("clock"));
        take("dark-results");
        search(QString());
        vm().errorMessage = QStringLiteral("The library database could not be opened.");
        take("dark-alert");
        vm().errorMessage = std::nullopt;
        QApplication::setPalette(light);
    }

    Stage &stage() { return m_stage; }

private:
    LibraryViewModel &vm() { return m_stage.vm(); }
    void take(const char *name) { m_camera.take(&m_stage.window(), QLatin1String(name)); }

    void takeTagAlerts()
    {
        auto *alerts = m_stage.window().findChild<TagAlerts *>();
        alerts->newTag();
        take("alert-new-tag");
        closeDialogs();
        alerts->renameTag(QStringLiteral("Physics"));
        take("alert-rename-tag");
        closeDialogs();
        alerts->deleteTag(QStringLiteral("Physics"));
        take("alert-delete-tag");
        closeDialogs();
        alerts->tagAll();
        take("alert-tag-all");
        closeDialogs();
    }

    /// Waits for what typing sets off.
    void search(const QString &query)
    {
        vm().queryText = query;
        Camera::settle(1000);
    }

    static void openMenu(QAbstractItemView *view, QPoint place)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &event);
    }

    static void closePopups()
    {
        while (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        Camera::settle(50);
    }

    void closeDialogs()
    {
        const auto dialogs = m_stage.window().findChildren<QDialog *>();
        for (QDialog *dialog : dialogs) {
            if (dialog->isVisible())
                dialog->reject();
        }
        Camera::settle(50);
    }

    Stage m_stage;
    Camera &m_camera;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return 2;
    const QByteArray scale = argc > 2 ? argv[2] : "1";
    QHashSeed::setDeterministicGlobalSeed(); // the same papers every time
    const QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", scale);
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("QUIREVAULT_OPENLIBRARY_URL", "");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false); // or nothing would be waited for after that

    const bool isWhole = scale == "1";
    Camera camera(QString::fromLocal8Bit(argv[1]),
                  isWhole ? QString() : QString(u"scale-" + QLatin1String(scale) + u'-'));
    Session session(home.path(), camera);
    session.takeEmptyLibrary();
    session.takeMainStates();
    session.takeMenus();
    session.takeDark();
    if (isWhole) {
        session.takeImport();
        session.takeAlerts();
        session.takeUpdates();
    }
    ReaderScenes scenes(session.stage(), camera);
    scenes.takeReading();
    if (isWhole)
        scenes.takeRest();
    return 0;
}
