#include "ui/TagChips.h"

#include "ui/AccessibleRole.h"
#include "ui/FlowLayout.h"
#include "ui/TagChip.h"

#include <QLayoutItem>

namespace
{
constexpr int kSpacingPx = 6;
} // namespace

TagChips::TagChips(QWidget *parent)
    : QWidget(parent)
    , m_rows(new FlowLayout(this, kSpacingPx))
{
    setAccessibleRole(*this, QAccessible::List);
    setObjectName(QStringLiteral("tags"));
    setAccessibleName(QStringLiteral("Tags"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TagChip *TagChips::chipAt(int index) const
{
    QLayoutItem *item = m_rows->itemAt(index);
    return item != nullptr ? static_cast<TagChip *>(item->widget()) : nullptr;
}

void TagChips::insertChip(int index, const QString &tag)
{
    auto *chip = new TagChip(tag, this);
    connect(chip, &TagChip::removeRequested, this, [this, tag] { Q_EMIT removeRequested(tag); });
    m_rows->insertWidget(index, chip);
    chip->show();
}

// A chip may be at work on the very event that led here, so it goes later.
void TagChips::takeChip(int index)
{
    const std::unique_ptr<QLayoutItem> item(m_rows->takeAt(index));
    item->widget()->hide();
    item->widget()->deleteLater();
}

void TagChips::setTags(const QStringList &tags)
{
    int lostFocus = -1;
    for (int i = m_rows->count() - 1; i >= 0; --i) {
        if (tags.contains(chipAt(i)->label()))
            continue;
        if (chipAt(i)->hasFocus())
            lostFocus = i;
        takeChip(i);
    }
    for (int i = 0; i < tags.size(); ++i) {
        if (TagChip *chip = chipAt(i); chip == nullptr || chip->label() != tags[i])
            insertChip(i, tags[i]);
    }
    while (m_rows->count() > tags.size())
        takeChip(m_rows->count() - 1);
    orderForTabKey();
    setVisible(!tags.isEmpty());
    if (lostFocus >= 0)
        focusNear(lostFocus);
}

// New chips are last in the order of the Tab key, which is not where they stand.
void TagChips::orderForTabKey()
{
    setFocusPolicy(Qt::TabFocus); // for the moment: Qt puts nothing behind a widget that takes no focus
    QWidget *before = this;
    for (int i = 0; i < m_rows->count(); ++i) {
        setTabOrder(before, chipAt(i));
        before = chipAt(i);
    }
    setFocusPolicy(Qt::NoFocus);
}

void TagChips::focusNear(int index)
{
    if (m_rows->count() == 0)
        Q_EMIT focusLost();
    else
        chipAt(qMin(index, m_rows->count() - 1))->setFocus(Qt::OtherFocusReason);
}
