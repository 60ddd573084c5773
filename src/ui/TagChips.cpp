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
    setObjectName(QStringLiteral("tags"));
    setAccessibleName(QStringLiteral("Tags"));
    setAccessibleRole(*this, QAccessible::List);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TagChip *TagChips::chipAt(int index) const
{
    const QLayoutItem *item = m_rows->itemAt(index);
    return item != nullptr ? static_cast<TagChip *>(const_cast<QLayoutItem *>(item)->widget()) : nullptr;
}

void TagChips::insertChip(int index, const QString &tag)
{
    auto *chip = new TagChip(tag, this);
    connect(chip, &TagChip::removeRequested, this, [this, tag] { Q_EMIT removeRequested(tag); });
    m_rows->insertWidget(index, chip);
    chip->show();
}

void TagChips::setTags(const QStringList &tags)
{
    int lostFocus = -1;
    for (int i = m_rows->count() - 1; i >= 0; --i) {
        if (tags.contains(chipAt(i)->label()))
            continue;
        if (chipAt(i)->hasFocus())
            lostFocus = i;
        delete chipAt(i); // takes itself out of the rows
    }
    for (int i = 0; i < tags.size(); ++i) {
        if (TagChip *chip = chipAt(i); chip == nullptr || chip->label() != tags[i])
            insertChip(i, tags[i]);
    }
    while (m_rows->count() > tags.size())
        delete chipAt(m_rows->count() - 1);
    setVisible(!tags.isEmpty());
    if (lostFocus >= 0)
        focusNear(lostFocus);
}

void TagChips::focusNear(int index)
{
    if (m_rows->count() == 0)
        Q_EMIT focusLost();
    else
        chipAt(qMin(index, m_rows->count() - 1))->setFocus(Qt::OtherFocusReason);
}
