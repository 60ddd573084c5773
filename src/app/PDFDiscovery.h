#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <stop_token>
#include <vector>

/// What was found among the files and folders that a person chose.
struct DiscoveredPDFs {
    QStringList paths;               ///< absolute; chosen order, inside a folder ascending by name
    QMap<QString, QString> problems; ///< why something could not be looked at, by its path as it can be shown
    bool containsFolder = false;     ///< whether any chosen location is a folder
};

/// In any case.
bool hasPDFExtension(const std::filesystem::path &path);

/// `chosen` as the library stores it: absolute without "." and ".."; links are kept as they are written,
/// except before a "..", which only the file system can resolve.
std::filesystem::path absolutePath(const std::filesystem::path &chosen);

/// Collects every item whose extension is pdf in any case: chosen files, and everything inside chosen
/// folders, hidden items included. Links to folders are followed only where they were chosen themselves, so
/// a loop of links ends. Items are judged by name alone: opening them is for who reads them.
///
/// A path that is not valid UTF-8 cannot be stored without changing it, so it becomes a problem. Blocks; a
/// stop leaves the walk with what it has.
DiscoveredPDFs discoverPDFs(const std::vector<std::filesystem::path> &chosen, std::stop_token stop = {});
