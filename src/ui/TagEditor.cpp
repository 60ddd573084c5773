#include "ui/TagEditor.h"

#include "store/ReservedTags.h"
#include "ui/FieldProblem.h"
#include "ui/TagChips.h"
#include "ui/TagField.h"

#include <QVBoxLayout>

namespace
{
constexpr int kSpacingPx = 8;
} // namespace

TagEditor::TagEditor(LibraryViewModel &vm, QWidget *parent)
    : QWidget(parent)
    , m_vm(vm)
    , m_chips(new TagChips(this))
    , m_field(new TagField(this))
    , m_problem(new FieldProblem(*m_field, this))
    , m_tagsObserver(vm.visibleTags.addNotifier([this] { updateKnownTags(); }))
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kSpacingPx);
    rows->addWidget(m_chips);
    rows->addWidget(m_field);
    rows->addWidget(m_problem);
    connect(m_chips, &TagChips::removeRequested, this,
            [this](const QString &tag) { m_vm.removeTag(m_paper.id, tag); });
    connect(m_chips, &TagChips::focusLost, this, &TagEditor::focusField);
    connect(m_field, &TagField::tagEntered, this, &TagEditor::add);
    connect(m_field, &TagField::refused, m_problem, &FieldProblem::say);
}

void TagEditor::setPaper(const Paper &paper)
{
    if (paper.id != m_paper.id) {
        m_field->clear();
        m_problem->say({});
    }
    m_paper = paper;
    QStringList shown = paper.tags;
    shown.removeIf(isReservedTag);
    m_chips->setTags(shown);
    updateKnownTags();
}

void TagEditor::focusField()
{
    m_field->setFocus(Qt::OtherFocusReason);
    m_field->selectAll();
}

void TagEditor::add(const QString &tag)
{
    m_problem->say({});
    if (!m_paper.tags.contains(tag))
        m_vm.addTag(m_paper.id, tag);
}

void TagEditor::updateKnownTags()
{
    QStringList tags = m_vm.visibleTags.value();
    tags.removeIf([this](const QString &tag) { return m_paper.tags.contains(tag); });
    m_field->setKnownTags(tags);
}
