#pragma once

#include "app/LibraryViewModel.h"
#include "app/PaperEditTexts.h"

#include <QScrollArea>

class Clock;
class CoverCache;
class FileOpener;
class PaperEditor;
class PaperHeader;
class PathButton;
class QPushButton;
class QVBoxLayout;
class TagEditor;
class WrappedLabel;

/// Everything about one paper, in a column that scrolls: cover, title, authors, year, pages, path, tags, and
/// the buttons that edit it and hand it to other programs.
class DetailsView : public QScrollArea
{
    Q_OBJECT

public:
    /// All must outlive the view.
    struct Collaborators {
        LibraryViewModel &vm;
        CoverCache &covers;
        FileOpener &files;
        const Clock &clock;
    };
    explicit DetailsView(Collaborators with, QWidget *parent = nullptr);

    /// An edit goes on while `paper` is the one that is shown; it is dropped, unwritten, when it is another.
    void setPaper(const Paper &paper);
    /// Ends an edit without writing it.
    void dropEdit();
    void beginEditing();
    void focusTagField();
    bool isEditing() const { return m_isEditing; }

private:
    void addFacts(QVBoxLayout &rows);
    void addActions(QVBoxLayout &rows);
    QPushButton *addAction(const QString &text, const QIcon &icon, QLayout &row);
    void save(const PaperEdit &edit);
    void showFacts();
    void showEditing(bool isEditing);

    Collaborators m_with;
    Paper m_paper;
    bool m_isEditing = false;
    std::optional<PaperEdit> m_writing; ///< handed to the view model; the fields stay until it is stored
    PaperHeader *m_header;
    WrappedLabel *m_authors;
    WrappedLabel *m_yearAndPages;
    PaperEditor *m_editor;
    PathButton *m_path;
    TagEditor *m_tags;
    QPushButton *m_editInfo;
};
