#include "app/PDFDiscovery.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

namespace
{

/// The path with every byte that is not part of valid UTF-8 written as \xNN.
QString shownPath(const fs::path &path)
{
    const QByteArray bytes = QByteArray::fromStdString(path.native());
    QString shown;
    for (qsizetype at = 0; at < bytes.size();) {
        qsizetype length = std::min<qsizetype>(4, bytes.size() - at);
        QString character;
        for (; length > 0; --length) {
            character = QString::fromUtf8(bytes.sliced(at, length));
            if (character.toUtf8() == bytes.sliced(at, length))
                break;
        }
        if (length == 0) {
            character = QStringLiteral("\\x%1").arg(static_cast<uchar>(bytes[at]), 2, 16, QLatin1Char('0'));
            length = 1;
        }
        shown += character;
        at += length;
    }
    return shown;
}

class Walk
{
public:
    explicit Walk(std::stop_token stop)
        : m_stop(std::move(stop))
    {
    }

    void addChosen(const fs::path &chosen)
    {
        const fs::path path = absolutePath(chosen);
        std::error_code failed;
        const fs::file_status status = fs::status(path, failed);
        if (status.type() == fs::file_type::directory) {
            m_found.containsFolder = true;
            addFolder(path);
        } else if (fs::exists(fs::symlink_status(path, failed))) {
            addIfPDF(path);
        } else {
            addProblem(path, failed);
        }
    }

    DiscoveredPDFs take() { return std::move(m_found); }

private:
    void addFolder(const fs::path &top)
    {
        std::vector<fs::path> folders{top};
        while (!folders.empty() && !m_stop.stop_requested()) {
            const fs::path folder = std::move(folders.back());
            folders.pop_back();
            const std::vector<fs::directory_entry> entries = sortedEntries(folder);
            const size_t above = folders.size();
            for (const fs::directory_entry &entry : entries) {
                addIfPDF(entry.path());
                if (isFolder(entry))
                    folders.push_back(entry.path());
            }
            // The stack gives the last folder first; turned round, folders too come ascending by name.
            std::reverse(folders.begin() + static_cast<std::ptrdiff_t>(above), folders.end());
        }
    }

    /// Whether `entry` is a folder itself, not a link to one.
    bool isFolder(const fs::directory_entry &entry)
    {
        std::error_code failed;
        const fs::file_type type = entry.symlink_status(failed).type();
        if (failed)
            addProblem(entry.path(), failed);
        return type == fs::file_type::directory;
    }

    std::vector<fs::directory_entry> sortedEntries(const fs::path &folder)
    {
        std::vector<fs::directory_entry> entries;
        std::error_code failed;
        fs::directory_iterator at(folder, failed);
        for (; !failed && at != fs::directory_iterator(); at.increment(failed))
            entries.push_back(*at);
        if (failed)
            addProblem(folder, failed);
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    void addIfPDF(const fs::path &path)
    {
        if (!hasPDFExtension(path))
            return;
        const QByteArray bytes = QByteArray::fromStdString(path.native());
        const QString text = QString::fromUtf8(bytes);
        if (text.toUtf8() == bytes)
            m_found.paths.append(text);
        else
            m_found.problems.insert(shownPath(path), QStringLiteral("The file name is not valid UTF-8"));
    }

    void addProblem(const fs::path &path, const std::error_code &failed)
    {
        m_found.problems.insert(shownPath(path), QString::fromLocal8Bit(failed.message().c_str()));
    }

    std::stop_token m_stop;
    DiscoveredPDFs m_found;
};

} // namespace

bool hasPDFExtension(const fs::path &path)
{
    std::string extension = path.extension().native();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension == ".pdf";
}

fs::path absolutePath(const fs::path &chosen)
{
    std::error_code failed;
    fs::path path = fs::absolute(chosen, failed);
    if (failed)
        return chosen;
    if (std::find(path.begin(), path.end(), fs::path("..")) != path.end()) {
        const fs::path resolved = fs::weakly_canonical(path.parent_path(), failed) / path.filename();
        if (!failed && path.filename() != "..")
            path = resolved;
    }
    path = path.lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

DiscoveredPDFs discoverPDFs(const std::vector<fs::path> &chosen, std::stop_token stop)
{
    Walk walk(std::move(stop));
    for (const fs::path &path : chosen)
        walk.addChosen(path);
    return walk.take();
}
