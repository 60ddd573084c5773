#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// A program to start: no shell is between.
struct ProgramCall {
    QString program = {}; ///< absolute path of an executable
    QStringList arguments = {};
    QString workingFolder = {}; ///< empty for that of this process

    friend bool operator==(const ProgramCall &, const ProgramCall &) = default;
};

/// What a desktop entry (a file *.desktop) says of a program.
struct DesktopEntry {
    QString id = {}; ///< such as "org.example.Viewer.desktop"
    QString path = {};
    QString name = {};
    QString icon = {};
    QString exec = {};
    QString tryExec = {};
    QString workingFolder = {};
    QStringList mimeTypes = {};
    bool isHidden = false; ///< the user's way to say that the program does not exist
    bool needsTerminal = false;
    bool isDBusActivatable = false;

    /// Nothing where the file cannot be read or describes no program.
    static std::optional<DesktopEntry> read(const QString &path, const QString &id);

    /// Whether the program that the entry asks to look for first is there; true when it names none.
    bool isInstalled() const;
    /// The words of the command line, quotes resolved, field codes as they stand; empty when it is malformed.
    QStringList commandWords() const;
    /// How to start the program with the file at `filePath` (absolute, so that it never looks like an
    /// option). Nothing where its command line is malformed, names no executable that is there, or would put
    /// the path into something that a shell reads.
    std::optional<ProgramCall> callFor(const QString &filePath) const;
};
