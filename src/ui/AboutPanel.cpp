#include "ui/AboutPanel.h"

#include "app/ProgramInformation.h"
#include "reader/Fonts.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPointer>

namespace
{

constexpr int kTextWidthPx = 360; ///< the credits on one line

QLabel *centredText(const QString &text, const QString &name)
{
    auto *label = new QLabel(text);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

QLabel *programName()
{
    QLabel *name = centredText(QStringLiteral("Quirevault"), QStringLiteral("aboutName"));
    name->setFont(boldFont(name->font(), 1.8));
    return name;
}

QDialog *makePanel(QWidget *parent)
{
    auto *panel = new QDialog(parent);
    panel->setObjectName(QStringLiteral("aboutPanel"));
    panel->setWindowTitle(QStringLiteral("About Quirevault"));
    panel->setAttribute(Qt::WA_DeleteOnClose);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, panel, &QDialog::close);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(40, 32, 40, 20);
    layout->setSpacing(10);
    layout->addStrut(kTextWidthPx);
    layout->addWidget(programName());
    layout->addWidget(
        centredText(QStringLiteral("Version %1, build %2").arg(programVersion(), programBuild()),
                    QStringLiteral("aboutVersion")));
    layout->addWidget(centredText(QStringLiteral("A fast, native PDF library and reader for researchers."),
                                  QStringLiteral("aboutCredits")));
    layout->addSpacing(10);
    layout->addWidget(buttons);
    return panel;
}

} // namespace

void showAboutPanel(QWidget *parent)
{
    static QPointer<QDialog> panel;
    if (!panel)
        panel = makePanel(parent);
    panel->show();
    panel->raise();
    panel->activateWindow();
}
