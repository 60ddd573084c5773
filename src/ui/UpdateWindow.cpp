#include "ui/UpdateWindow.h"

#include "ui/ReducedMotion.h"
#include "ui/ReleaseNotesView.h"
#include "ui/TextStyles.h"
#include "ui/UpdateTexts.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDesktopServices>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kTextWidthPx = 440;   ///< chosen: lines of notes that read well
constexpr int kNotesHeightPx = 220; ///< chosen: a screen of 768 lines has room for all of it
constexpr int kBarSteps = 1000;     ///< finer than its pixels

QLabel *plainLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}
} // namespace

UpdateWindow::UpdateWindow(Updater &updater, QWidget *parent)
    : QDialog(parent)
    , m_updater(updater)
    , m_heading(plainLabel(QStringLiteral("updateHeading"), this))
    , m_text(plainLabel(QStringLiteral("updateText"), this))
    , m_notes(new ReleaseNotesView(this))
    , m_bar(new QProgressBar(this))
    , m_count(plainLabel(QStringLiteral("updateCount"), this))
    , m_daily(new QCheckBox(QStringLiteral("Look for updates every day"), this))
{
    setObjectName(QStringLiteral("updateWindow"));
    setWindowTitle(QStringLiteral("Software Update"));
    setAttribute(Qt::WA_DeleteOnClose);
    layOut();
    m_daily->setObjectName(QStringLiteral("dailyUpdates"));
    m_daily->setChecked(m_updater.settings().checksDaily());
    connect(m_daily, &QCheckBox::toggled, this,
            [this](bool isOn) { m_updater.settings().setChecksDaily(isOn); });
    connect(m_notes, &ReleaseNotesView::webLinkFollowed, this,
            [](const QUrl &address) { QDesktopServices::openUrl(address); });
    connect(this, &QDialog::finished, this, [this] {
        m_observers.clear(); // what follows concerns no window that is going
        disconnect(this, &QObject::destroyed, &m_updater, nullptr);
        m_updater.dismiss();
    });
    // It goes unclosed with the window that it lies over.
    connect(this, &QObject::destroyed, &m_updater, &Updater::dismiss);
    m_observers.push_back(m_updater.phase.addNotifier([this] { follow(); }));
    m_observers.push_back(m_updater.problem.addNotifier([this] { showTexts(); }));
    m_observers.push_back(m_updater.receivedBytes.addNotifier([this] { showProgress(); }));
    follow();
}

void UpdateWindow::layOut()
{
    m_heading->setFont(headingFont(font()));
    m_notes->setMinimumHeight(kNotesHeightPx);
    m_bar->setObjectName(QStringLiteral("updateProgress"));
    m_bar->setAccessibleName(QStringLiteral("Progress"));
    m_bar->setTextVisible(false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 18);
    layout->setSpacing(10);
    layout->addStrut(kTextWidthPx);
    layout->addWidget(m_heading);
    layout->addWidget(m_text);
    layout->addWidget(m_notes, 1);
    layout->addWidget(m_bar);
    layout->addWidget(m_count);
    layout->addSpacing(4);
    layout->addWidget(m_daily);
    layout->addSpacing(4);
    layout->addLayout(makeButtons());
}

QHBoxLayout *UpdateWindow::makeButtons()
{
    auto *row = new QHBoxLayout;
    const auto add = [&](const char *name, const QString &text, auto run) {
        auto *button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        connect(button, &QPushButton::clicked, this, run);
        row->addWidget(button);
        return button;
    };
    m_buttons.skip = add("skipUpdate", QStringLiteral("Skip This Version"), [this] { m_updater.skip(); });
    row->addStretch();
    m_buttons.later = add("updateLater", QStringLiteral("Later"), [this] { close(); });
    m_buttons.close = add("closeUpdate", QStringLiteral("Close"), [this] { close(); });
    m_buttons.cancel = add("cancelUpdate", QStringLiteral("Cancel"), [this] {
        m_buttons.cancel->setEnabled(false); // until the worker has heard
        m_updater.cancel();
    });
    m_buttons.tryAgain = add("retryUpdate", QStringLiteral("Try Again"), [this] { m_updater.tryAgain(); });
    m_buttons.showInFolder =
        add("showPackage", QStringLiteral("Show in Folder"), [this] { m_updater.showPackageInFolder(); });
    m_buttons.openPackage =
        add("openPackage", QStringLiteral("Open Package"), [this] { m_updater.openPackage(); });
    m_buttons.download = add("downloadUpdate", QStringLiteral("Download"), [this] { m_updater.download(); });
    // A second press of Return, meant for "Download", must not undo the first.
    m_buttons.cancel->setAutoDefault(false);
    return row;
}

