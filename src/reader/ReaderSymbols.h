#pragma once

#include <QIcon>

/// The pictures that reader windows use, by what they stand for.
enum class ReaderSymbol {
    Back,
    Forward,
    ZoomOut,
    ActualSize,
    ZoomIn,
    FitWidth,
    FitPage,
    BookmarkSelection,
    Sidebar,
    DarkMode,
    RotateLeft,
    RotateRight,
    Print,
    More,
    Search,
    Outline,
    Bookmarks,
    Warning,
    MissingFile,
    Locked,
};

QIcon readerIcon(ReaderSymbol symbol);

/// Takes the room of an icon that is not looked for yet.
QIcon blankIcon();
