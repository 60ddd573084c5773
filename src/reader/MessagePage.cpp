#include "reader/MessagePage.h"

#include "reader/Fonts.h"
#include "reader/PathText.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int kPictureSize = 48;
constexpr int kColumnWidth = 440;
constexpr int kSpacing = 12;
constexpr double kHeadingScale = 1.4;
} // namespace

MessagePage::MessagePage(ReaderSymbol symbol, QWidget *parent)
    : QWidget(parent)
    , m_symbol(symbol)
    , m_column(new QVBoxLayout)
    , m_buttons(new QWidget(this))
    , m_picture(new QLabel(this))
    , m_path(new PathText(kColumnWidth, this))
{
    m_path->setObjectName(QStringLiteral("path"));
    auto *centre = new QHBoxLayout(this);
    centre->addStretch();
    centre->addLayout(m_column);
    centre->addStretch();
    m_column->setSpacing(kSpacing);
    m_column->addStretch(2);
    m_column->addWidget(m_picture);
    m_heading = addLabel(QStringLiteral("heading"));
    m_column->addWidget(m_path);
    m_problem = addLabel(QStringLiteral("problem"));
    m_column->addWidget(m_buttons);
    m_column->addStretch(3);

    QFont heading = scaledFont(font(), kHeadingScale);
    heading.setWeight(QFont::DemiBold);
    m_heading->setFont(heading);
    m_picture->setAlignment(Qt::AlignHCenter);
    auto *row = new QHBoxLayout(m_buttons);
    row->addStretch();
    row->addStretch();
    setProblem({});
    showSymbol();
}

QLabel *MessagePage::addLabel(const QString &name)
{
    auto *label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setFixedWidth(kColumnWidth);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_column->addWidget(label);
    return label;
}

void MessagePage::setHeading(const QString &heading)
{
    m_heading->setText(heading);
    setAccessibleName(heading);
}

void MessagePage::setPath(const QString &path)
{
    m_path->setPath(path);
}

void MessagePage::setProblem(const QString &problem)
{
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
}

QPushButton *MessagePage::addButton(const QString &name, const QString &text)
{
    auto *button = new QPushButton(text, m_buttons);
    button->setObjectName(name);
    button->setAutoDefault(true);
    auto *row = static_cast<QHBoxLayout *>(m_buttons->layout());
    row->insertWidget(row->count() - 1, button);
    return button;
}

void MessagePage::addContent(QWidget *content)
{
    m_column->insertWidget(m_column->indexOf(m_problem), content, 0, Qt::AlignHCenter);
}

void MessagePage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showSymbol();
}

void MessagePage::showSymbol()
{
    m_picture->setPixmap(readerIcon(m_symbol).pixmap(QSize(kPictureSize, kPictureSize), devicePixelRatioF()));
}
