#include "ui/ImportPanel.h"

#include <QFileInfo>
#include <algorithm>

ImportPanel::ImportPanel(QWidget *parent)
    : QFileDialog(parent, QStringLiteral("Import PDFs"))
{
    setObjectName(QStringLiteral("importPanel"));
    // Desktops' own panels choose either files or folders, never both.
    setOption(DontUseNativeDialog);
    setFileMode(ExistingFiles);
    setNameFilter(QStringLiteral("PDF documents (*.pdf)"));
    setLabelText(Accept, QStringLiteral("Import"));
    setWindowModality(Qt::WindowModal);
    resize(840, 520); // room for the dates, which come out shortened at the usual size
    setAttribute(Qt::WA_DeleteOnClose);
}

void ImportPanel::accept()
{
    const QStringList selected = selectedFiles();
    const bool areThere =
        std::ranges::all_of(selected, [](const QString &path) { return QFileInfo::exists(path); });
    if (selected.isEmpty() || !areThere)
        QFileDialog::accept(); // says what is missing
    else
        QDialog::accept(); // the dialog's own would enter a folder
}

void ImportPanel::choose(QWidget *window, std::function<void(const QStringList &locations)> chosen)
{
    auto *panel = new ImportPanel(window);
    connect(panel, &QDialog::accepted, panel,
            [panel, chosen = std::move(chosen)] { chosen(panel->selectedFiles()); });
    panel->open();
}