void UpdateWindow::follow()
{
    const UpdatePhase phase = m_updater.phase;
    if (phase == UpdatePhase::Idle) {
        close();
        return;
    }
    const ReleaseNotes &notes = m_updater.update().notes;
    const bool hasNotes = phase == UpdatePhase::Available && !notes.text.isEmpty();
    m_notes->setVisible(hasNotes);
    if (hasNotes)
        m_notes->setNotes(notes);
    m_daily->setVisible(phase != UpdatePhase::NotConfigured);
    showTexts();
    showProgress();
    showButtons();
    adjustSize();
    announce();
}

void UpdateWindow::showTexts()
{
    const UpdateTexts texts = updateTexts(m_updater);
    m_heading->setText(texts.heading);
    m_text->setText(texts.text);
    m_text->setVisible(!texts.text.isEmpty());
    setAccessibleDescription(QString(texts.heading % u"\n" % texts.text).trimmed());
}

void UpdateWindow::showProgress()
{
    const bool isDownloading = m_updater.phase == UpdatePhase::Downloading;
    const bool isChecking = m_updater.phase == UpdatePhase::Checking;
    m_count->setVisible(isDownloading);
    m_bar->setVisible(isDownloading || (isChecking && !prefersReducedMotion()));
    m_bar->setRange(0, isDownloading ? kBarSteps : 0); // without a range it only shows that something goes on
    if (!isDownloading)
        return;
    const qint64 received = m_updater.receivedBytes;
    const qint64 size = m_updater.update().sizeBytes;
    m_bar->setValue(static_cast<int>(received * kBarSteps / qMax<qint64>(1, size)));
    m_count->setText(downloadProgressText(received, size));
}

QList<QPushButton *> UpdateWindow::buttonsFor(UpdatePhase phase) const
{
    switch (phase) {
    case UpdatePhase::Checking:
    case UpdatePhase::Downloading:
        return {m_buttons.cancel};
    case UpdatePhase::Available:
        return {m_buttons.skip, m_buttons.later, m_buttons.download};
    case UpdatePhase::Downloaded:
        return {m_buttons.close, m_buttons.showInFolder, m_buttons.openPackage};
    case UpdatePhase::Failed:
        return {m_buttons.close, m_buttons.tryAgain};
    default:
        return {m_buttons.close};
    }
}

void UpdateWindow::showButtons()
{
    const QList<QPushButton *> shown = buttonsFor(m_updater.phase);
    m_buttons.cancel->setEnabled(true);
    const auto all = findChildren<QPushButton *>();
    for (QPushButton *button : all)
        button->setVisible(shown.contains(button));
    // The last one is what most people want.
    shown.last()->setDefault(shown.last()->autoDefault());
    shown.last()->setFocus(Qt::OtherFocusReason);
}

void UpdateWindow::announce()
{
    QAccessibleEvent changed(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&changed);
}

void showUpdateWindow(Updater &updater, Updater::Attention attention, QWidget *parent)
{
    static QPointer<UpdateWindow> window;
    const bool isAsked = attention == Updater::Attention::Asked;
    if (!window || !window->isVisible()) {
        window = new UpdateWindow(updater, parent);
        window->setAttribute(Qt::WA_ShowWithoutActivating, !isAsked);
        window->show();
    }
    if (isAsked) {
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->raise();
        window->activateWindow();
    }
}
