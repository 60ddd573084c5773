#pragma once

#include <QFileDialog>
#include <functional>

/// The open panel "Import PDFs": chooses PDFs and folders, several at once, mixed at will. A double click
/// enters a folder; the button takes what is selected, folders too.
class ImportPanel : public QFileDialog
{
    Q_OBJECT

public:
    explicit ImportPanel(QWidget *parent = nullptr);

    void accept() override;

    /// Shows the panel over `window` and returns at once; a dismissed panel calls nothing.
    static void choose(QWidget *window, std::function<void(const QStringList &locations)> chosen);
};
