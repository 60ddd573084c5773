#include "ui/DetailsView.h"

#include "app/FileOpener.h"
#include "ui/FlowLayout.h"
#include "ui/PaperEditor.h"
#include "ui/PaperHeader.h"
#include "ui/PathButton.h"
#include "ui/Symbols.h"
#include "ui/TagEditor.h"
#include "ui/WrappedLabel.h"

#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kMarginPx = 16;
constexpr int kSpacingPx = 8;
constexpr int kSectionGapPx = 8;
constexpr int kAuthorLines = 6;

QString yearAndPages(const Paper &paper)
{
    QStringList facts;
    if (paper.year)
        facts.append(QString::number(*paper.year));
    if (paper.pageCount > 0) // else it is not known
        facts.append(QString(QString::number(paper.pageCount) % u" pages"));
    return facts.join(QStringLiteral(" · "));
}
} // namespace

DetailsView::DetailsView(Collaborators with, QWidget *parent)
    : QScrollArea(parent)
    , m_with(with)
{
    setObjectName(QStringLiteral("details"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto *column = new QWidget(this);
    auto *rows = new QVBoxLayout(column);
    rows->setContentsMargins(kMarginPx, kMarginPx, kMarginPx, kMarginPx);
    rows->setSpacing(kSpacingPx);
    m_header = new PaperHeader(with.covers, column);
    rows->addWidget(m_header);
    addFacts(*rows);
    m_tags = new TagEditor(with.vm, column);
    rows->addSpacing(kSectionGapPx);
    rows->addWidget(m_tags);
    addActions(*rows);
    rows->addStretch();
    setWidget(column);
    showEditing(false);
}

void DetailsView::addFacts(QVBoxLayout &rows)
{
    m_authors = new WrappedLabel(this);
    m_authors->setObjectName(QStringLiteral("authors"));
    m_authors->setMaximumLines(kAuthorLines);
    m_yearAndPages = new WrappedLabel(this);
    m_yearAndPages->setObjectName(QStringLiteral("yearAndPages"));
    m_yearAndPages->setTone(TextTone::Secondary);
    m_editor = new PaperEditor(this);
    m_path = new PathButton(m_with.clock, this);
    rows.addWidget(m_authors);
    rows.addWidget(m_yearAndPages);
    rows.addWidget(m_editor);
    rows.addWidget(m_path);
    connect(m_editor, &PaperEditor::saved, this, &DetailsView::save);
    connect(m_editor, &PaperEditor::cancelled, this, &DetailsView::dropEdit);
}

void DetailsView::addActions(QVBoxLayout &rows)
{
    auto *actions = new QWidget(this);
    auto *row = new FlowLayout(actions, kSpacingPx);
    m_editInfo = addAction(QStringLiteral("Edit Info"), symbolIcon(Symbol::Rename), *row);
    auto *open = addAction(QStringLiteral("Open in Preview"), symbolIcon(Symbol::OpenExternally), *row);
    auto *show = addAction(QStringLiteral("Show in Finder"), symbolIcon(Symbol::ShowInFolder), *row);
    rows.addSpacing(kSectionGapPx);
    rows.addWidget(actions);
    connect(m_editInfo, &QPushButton::clicked, this, &DetailsView::beginEditing);
    const auto tellProblem = [vm = QPointer(&m_with.vm)](const std::optional<Error> &problem) {
        if (vm && problem)
            vm->errorMessage = problem->message();
    };
    connect(open, &QPushButton::clicked, this,
            [this, tellProblem] { m_with.files.open(m_paper.filepath, tellProblem); });
    connect(show, &QPushButton::clicked, this,
            [this, tellProblem] { m_with.files.showInFolder(m_paper.filepath, tellProblem); });
}

QPushButton *DetailsView::addAction(const QString &text, const QIcon &icon, QLayout &row)
{
    auto *button = new QPushButton(icon, text, this);
    button->setObjectName(text);
    row.addWidget(button);
    return button;
}

void DetailsView::setPaper(const Paper &paper)
{
    const bool isAnother = paper.id != m_paper.id;
    m_paper = paper;
    m_header->setPaper(paper);
    m_path->setPath(paper.filepath);
    m_tags->setPaper(paper);
    showFacts();
    if (isAnother) {
        dropEdit();
        ensureVisible(0, 0);
    } else if (m_writing && carries(paper, *m_writing)) {
        dropEdit();
    }
}

void DetailsView::beginEditing()
{
    if (m_isEditing)
        return m_editor->focusFirst();
    showEditing(true);
    m_editor->begin(PaperEditTexts::of(m_paper));
    ensureWidgetVisible(m_editor);
}

void DetailsView::focusTagField()
{
    m_tags->focusField();
    ensureWidgetVisible(m_tags);
}

void DetailsView::save(const PaperEdit &edit)
{
    if (carries(m_paper, edit))
        return dropEdit();
    m_writing = edit;
    m_with.vm.updatePaper(m_paper.id, edit);
}

void DetailsView::dropEdit()
{
    const bool hadFocus = m_editor->isAncestorOf(focusWidget());
    m_writing.reset();
    showEditing(false);
    if (hadFocus)
        m_editInfo->setFocus(Qt::OtherFocusReason);
}

void DetailsView::showFacts()
{
    m_authors->setWrappedText(m_paper.authors);
    m_yearAndPages->setWrappedText(yearAndPages(m_paper));
    showEditing(m_isEditing);
}

void DetailsView::showEditing(bool isEditing)
{
    m_isEditing = isEditing;
    m_header->setTitleShown(!isEditing);
    m_authors->setVisible(!isEditing && !m_authors->text().isEmpty());
    m_yearAndPages->setVisible(!isEditing && !m_yearAndPages->text().isEmpty());
    m_editor->setVisible(isEditing);
    m_editInfo->setVisible(!isEditing);
}
