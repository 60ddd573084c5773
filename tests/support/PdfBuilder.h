#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <map>
#include <optional>

/// A box in PDF points: left, bottom, right, top.
using PdfBox = std::array<double, 4>;

/// One page to build. Lines are set in 12 points from the top, one below the other.
struct PdfPage {
    /// Any Unicode characters, in the order in which they stand on paper from left to right: right-to-left
    /// text must be given in visual order (see `PdfBuilder::inVisualOrder`).
    QStringList lines = {};
    std::optional<PdfBox> mediaBox = {}; ///< by default US letter, grown until every line fits
    std::optional<PdfBox> cropBox = {};
    std::optional<PdfBox> artBox = {};
    int rotation = 0;    ///< /Rotate in degrees
    double userUnit = 1; ///< /UserUnit
    QByteArray drawing =
        {}; ///< content operators that run before the text, such as "1 0 0 rg 0 0 50 50 re f"
    QByteArray entries = {}; ///< more entries of the page's dictionary, as written in a file
    bool isBroken = false;   ///< cannot be loaded by any engine: its parents go in a circle
};

/// What protects the document.
enum class PdfLock {
    None,
    OpensWithoutPassword, ///< encrypted, and the empty password opens it
    NeedsPassword,        ///< encrypted, and only `PdfBuilder::kPassword` opens it
};

/// Writes small, real PDF files (RC4 with 40 bits where encrypted). Every answer is made anew and the same.
class PdfBuilder
{
public:
    static constexpr char kPassword[] = "sesame";
    static constexpr int kFirstFreeObject = 100'000;

    /// Attributes as the bytes inside the PDF string: see `utf16` for text beyond Latin.
    PdfBuilder &title(const QByteArray &bytes);
    PdfBuilder &author(const QByteArray &bytes);
    /// An entry of the document information as written in a file, such as "/Title 42".
    PdfBuilder &attribute(const QByteArray &entry);
    PdfBuilder &page(const QStringList &lines);
    PdfBuilder &page(const PdfPage &page);
    PdfBuilder &lock(PdfLock lock);
    /// More entries of the document's catalogue, as written in a file.
    PdfBuilder &catalogue(const QByteArray &entries);
    /// One more object, as written in a file, under a number from `kFirstFreeObject` on. Encrypted documents
    /// have none.
    PdfBuilder &object(int number, const QByteArray &body);
    /// What the page tree says, true or not.
    PdfBuilder &claimPageCount(qint64 count);

    QByteArray build() const;

    /// The reference to the page of this index, such as "7 0 R".
    static QByteArray pageReference(int index);
    /// The bytes of a UTF-16BE text string, with its byte order mark.
    static QByteArray utf16(const QString &text);
    /// A right-to-left text as it stands on paper from left to right: its characters reversed.
    static QString inVisualOrder(const QString &text);

private:
    QList<QByteArray> objects() const;

    QList<QByteArray> m_attributes;
    QList<PdfPage> m_pages;
    QByteArray m_catalogueEntries;
    std::map<int, QByteArray> m_furtherObjects;
    PdfLock m_lock = PdfLock::None;
    std::optional<qint64> m_claimedPageCount;
};
