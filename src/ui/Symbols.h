#pragma once

#include <QIcon>

/// The pictures that the windows use, by what they stand for.
enum class Symbol {
    AllPapers,
    CurrentlyReading,
    RecentlyImported,
    Tag,
    NewTag,
    RemoveTag,
    Rename,
    Delete,
    Search,
    ClearText,
    Import,
    Refresh,
    DetailPanel,
    Sidebar,
    Document,
    DocumentSearch,
    MissingFile,
    OpenExternally,
    ShowInFolder,
    Copy,
};

/// The desktop theme's icon for `symbol`; Breeze's, light or dark as the palette, where the theme has none.
QIcon symbolIcon(Symbol symbol);
