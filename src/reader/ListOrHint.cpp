#include "reader/ListOrHint.h"

#include <QAbstractItemView>
#include <QLabel>

namespace
{
/// Takes the room that the list has. The size of a text that wraps is worked out by trying widths, which took
/// two milliseconds of a window's start, for three hints of which at most one is to be seen.
class HintLabel : public QLabel
{
public:
    explicit HintLabel(QWidget *parent)
        : QLabel(parent)
    {
        setWordWrap(true);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    }

    QSize sizeHint() const override { return {}; }
    QSize minimumSizeHint() const override { return {}; }
    bool hasHeightForWidth() const override { return false; }
};
} // namespace

ListOrHint::ListOrHint(QAbstractItemView *list, QWidget *parent)
    : QStackedWidget(parent)
    , m_list(list)
    , m_hint(new HintLabel(this))
{
    m_hint->setObjectName(QStringLiteral("hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setMargin(16);
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    m_hint->setBackgroundRole(QPalette::Base); // as the list in its place
    m_hint->setAutoFillBackground(true);
    addWidget(m_list);
    addWidget(m_hint);
}

void ListOrHint::setHint(const QString &text)
{
    m_hint->setText(text);
    setCurrentWidget(text.isEmpty() ? static_cast<QWidget *>(m_list) : m_hint);
}

QString ListOrHint::hint() const
{
    return currentWidget() == m_hint ? m_hint->text() : QString();
}
