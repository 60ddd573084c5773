#pragma once

#include "app/LibraryCommands.h"
#include "app/LibraryViewModel.h"
#include "app/Services.h"
#include "ui/ContentView.h"
#include "ui/CoverCache.h"

/// A real library window over a library of sample papers, made by the real indexer.
class Stage
{
public:
    /// The library lies below `folder`; its PDFs in "Papers" there.
    explicit Stage(const QString &folder);

    /// Writes the PDFs, imports them and sets what their pages do not tell.
    void fillLibrary();
    /// Imports one more file and answers its paper.
    Paper addPaper(const QString &path);

    ContentView &window() { return *m_window; }
    LibraryViewModel &vm() { return m_vm; }
    Services &services() { return m_services; }
    const QString &folder() const { return m_folder; }
    /// The paths of the PDFs, in no particular order.
    const QStringList &files() const { return m_files; }
    /// The paper of that title, which must be listed.
    Paper paper(const QString &title);

    /// The window's part of that name.
    template <typename Part> Part *part(const char *name)
    {
        return m_window->findChild<Part *>(QLatin1String(name));
    }

private:
    void addDetails();

    QString m_folder;
    QStringList m_files;
    Services m_services;
    LibraryViewModel m_vm;
    LibraryCommands m_commands{{[] {}, [] {}, [] {},
                                [] {
                                }}};
    CoverCache m_covers;
    std::unique_ptr<ContentView> m_window;
};
