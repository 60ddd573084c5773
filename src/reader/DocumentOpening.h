#pragma once

#include "reader/ReaderDocument.h"

#include <QFuture>
#include <QObject>
#include <QProperty>
#include <functional>
#include <memory>
#include <optional>
#include <qcorotask.h>

class NativeLibraryService;

/// How the document of a reader window comes to be open, and what stands in the way. Main thread; files are
/// read elsewhere.
class DocumentOpening : public QObject
{
    Q_OBJECT

public:
    enum class Stage {
        Opening,
        Open,
        Locked,  ///< a person has to enter a password
        Missing, ///< there is no file at the path
        Failed,  ///< cannot be read, has nothing to read, or its engine was lost
    };
    struct State {
        Stage stage = Stage::Opening;
        QString problem; ///< for people: why it failed, or why the last attempt to help did; may be empty

        friend bool operator==(const State &, const State &) = default;
    };
    using MakeDocument = std::function<std::unique_ptr<ReaderDocument>(const QString &path)>;

    /// `library` must outlive this.
    DocumentOpening(NativeLibraryService &library, MakeDocument makeDocument, const QString &path);
    ~DocumentOpening() override;

    QProperty<State> state;
    QProperty<QString> path;                                 ///< of the file; absolute
    QProperty<std::optional<QString>> paperId{std::nullopt}; ///< when the file is a paper of the library

    /// Stays the same while it is lost and opened again; another one when another file is located.
    ReaderDocument &document() { return *m_document; }

    /// To be called first, and again to try again. A paper whose file has moved with the library's knowledge
    /// is found.
    QCoro::Task<> open();
    /// Takes a document that is open already, without waiting for the event that tells of it.
    void takeIfOpen();
    QCoro::Task<> unlock(QString password);
    /// A person says where the missing file is. For a paper that must be the same document, down to the last
    /// byte, if the library knows what it was; the library then knows its new path.
    QCoro::Task<> locate(QString newPath);

Q_SIGNALS:
    /// `document` is about to be replaced: whoever shows it lets go of it now.
    void documentLeaving();

private:
    void replaceDocument(const QString &newPath);
    void take(const Result<void> &opened);
    QCoro::Task<std::optional<QString>> pathKnownToLibrary();
    QCoro::Task<QString> refusalOf(QString newPath);

    NativeLibraryService &m_library;
    MakeDocument m_makeDocument;
    std::unique_ptr<ReaderDocument> m_document;
    std::optional<QString> m_password; ///< with which it is open, for opening it again
};

/// A document that an engine of its own reads from the file at `path`.
std::unique_ptr<ReaderDocument> engineReaderDocument(const QString &path);
